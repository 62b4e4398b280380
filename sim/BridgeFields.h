#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace bridgetext {

/// The keys of a text's fields, in their order on the wire and with their "=".
using FieldKeys = std::span<const std::string_view>;

/// The fields of a text between marks, read by index. A value stands after as many characters as
/// its key has. These aren't compared with the key: the protocol fixes the lengths of the keys
/// only, and a server that spells one in its own way would lose the value and all that follow. A
/// field after the last one is no fault: the value stays. After the first fault nothing more is
/// read.
class Fields
{
public:
    /// What stands after the 1024th field isn't looked at. Only fields that have a key are read;
    /// `keys` outlives the object.
    Fields(const QByteArray& text, char mark, FieldKeys keys);

    int count() const { return m_fields.size(); }
    QByteArray at(int index) const { return m_fields.value(index); }
    bool failed() const { return !m_fault.isEmpty(); }
    QString fault() const { return m_fault; }

    /// Fewer fields are a fault.
    void require(int fields);
    /// Takes over the fault of a field's own parts; false if there is one.
    bool take(const Fields& parts);

    void read(int index, std::uint16_t& value);
    void read(int index, std::int32_t& value);
    void read(int index, std::int64_t& value);
    void read(int index, float& value);
    void read(int index, double& value);
    /// True for exactly "1".
    void read(int index, bool& value);
    void read(int index, std::wstring& value);

private:
    /// False when there is nothing to read, for whatever reason.
    bool valueOf(int index, QByteArray& value);
    void fail(int index, const char* reason);
    bool integer(int index, std::int64_t& value);

    QList<QByteArray> m_fields;
    FieldKeys m_keys;
    QString m_fault;
};

} // namespace bridgetext

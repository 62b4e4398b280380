#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <cstdint>
#include <string>

namespace bridgetext {

/// The fields of a text between marks, read by index behind a key of fixed length. A field behind
/// the last one is no fault: the value stays. After the first fault nothing is read any more.
class Fields
{
public:
    /// What stands behind the 1024th field isn't looked at.
    Fields(const QByteArray& text, char mark);

    int count() const { return m_fields.size(); }
    QByteArray at(int index) const { return m_fields.value(index); }
    bool failed() const { return !m_fault.isEmpty(); }
    QString fault() const { return m_fault; }

    /// Fewer fields are a fault.
    void require(int fields);
    /// Takes over the fault of a field's own parts; false if there is one.
    bool take(const Fields& parts);

    void read(int index, int keyLength, std::uint16_t& value);
    void read(int index, int keyLength, std::int32_t& value);
    void read(int index, int keyLength, std::int64_t& value);
    void read(int index, int keyLength, float& value);
    void read(int index, int keyLength, double& value);
    /// True for exactly "1".
    void read(int index, int keyLength, bool& value);
    void read(int index, int keyLength, std::wstring& value);

private:
    /// False when there is nothing to read, for whatever reason.
    bool valueOf(int index, int keyLength, QByteArray& value);
    void fail(int index, const char* reason);
    bool integer(int index, int keyLength, std::int64_t& value);

    QList<QByteArray> m_fields;
    QString m_fault;
};

} // namespace bridgetext

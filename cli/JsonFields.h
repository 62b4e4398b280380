#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <cstdint>
#include <optional>

/// Why a field can't be read.
struct BadField
{
    QString reason; ///< names the field
};

/// Reads the fields of one JSON object. An absent field, or one that is null, has its default; one
/// of another kind or out of range throws BadField.
class JsonFields
{
public:
    /// `path` stands before the names in what is thrown, such as "events[3].".
    JsonFields(QJsonObject object, QString path)
        : m_object(std::move(object))
        , m_path(std::move(path))
    {}

    /// Whether the field is neither absent nor null.
    bool has(const char* name) const;
    /// A finite number of single precision.
    float real(const char* name, float fallback) const;
    double number(const char* name, double fallback, double least, double most) const;
    /// A fraction is cut off.
    std::int64_t integer(const char* name, std::int64_t fallback, std::int64_t least,
                         std::int64_t most) const;
    std::int32_t integer32(const char* name, std::int32_t fallback) const;
    bool flag(const char* name, bool fallback) const;
    QString text(const char* name) const;
    std::optional<JsonFields> object(const char* name) const;
    /// Empty when absent.
    QJsonArray list(const char* name) const;
    /// Where the entry of a list stands, "metar." for the object "metar" at the top.
    QString pathOf(const char* name, int index) const;
    [[noreturn]] void refuse(const char* name, const QString& expected) const;

private:
    std::optional<QJsonValue> value(const char* name, QJsonValue::Type type,
                                    const char* expected) const;

    QJsonObject m_object;
    QString m_path;
};

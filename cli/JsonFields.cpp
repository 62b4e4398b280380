#include "cli/JsonFields.h"

#include <limits>

bool JsonFields::has(const char* name) const
{
    const QJsonValue found = m_object.value(QLatin1String(name));
    return !found.isUndefined() && !found.isNull();
}

std::optional<QJsonValue> JsonFields::value(const char* name, QJsonValue::Type type,
                                            const char* expected) const
{
    if (!has(name)) {
        return std::nullopt;
    }
    const QJsonValue found = m_object.value(QLatin1String(name));
    if (found.type() != type) {
        refuse(name, QLatin1String(expected));
    }
    return found;
}

void JsonFields::refuse(const char* name, const QString& expected) const
{
    throw BadField{
        QStringLiteral("%1%2: %3 is expected").arg(m_path, QLatin1String(name), expected)};
}

double JsonFields::number(const char* name, double fallback, double least, double most) const
{
    const auto found = value(name, QJsonValue::Double, "a number");
    if (!found) {
        return fallback;
    }
    const double number = found->toDouble();
    if (!(number >= least && number <= most)) {
        refuse(name, QStringLiteral("a number from %1 to %2").arg(least).arg(most));
    }
    return number;
}

float JsonFields::real(const char* name, float fallback) const
{
    constexpr auto kMost = static_cast<double>(std::numeric_limits<float>::max());
    return static_cast<float>(number(name, static_cast<double>(fallback), -kMost, kMost));
}

std::int64_t JsonFields::integer(const char* name, std::int64_t fallback, std::int64_t least,
                                 std::int64_t most) const
{
    return static_cast<std::int64_t>(number(name, static_cast<double>(fallback),
                                            static_cast<double>(least), static_cast<double>(most)));
}

std::int32_t JsonFields::integer32(const char* name, std::int32_t fallback) const
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(integer(name, fallback, Limits::min(), Limits::max()));
}

bool JsonFields::flag(const char* name, bool fallback) const
{
    const auto found = value(name, QJsonValue::Bool, "true or false");
    return found ? found->toBool() : fallback;
}

QString JsonFields::text(const char* name) const
{
    const auto found = value(name, QJsonValue::String, "a text");
    return found ? found->toString() : QString();
}

std::optional<JsonFields> JsonFields::object(const char* name) const
{
    const auto found = value(name, QJsonValue::Object, "an object");
    return found ? std::optional(
               JsonFields(found->toObject(), m_path + QLatin1String(name) + QLatin1Char('.')))
                 : std::nullopt;
}

QJsonArray JsonFields::list(const char* name) const
{
    const auto found = value(name, QJsonValue::Array, "a list");
    return found ? found->toArray() : QJsonArray();
}

QString JsonFields::pathOf(const char* name, int index) const
{
    return QStringLiteral("%1%2[%3]").arg(m_path, QLatin1String(name)).arg(index);
}

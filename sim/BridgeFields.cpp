#include "sim/BridgeFields.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>

namespace bridgetext {

namespace {

constexpr int kLongestName = 256; // characters; names go into windows and logs

/// What a conversion starts with: blanks and a plus sign are skipped.
std::string_view numberStart(const QByteArray& text)
{
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    std::string_view number(text.constData(), static_cast<std::size_t>(text.size()));
    number.remove_prefix(std::min(number.find_first_not_of(kBlanks), number.size()));
    const bool plus = number.size() > 1 && number[0] == '+' && number[1] != '-';
    return plus ? number.substr(1) : number;
}

template <typename T>
bool convert(const QByteArray& text, T& value)
{
    const std::string_view number = numberStart(text);
    return std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc();
}

} // namespace

Fields::Fields(const QByteArray& text, char mark, FieldKeys keys) : m_keys(keys)
{
    constexpr int kMostFields = 1024;
    int start = 0;
    while (start >= 0 && m_fields.size() < kMostFields) {
        const int end = text.indexOf(mark, start);
        m_fields.append(end < 0 ? text.mid(start) : text.mid(start, end - start));
        start = end < 0 ? -1 : end + 1;
    }
}

void Fields::fail(int index, const char* reason)
{
    m_fault = QStringLiteral("field %1: %2").arg(index).arg(QString::fromLatin1(reason));
}

void Fields::require(int fields)
{
    if (count() < fields) {
        fail(count(), "missing");
    }
}

bool Fields::take(const Fields& parts)
{
    m_fault = parts.m_fault;
    return !failed();
}

bool Fields::valueOf(int index, QByteArray& value)
{
    if (failed() || index >= count()) {
        return false;
    }
    const auto keyLength = static_cast<int>(m_keys[static_cast<std::size_t>(index)].size());
    if (m_fields.at(index).size() < keyLength) {
        fail(index, "shorter than its key");
        return false;
    }
    value = m_fields.at(index).mid(keyLength);
    return true;
}

bool Fields::integer(int index, std::int64_t& value)
{
    QByteArray text;
    if (!valueOf(index, text)) {
        return false;
    }
    if (!convert(text, value)) {
        fail(index, "not a number");
        return false;
    }
    return true;
}

void Fields::read(int index, std::uint16_t& value)
{
    std::int64_t number = 0;
    if (!integer(index, number)) {
        return;
    }
    if (number < 0 || number > std::numeric_limits<std::uint16_t>::max()) {
        return fail(index, "out of range");
    }
    value = static_cast<std::uint16_t>(number);
}

void Fields::read(int index, std::int32_t& value)
{
    std::int64_t number = 0;
    if (!integer(index, number)) {
        return;
    }
    if (number < std::numeric_limits<std::int32_t>::min()
        || number > std::numeric_limits<std::int32_t>::max())
    {
        return fail(index, "out of range");
    }
    value = static_cast<std::int32_t>(number);
}

void Fields::read(int index, std::int64_t& value)
{
    std::int64_t number = 0;
    if (integer(index, number)) {
        value = number;
    }
}

void Fields::read(int index, double& value)
{
    QByteArray text;
    if (!valueOf(index, text)) {
        return;
    }
    double number = 0.0;
    // No value on the wire is larger than what its record holds.
    if (!convert(text, number) || !std::isfinite(number)
        || std::abs(number) > static_cast<double>(std::numeric_limits<float>::max()))
    {
        return fail(index, "not a number");
    }
    value = number;
}

void Fields::read(int index, float& value)
{
    auto number = static_cast<double>(value);
    read(index, number);
    value = static_cast<float>(number);
}

void Fields::read(int index, bool& value)
{
    QByteArray text;
    if (valueOf(index, text)) {
        value = text == "1";
    }
}

void Fields::read(int index, std::wstring& value)
{
    QByteArray text;
    if (valueOf(index, text)) {
        value = QString::fromUtf8(text).left(kLongestName).toStdWString();
    }
}

} // namespace bridgetext

#include "nav/records/AirportTable.h"

#include "aviation/support/NumberText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace {

enum class DecimalMark
{
    Point,
    PointOrComma
};

constexpr std::size_t kIdent = 0;
constexpr std::size_t kName = 1;
constexpr std::size_t kRegion = 2;
constexpr std::size_t kElevation = 3;
constexpr std::size_t kLatitude = 4;
constexpr std::size_t kLongitude = 5;
constexpr std::size_t kFieldCount = 6;
using Fields = std::array<std::string_view, kFieldCount>;

/// False when the line has too few fields; those after the last one are ignored.
bool splitFields(std::string_view line, Fields& fields)
{
    std::size_t start = 0;
    for (std::size_t i = 0; i < kFieldCount; ++i) {
        const std::size_t end = std::min(line.find(';', start), line.size());
        fields[i] = line.substr(start, end - start);
        start = end + 1;
        if (start > line.size() && i + 1 < kFieldCount) {
            return false;
        }
    }
    return true;
}

QString textOf(std::string_view field)
{
    return QString::fromUtf8(field.data(), static_cast<int>(field.size()));
}

/// Longer than any number that means something; cuts the cost of hostile ones.
constexpr std::size_t kLongestNumber = 400;

/// Empty unless the field starts with a number within the limit, which also keeps out "nan".
std::optional<double> coordinate(std::string_view field, double limit, DecimalMark mark)
{
    std::wstring text = aviation::widen(field.substr(0, kLongestNumber));
    if (mark == DecimalMark::PointOrComma) {
        std::replace(text.begin(), text.end(), L',', L'.');
    }
    const std::size_t first = text.find_first_not_of(L" \t+-.");
    const bool isNumber = first != std::wstring::npos && text[first] >= L'0' && text[first] <= L'9';
    const double degrees = aviation::numberFromText(text);
    if (!isNumber || std::abs(degrees) > limit) {
        return std::nullopt;
    }
    return degrees;
}

std::int32_t elevationOf(std::string_view field)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const double feet = aviation::numberFromText(aviation::widen(field.substr(0, kLongestNumber)));
    return static_cast<std::int32_t>(
        std::clamp(feet, double{Limits::min()}, double{Limits::max()}));
}

std::optional<QAirport> parseRow(std::string_view line, DecimalMark mark)
{
    Fields fields;
    if (line.empty() || line.front() == '#' || !splitFields(line, fields)) {
        return std::nullopt;
    }
    const std::optional<double> latitude = coordinate(fields[kLatitude], 90.0, mark);
    const std::optional<double> longitude = coordinate(fields[kLongitude], 180.0, mark);
    if (!latitude || !longitude) {
        return std::nullopt;
    }
    return QAirport(textOf(fields[kName]), textOf(fields[kIdent]), textOf(fields[kRegion]),
                    *latitude, *longitude, elevationOf(fields[kElevation]));
}

QVector<QAirport> readTable(const QByteArray& text, DecimalMark mark)
{
    QVector<QAirport> airports;
    std::string_view rest(text.constData(), static_cast<std::size_t>(text.size()));
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find('\n'), rest.size());
        if (const auto airport = parseRow(rest.substr(0, length), mark)) {
            airports.push_back(*airport);
        }
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    return airports;
}

} // namespace

QVector<QAirport> readAirportTable(const QByteArray& text)
{
    return readTable(text, DecimalMark::Point);
}

QVector<QAirport> parseAdditionalAirports(const QByteArray& text)
{
    return readTable(text, DecimalMark::PointOrComma);
}

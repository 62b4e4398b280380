#include "weather/store/StationRow.h"

#include "aviation/Units.h"
#include "aviation/support/NumberText.h"

#include <algorithm>
#include <cstdint>

namespace aviation::weather {

namespace {

struct Columns
{
    std::size_t first;
    std::size_t width;
};
constexpr Columns kNumber{0, 6};
constexpr Columns kIcao{7, 4};
constexpr Columns kName{14, 20};
constexpr Columns kCountry{34, 2};
constexpr Columns kLatitude{37, 5};
constexpr Columns kLongitude{43, 6};
constexpr Columns kElevation{50, 4};
constexpr std::size_t kShortestRow = 49;

std::wstring_view cutColumn(std::wstring_view row, Columns columns)
{
    return row.substr(std::min(columns.first, row.size()), columns.width);
}

std::wstring trimmedCut(std::wstring_view row, Columns columns)
{
    const std::wstring_view cell = cutColumn(row, columns);
    const std::size_t first = cell.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) {
        return {};
    }
    return std::wstring(cell.substr(first, cell.find_last_not_of(L' ') - first + 1));
}

bool isDigits(std::wstring_view text)
{
    return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

/// "DDMM" or "DDDMM" with a letter after it: degrees, negative for the second of the letters.
std::optional<double> degreesFrom(std::wstring_view cell, std::wstring_view letters, double limit)
{
    constexpr std::size_t kMinuteDigits = 2;
    const std::wstring_view digits = cell.substr(0, cell.size() - 1);
    const std::size_t letter = letters.find(cell.back());
    if (!isDigits(digits) || letter == std::wstring_view::npos) {
        return std::nullopt;
    }
    const std::size_t degreeDigits = digits.size() - kMinuteDigits;
    const double degrees = integerFromText(digits.substr(0, degreeDigits))
                           + integerFromText(digits.substr(degreeDigits)) / 60.0;
    if (degrees > limit) {
        return std::nullopt;
    }
    return letter == 0 ? degrees : -degrees;
}

std::int32_t elevationFeet(std::wstring_view cell)
{
    return static_cast<std::int32_t>(integerFromText(cell) * kFeetPerMetre);
}

} // namespace

std::optional<StationRow> parseStationRow(std::wstring_view row)
{
    if (!row.empty() && row.back() == L'\r') {
        row.remove_suffix(1);
    }
    if (row.size() < kShortestRow || !isDigits(cutColumn(row, kNumber))) {
        return std::nullopt;
    }
    const std::optional<double> latitude = degreesFrom(cutColumn(row, kLatitude), L"NS", 90.0);
    const std::optional<double> longitude = degreesFrom(cutColumn(row, kLongitude), L"EW", 180.0);
    if (!latitude || !longitude) {
        return std::nullopt;
    }
    std::wstring icao = trimmedCut(row, kIcao);
    std::wstring name = trimmedCut(row, kName);
    std::wstring country = trimmedCut(row, kCountry);
    return StationRow{std::wstring(cutColumn(row, kNumber)),
                      Station(icao, name, country, elevationFeet(cutColumn(row, kElevation)),
                              Position(*latitude, *longitude))};
}

} // namespace aviation::weather

#include "weather/store/UpperAirText.h"

#include "aviation/support/NumberText.h"

#include <algorithm>
#include <charconv>

namespace aviation::weather {

namespace {

/// As the C conversions read a long: leading blanks are skipped, nothing readable is 0.
std::int64_t longFromText(std::wstring_view text)
{
    const std::string digits =
        narrowAscii(text.substr(std::min(text.find_first_not_of(L" \t"), text.size())));
    std::int64_t value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value;
}

} // namespace

bool readUpperAirHeader(std::wstring_view text, UpperAirHeader& header)
{
    constexpr std::wstring_view kTime = L"TIME:";
    constexpr std::size_t kTimeDigits = 10;
    const std::wstring_view line = text.substr(0, text.find(L'\n'));
    if (line.size() < 2 || line.find(L'#') == std::wstring_view::npos) {
        return false;
    }
    header.text = line;
    header.isError = line.find(L"Error") != std::wstring_view::npos;
    const std::size_t time = line.find(kTime);
    if (time != std::wstring_view::npos) {
        header.time = longFromText(line.substr(time + kTime.size(), kTimeDigits));
    }
    return true;
}

} // namespace aviation::weather

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Numbers to and from text that never see the locale: files, wire texts and reports use a decimal
/// point on every machine. All functions are pure and callable from any thread.
namespace aviation {

/// As printf's "%0<width>i": the sign counts towards the width. Width 0 pads nothing.
std::string integerText(std::int64_t value, int width = 0);

/// As printf's "%0<width>.<precision>f" in the C locale; not finite values print "nan" or "inf".
std::string fixedText(double value, int precision, int width = 0);

/// As the C conversions: leading blanks and a sign are accepted, reading stops at the first
/// character that isn't a digit, nothing readable is 0. Saturates at the 32-bit limits.
std::int32_t integerFromText(std::wstring_view text);

/// The same for a decimal number with a point and an optional exponent. Text that reads as "nan" or
/// "inf" gives 0, so a table can't smuggle one in; overflow saturates to the largest finite double.
double numberFromText(std::wstring_view text);

/// integerFromText for where reports are read: up to eight digits are read without a call.
inline std::int32_t integerFromDigits(std::wstring_view text)
{
    constexpr std::size_t kSafeDigits = 9;
    std::int32_t value = 0;
    std::size_t at = 0;
    while (at < text.size() && at < kSafeDigits && text[at] >= L'0' && text[at] <= L'9') {
        value = value * 10 + static_cast<std::int32_t>(text[at++] - L'0');
    }
    const bool isWhole = at > 0 && at < kSafeDigits;
    return isWhole ? value : integerFromText(text);
}

/// ASCII text as a wide one and back; a wide character above 127 becomes '?'.
std::wstring widen(std::string_view text);
std::string narrowAscii(std::wstring_view text);

} // namespace aviation

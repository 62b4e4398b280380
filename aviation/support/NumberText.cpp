#include "aviation/support/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace aviation {

namespace {

bool isSpace(wchar_t c)
{
    return c == L' ' || (c >= L'\t' && c <= L'\r');
}

bool isDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

std::wstring_view withoutLeadingSpace(std::wstring_view text)
{
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::string paddedWithZeros(std::string digits, int width)
{
    const std::size_t wanted = width > 0 ? static_cast<std::size_t>(width) : 0;
    if (digits.size() < wanted) {
        const std::size_t behindSign = digits.front() == '-' ? 1 : 0;
        digits.insert(behindSign, wanted - digits.size(), '0');
    }
    return digits;
}

std::size_t digitsFrom(std::wstring_view text, std::size_t at)
{
    std::size_t end = at;
    while (end < text.size() && isDigit(text[end])) {
        ++end;
    }
    return end - at;
}

/// Length of "[+-]digits[.digits][e[+-]digits]" at the front, 0 if there is no digit.
std::size_t decimalLength(std::wstring_view text)
{
    std::size_t at = !text.empty() && (text[0] == L'-' || text[0] == L'+') ? 1 : 0;
    const std::size_t whole = digitsFrom(text, at);
    at += whole;
    std::size_t fraction = 0;
    if (at < text.size() && text[at] == L'.') {
        fraction = digitsFrom(text, at + 1);
        at += 1 + fraction;
    }
    if (whole + fraction == 0) {
        return 0;
    }
    if (at < text.size() && (text[at] == L'e' || text[at] == L'E')) {
        const bool sign = at + 1 < text.size() && (text[at + 1] == L'-' || text[at + 1] == L'+');
        const std::size_t exponent = digitsFrom(text, at + 1 + (sign ? 1 : 0));
        at += exponent > 0 ? 1 + (sign ? 1 : 0) + exponent : 0;
    }
    return at;
}

/// What from_chars leaves open when a number is out of range: tiny ones are 0, huge ones saturate.
double outOfRangeValue(std::string_view digits)
{
    const std::size_t exponentAt = digits.find_first_of("eE");
    const bool negativeExponent =
        exponentAt != std::string_view::npos && digits.substr(exponentAt + 1, 1) == "-";
    const std::string_view mantissa = digits.substr(0, exponentAt);
    const std::string_view whole = mantissa.substr(0, mantissa.find('.'));
    const bool huge = !negativeExponent
                      && (exponentAt != std::string_view::npos
                          || whole.find_first_of("123456789") != std::string_view::npos);
    const double magnitude = huge ? std::numeric_limits<double>::max() : 0.0;
    return digits.front() == '-' ? -magnitude : magnitude;
}

} // namespace

std::string integerText(std::int64_t value, int width)
{
    return paddedWithZeros(std::to_string(value), width);
}

std::string fixedText(double value, int precision, int width)
{
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "nan" : (value < 0 ? "-inf" : "inf");
    }
    std::array<char, 400> buffer{}; // the largest double has 309 digits before the point
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, precision);
    return paddedWithZeros(std::string(buffer.data(), result.ptr), width);
}

std::int32_t integerFromText(std::wstring_view text)
{
    constexpr std::int64_t kMax = std::numeric_limits<std::int32_t>::max();
    text = withoutLeadingSpace(text);
    const bool negative = !text.empty() && text.front() == L'-';
    if (negative || (!text.empty() && text.front() == L'+')) {
        text.remove_prefix(1);
    }
    std::int64_t value = 0;
    for (const wchar_t c : text) {
        if (!isDigit(c)) {
            break;
        }
        value = value * 10 + (c - L'0');
        if (value > kMax) {
            return negative ? std::numeric_limits<std::int32_t>::min()
                            : std::numeric_limits<std::int32_t>::max();
        }
    }
    return static_cast<std::int32_t>(negative ? -value : value);
}

double numberFromText(std::wstring_view text)
{
    text = withoutLeadingSpace(text);
    const std::string digits = narrowAscii(text.substr(0, decimalLength(text)));
    if (digits.empty()) {
        return 0.0;
    }
    const char* first = digits.data() + (digits.front() == '+' ? 1 : 0);
    double value = 0.0;
    const auto result = std::from_chars(first, digits.data() + digits.size(), value);
    return result.ec == std::errc::result_out_of_range ? outOfRangeValue(digits) : value;
}

std::wstring widen(std::string_view text)
{
    return {text.begin(), text.end()};
}

std::string narrowAscii(std::wstring_view text)
{
    std::string narrow;
    narrow.reserve(text.size());
    for (const wchar_t c : text) {
        // unsigned on some systems, signed on others
        narrow.push_back(static_cast<std::uint32_t>(c) < 128 ? static_cast<char>(c) : '?');
    }
    return narrow;
}

} // namespace aviation

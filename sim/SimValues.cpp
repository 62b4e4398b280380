#include "sim/SimValues.h"

#include <QTextCodec>

#include <algorithm>
#include <cmath>
#include <limits>

namespace simvalue {

namespace {

constexpr int kFirstDigit = 12; // bits
constexpr int kDigitBits = 4;
constexpr int kHexBase = 16;
constexpr int kDecimalBase = 10;

std::uint32_t bcdOf(std::uint32_t number)
{
    return number == 0 ? 0 : kHexBase * bcdOf(number / kDecimalBase) + number % kDecimalBase;
}

} // namespace

std::int32_t truncated(double value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(value)) {
        return 0;
    }
    return static_cast<std::int32_t>(
        std::clamp(value, static_cast<double>(Limits::min()), static_cast<double>(Limits::max())));
}

float singleOf(double value)
{
    constexpr auto kLargest = static_cast<double>(std::numeric_limits<float>::max());
    return std::isnan(value) ? 0.0F : static_cast<float>(std::clamp(value, -kLargest, kLargest));
}

QString textOf(const char* bytes, std::size_t size)
{
    constexpr int kUtf8Mib = 106;
    constexpr std::size_t kLongest = std::numeric_limits<int>::max();
    const int length =
        static_cast<int>(std::find(bytes, bytes + std::min(size, kLongest), '\0') - bytes);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text = QTextCodec::codecForMib(kUtf8Mib)->toUnicode(bytes, length, &state);
    const bool isUtf8 = state.invalidChars == 0 && state.remainingChars == 0;
    return isUtf8 ? text : QString::fromLatin1(bytes, length);
}

std::string cutText(const std::string& utf8, std::size_t most)
{
    constexpr unsigned kLeadMask = 0xC0;
    constexpr unsigned kFollower = 0x80;
    std::size_t length = utf8.size();
    if (length > most) {
        length = most;
        while (length > 0 && (static_cast<unsigned char>(utf8[length]) & kLeadMask) == kFollower) {
            --length;
        }
    }
    return utf8.substr(0, length);
}

std::uint16_t fromBcd(std::uint16_t word)
{
    int number = 0;
    for (int shift = kFirstDigit; shift >= 0; shift -= kDigitBits) {
        const int digit = (word >> shift) % kHexBase;
        if (digit >= kDecimalBase) {
            break;
        }
        number = number * kDecimalBase + digit;
    }
    return static_cast<std::uint16_t>(number);
}

std::uint16_t toBcd(std::uint16_t number)
{
    return static_cast<std::uint16_t>(bcdOf(number));
}

} // namespace simvalue

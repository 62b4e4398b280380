#include "sim/FsuipcValues.h"

namespace fsuipcvalue {

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

} // namespace fsuipcvalue

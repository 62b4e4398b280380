#include "sim/FsuipcValues.h"

#include <QByteArray>

namespace fsuipcvalue {

namespace {

constexpr int kFirstDigit = 12; // bits
constexpr int kDigitBits = 4;
constexpr int kHexBase = 16;
constexpr int kDecimalBase = 10;

std::uint32_t BcdOf(std::uint32_t number)
{
    return number == 0 ? 0 : kHexBase * BcdOf(number / kDecimalBase) + number % kDecimalBase;
}

} // namespace

QString Text(const char* bytes, std::size_t size)
{
    const auto length = std::find(bytes, bytes + size, '\0') - bytes;
    const QByteArray text(bytes, static_cast<int>(length));
    QString read = QString::fromUtf8(text);
    return read.contains(QChar(QChar::ReplacementCharacter)) ? QString::fromLatin1(text) : read;
}

std::uint16_t FromBcd(std::uint16_t word)
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

std::uint16_t ToBcd(std::uint16_t number)
{
    return static_cast<std::uint16_t>(BcdOf(number));
}

} // namespace fsuipcvalue

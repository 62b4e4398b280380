#include "standins/simulator/SimConnectText.h"

namespace simulator {

std::string textOf(const char* text)
{
    return text == nullptr ? std::string() : std::string(text).substr(0, kLongestCallText);
}

QString wideTextOf(const char* text)
{
    return QString::fromStdString(textOf(text));
}

std::string number(std::uint32_t value)
{
    return std::to_string(value);
}

std::string number(float value)
{
    constexpr int kDigits = 9;
    return QByteArray::number(static_cast<double>(value), 'g', kDigits).toStdString();
}

} // namespace simulator

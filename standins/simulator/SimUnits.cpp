#include "aviation/Units.h"
#include "standins/simulator/SimVariables.h"

#include <QString>

#include <array>

namespace simulator {

namespace {

enum class Quantity
{
    Length,
    Angle,
    Speed,
    Temperature,
    Share, ///< also counts and flags
    Flag,
    Weight,
    Volume,
    Time,
    WeightFlow,
    Frequency,
    Code
};

/// A value in this unit times the factor, plus the offset, is one in the quantity's first unit.
struct Unit
{
    const char* name = "";
    Quantity quantity = Quantity::Share;
    double factor = 1.0;
    double offset = 0.0;
};

constexpr double kMetresPerFoot = 0.3048;
constexpr double kMetresPerMile = 1609.344;
constexpr double kMetresPerNm = 1852.0;
constexpr double kSecondsPerHour = 3600.0;
constexpr double kKnotsPerFootPerSecond = kMetresPerFoot * kSecondsPerHour / kMetresPerNm;
constexpr double kPoundsPerKilogram = 2.2046226218487757;
constexpr double kGallonsPerLitre = 0.26417205235814845;

constexpr std::array kUnits{
    Unit{"feet", Quantity::Length, 1.0},
    Unit{"foot", Quantity::Length, 1.0},
    Unit{"ft", Quantity::Length, 1.0},
    Unit{"meters", Quantity::Length, 1.0 / kMetresPerFoot},
    Unit{"meter", Quantity::Length, 1.0 / kMetresPerFoot},
    Unit{"m", Quantity::Length, 1.0 / kMetresPerFoot},
    Unit{"kilometers", Quantity::Length, 1000.0 / kMetresPerFoot},
    Unit{"miles", Quantity::Length, kMetresPerMile / kMetresPerFoot},
    Unit{"nautical miles", Quantity::Length, kMetresPerNm / kMetresPerFoot},
    Unit{"degrees", Quantity::Angle, 1.0},
    Unit{"degree", Quantity::Angle, 1.0},
    Unit{"radians", Quantity::Angle, 180.0 / aviation::kPi},
    Unit{"radian", Quantity::Angle, 180.0 / aviation::kPi},
    Unit{"knots", Quantity::Speed, 1.0},
    Unit{"knot", Quantity::Speed, 1.0},
    Unit{"feet per second", Quantity::Speed, kKnotsPerFootPerSecond},
    Unit{"feet/second", Quantity::Speed, kKnotsPerFootPerSecond},
    Unit{"feet per minute", Quantity::Speed, kKnotsPerFootPerSecond / 60.0},
    Unit{"feet/minute", Quantity::Speed, kKnotsPerFootPerSecond / 60.0},
    Unit{"meters per second", Quantity::Speed, kSecondsPerHour / kMetresPerNm},
    Unit{"kilometers per hour", Quantity::Speed, 1000.0 / kMetresPerNm},
    Unit{"celsius", Quantity::Temperature, 1.0},
    Unit{"kelvin", Quantity::Temperature, 1.0, -273.15},
    Unit{"fahrenheit", Quantity::Temperature, 5.0 / 9.0, -160.0 / 9.0},
    Unit{"number", Quantity::Share, 1.0},
    Unit{"percent over 100", Quantity::Share, 1.0},
    Unit{"position", Quantity::Share, 1.0},
    Unit{"position 32k", Quantity::Share, 1.0 / 32767.0},
    Unit{"percent", Quantity::Share, 0.01},
    Unit{"bool", Quantity::Flag, 1.0},
    Unit{"pounds", Quantity::Weight, 1.0},
    Unit{"lbs", Quantity::Weight, 1.0},
    Unit{"kilograms", Quantity::Weight, kPoundsPerKilogram},
    Unit{"gallons", Quantity::Volume, 1.0},
    Unit{"gallon", Quantity::Volume, 1.0},
    Unit{"liters", Quantity::Volume, kGallonsPerLitre},
    Unit{"seconds", Quantity::Time, 1.0},
    Unit{"minutes", Quantity::Time, 60.0},
    Unit{"hours", Quantity::Time, kSecondsPerHour},
    Unit{"pounds per hour", Quantity::WeightFlow, 1.0},
    Unit{"hz", Quantity::Frequency, 1.0},
    Unit{"khz", Quantity::Frequency, 1000.0},
    Unit{"mhz", Quantity::Frequency, 1000000.0},
    Unit{"bco16", Quantity::Code, 1.0}};

const Unit* unitOf(const std::string& name)
{
    const QString wanted = QString::fromLatin1(name.c_str()).trimmed();
    for (const Unit& unit : kUnits) {
        if (wanted.compare(QLatin1String(unit.name), Qt::CaseInsensitive) == 0) {
            return &unit;
        }
    }
    return nullptr;
}

bool isCountOrFlag(Quantity quantity)
{
    return quantity == Quantity::Share || quantity == Quantity::Flag;
}

} // namespace

std::optional<double> convertUnit(double value, const std::string& from, const std::string& to)
{
    const Unit* source = unitOf(from);
    const Unit* target = unitOf(to);
    if (source == nullptr || target == nullptr) {
        return std::nullopt;
    }
    if (source == target) {
        return value;
    }
    if (target->quantity == Quantity::Flag && isCountOrFlag(source->quantity)) {
        return value != 0.0 ? 1.0 : 0.0;
    }
    const bool areAlike = source->quantity == target->quantity
                          || (isCountOrFlag(source->quantity) && isCountOrFlag(target->quantity));
    if (!areAlike) {
        return std::nullopt;
    }
    return (value * source->factor + source->offset - target->offset) / target->factor;
}

} // namespace simulator

#include "sim/SimConnectRecords.h"

#include "aviation/Units.h"
#include "aviation/support/Clock.h"
#include "sim/SimConnectDefinitions.h"
#include "sim/SimValues.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ctime>
#include <limits>

namespace simconnectdata {

using simvalue::singleOf;
using simvalue::textOf;
using simvalue::truncated;

namespace {

constexpr double kPercent = 100.0;
constexpr int kFirstYear = 1900;

/// Takes packed values one after the other; zeros after the end.
class PackedReader
{
public:
    PackedReader(const char* data, std::size_t size) : m_data(data), m_left(size) {}

    std::int32_t int32() { return take<std::int32_t>(); }
    std::int64_t int64() { return take<std::int64_t>(); }
    double float64() { return finite(take<double>()); }
    float float32() { return finite(take<float>()); }
    QString text(simconnect::DataType type)
    {
        const std::size_t size = std::min(simConnectDatumSize(type), m_left);
        QString text = textOf(m_data, size);
        skip(size);
        return text;
    }

private:
    template <typename Number>
    static Number finite(Number number)
    {
        return std::isfinite(number) ? number : Number();
    }
    template <typename Value>
    Value take()
    {
        Value value = {};
        const std::size_t size = std::min(sizeof value, m_left);
        if (size == sizeof value) {
            std::memcpy(&value, m_data, size);
        }
        skip(size);
        return value;
    }
    void skip(std::size_t size)
    {
        m_data += size;
        m_left -= size;
    }

    const char* m_data;
    std::size_t m_left;
};

/// Finite for every finite number.
double times(double number, double factor)
{
    const double largest = std::numeric_limits<double>::max() / factor;
    return std::clamp(number, -largest, largest) * factor;
}

/// Rounded to steps of the given size, which are finer than the unit and coarser than what a number
/// of 32 bits is off by; then cut to whole units of ten steps, as the words of FSUIPC and the
/// bridge are: 118.025 MHz is 11802 on every way.
std::uint16_t cutToUnits(float number, double step)
{
    constexpr double kStepsPerUnit = 10.0;
    constexpr double kLargest = std::numeric_limits<std::uint16_t>::max();
    const double units = std::floor(std::round(static_cast<double>(number) / step) / kStepsPerUnit);
    return static_cast<std::uint16_t>(std::clamp(units, 0.0, kLargest));
}

std::uint16_t word(std::int32_t number)
{
    return static_cast<std::uint16_t>(
        std::clamp<std::int32_t>(number, 0, std::numeric_limits<std::uint16_t>::max()));
}

/// Deliberately by this computer's calendar: its time now with the simulator's date at hour and
/// minute 0, with the seconds and the daylight saving of now, plus the zulu seconds.
std::int64_t simTime(const AircraftVariables& variables)
{
    const QDateTime now = QDateTime::fromSecsSinceEpoch(aviation::Clock::current().nowSeconds());
    std::tm date = {};
    date.tm_sec = now.time().second();
    date.tm_mday = variables.zuluDay;
    date.tm_mon = variables.zuluMonth - 1;
    date.tm_year = variables.zuluYear - kFirstYear;
    date.tm_isdst = now.isDaylightTime() ? 1 : 0;
    return std::mktime(&date) + variables.zuluSeconds;
}

void fillDetail(const AircraftVariables& variables, aviation::structs::AircraftDetail& detail)
{
    detail.name = variables.title.toStdWString();
    detail.type = variables.type.toStdWString();
    detail.registration = variables.registration.toStdWString();
    detail.code = variables.model.toStdWString();
    detail.airline = variables.airline.toStdWString();
    detail.fuelFlow = static_cast<float>(variables.fuelFlow);
    detail.emptyWeight = variables.emptyWeight;
    detail.maxGrossWeight = variables.maxGrossWeight;
}

void fillState(const AircraftVariables& variables, aviation::structs::AircraftState& state)
{
    state.onGround = variables.onGround != 0;
    state.parkingBrake = variables.parkingBrake != 0.0;
    state.engineOff = variables.combustion == 0.0;
    state.landingLight = variables.landingLight != 0.0;
    state.doorOpen = std::any_of(variables.exits.begin(), variables.exits.end(),
                                 [](double exit) { return exit != 0.0; });
}

aviation::Position place(double latitude, double longitude)
{
    constexpr double kLargestLatitude = 90.0;
    constexpr double kLargestLongitude = 360.0;
    if (std::abs(latitude) > kLargestLatitude || std::abs(longitude) > kLargestLongitude) {
        return {};
    }
    return {latitude, longitude};
}

/// With a blank before the numbers of the last two, other than fuelTankName.
std::wstring tankName(std::int32_t id)
{
    constexpr std::int32_t kExternal1 = 10;
    constexpr std::int32_t kExternal2 = 11;
    switch (id) {
    case kExternal1:
        return L"External 1";
    case kExternal2:
        return L"External 2";
    default:
        return aviation::structs::fuelTankName(id);
    }
}

} // namespace

AircraftVariables readAircraft(const char* data)
{
    using simconnect::DataType;
    PackedReader reader(data, simConnectAircraftDefinition().packedSize());
    AircraftVariables read = {};
    for (double* const number :
         {&read.altitude, &read.latitude, &read.longitude, &read.heightAgl, &read.tas,
          &read.groundSpeed, &read.verticalSpeed, &read.windDirection, &read.windSpeed,
          &read.temperature, &read.magneticVariation, &read.visibility, &read.heading})
    {
        *number = reader.float64();
    }
    read.onGround = reader.int32();
    read.inCloud = reader.int32();
    read.parkingBrake = reader.float64();
    read.combustion = reader.float64();
    read.landingLight = reader.float64();
    for (double& exit : read.exits) {
        exit = reader.float64();
    }
    read.title = reader.text(DataType::String256);
    read.type = reader.text(DataType::String32);
    read.registration = reader.text(DataType::String32);
    read.model = reader.text(DataType::String32);
    read.airline = reader.text(DataType::String64);
    read.flightNumber = reader.text(DataType::String32);
    read.fuelFlow = reader.int32();
    read.emptyWeight = reader.float32();
    read.maxGrossWeight = reader.float32();
    read.totalWeight = reader.float32();
    read.zuluSeconds = reader.int64();
    read.zuluDay = reader.int32();
    read.zuluMonth = reader.int32();
    read.zuluYear = reader.int32();
    return read;
}

bool isTime(const AircraftVariables& variables)
{
    constexpr int kLastYear = 9999;
    constexpr std::int64_t kDay = 86400; // itself as well, what comes before it may be rounded up
    return QDate::isValid(variables.zuluYear, variables.zuluMonth, variables.zuluDay)
           && variables.zuluYear >= kFirstYear && variables.zuluYear <= kLastYear
           && variables.zuluSeconds >= 0 && variables.zuluSeconds <= kDay;
}

aviation::structs::AircraftData aircraftOf(const AircraftVariables& variables)
{
    constexpr float kNoGust = -1.0F;
    constexpr double kMetresPerKilometre = 1000.0;
    constexpr double kHalfTurn = 180.0;
    aviation::structs::AircraftData aircraft;
    fillState(variables, aircraft);
    fillDetail(variables, aircraft);
    aircraft.position = place(variables.latitude, variables.longitude);
    aircraft.heightAgl = truncated(variables.heightAgl);
    aircraft.altitude = truncated(variables.altitude);
    aircraft.tas = truncated(variables.tas);
    aircraft.groundSpeed = truncated(variables.groundSpeed);
    aircraft.heading = times(variables.heading, kHalfTurn) / aviation::kPi;
    aircraft.verticalSpeed = truncated(feetPerMinute(variables));
    aircraft.wind = {singleOf(variables.windDirection), singleOf(variables.windSpeed), kNoGust,
                     0.0F};
    aircraft.temperature = singleOf(variables.temperature);
    aircraft.visibility = singleOf(std::trunc(variables.visibility / kMetresPerKilometre));
    aircraft.magneticVariation = singleOf(variables.magneticVariation);
    aircraft.totalWeight = variables.totalWeight;
    aircraft.simTime = isTime(variables) ? simTime(variables) : 0;
    return aircraft;
}

double feetPerMinute(const AircraftVariables& variables)
{
    constexpr double kSecondsPerMinute = 60.0;
    return times(variables.verticalSpeed, kSecondsPerMinute);
}

aviation::structs::AircraftFuel readFuel(const char* data)
{
    PackedReader reader(data, simConnectFuelDefinition().packedSize());
    aviation::structs::AircraftFuel fuel;
    for (std::size_t slot = 0; slot < kSimConnectTanks; ++slot) {
        const std::int32_t id = simConnectTankId(slot);
        const double level = times(reader.float64(), kPercent);
        const double capacity = reader.float64();
        if (capacity > 0.0) {
            fuel.tanks.push_back({tankName(id), id, level, capacity});
        }
    }
    fuel.fuelWeight = reader.float64();
    return fuel;
}

aviation::structs::AircraftPayload readPayload(const char* data)
{
    PackedReader reader(data, simConnectPayloadDefinition().packedSize());
    const int count = std::clamp(reader.int32(), 0, kSimConnectStations);
    aviation::structs::AircraftPayload payload;
    for (int station = 0; station < count; ++station) {
        const QString name = reader.text(simconnect::DataType::String256);
        const auto weight = static_cast<float>(reader.int32());
        payload.stations.emplace_back(name.toStdWString(), weight, 0.0F, 0);
    }
    return payload;
}

aviation::structs::RadioFrequencys readRadios(const char* data)
{
    constexpr double kMegahertzStep = 0.001;
    constexpr double kAdfStep = 100.0; // hertz
    PackedReader reader(data, simConnectRadioDefinition().packedSize());
    aviation::structs::RadioFrequencys radios;
    for (std::uint16_t* const frequency :
         {&radios.comm1active, &radios.comm1standby, &radios.comm2active, &radios.comm2standby,
          &radios.nav1active, &radios.nav1standby, &radios.nav2active, &radios.nav2standby})
    {
        *frequency = cutToUnits(reader.float32(), kMegahertzStep);
    }
    radios.adf = cutToUnits(reader.float32(), kAdfStep);
    radios.transponder = simvalue::fromBcd(word(reader.int32())); // a digit in four bits each
    return radios;
}

} // namespace simconnectdata

#include "app/base/StopFlag.h"
#include "sim/FSInterfaceFSUIPC.h"
#include "tests/sim/ScriptedFsuipc.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

/// The simulator's number, then rows of bytes: each with the two bytes of its offset and one of its
/// length in front; the last one ends where the data do.
void fill(FsuipcScript& script, const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t kHead = 3;
    if (size == 0) {
        return;
    }
    script.code = *data++;
    --size;
    while (size > kHead) {
        const std::size_t at = data[0] + 256U * data[1];
        const std::size_t told = std::min<std::size_t>(data[2], size - kHead);
        const std::size_t length = std::min(told, script.memory.size() - at);
        std::copy_n(data + kHead, length, &script.memory[at]);
        data += kHead + told;
        size -= kHead + told;
    }
}

void checkAircraft(FSInterfaceFSUIPC& object, FsuipcScript& script)
{
    constexpr std::uint32_t kMenu = 0x3365;
    constexpr std::uint32_t kPauseKey = 0x0264; // two bytes
    aviation::structs::AircraftData data;
    const bool paused = script.memory[kMenu] != 0 || script.memory[kPauseKey] != 0
                        || script.memory[kPauseKey + 1] != 0;
    require(object.GetAircraftData(data) == (paused ? simresult::kPaused : simresult::kNone));
    script.put(kMenu, std::uint8_t{0});
    script.put(kPauseKey, std::uint16_t{0});
    require(object.GetAircraftData(data) == simresult::kNone);
    require(std::abs(data.position.latitude()) <= 90.0);
    require(std::abs(data.position.longitude()) <= 180.0);
    require(data.heading >= 0.0 && data.heading < 360.0 && std::isfinite(data.headingMagnetic));
    require(std::isfinite(data.wind.Dir) && std::isfinite(data.wind.Speed));
    require(data.wind.Gust == -1.0F && std::isfinite(data.visibility));
    require(std::isfinite(data.temperature) && std::isfinite(data.totalWeight));
    require(std::isfinite(data.fuelFlow) && std::isfinite(data.maxGrossWeight));
    require(data.name.size() <= 256 && data.registration.size() <= 12);
    require(data.simTime >= -62135596800 && data.simTime < 253402300800); // years 1 to 9999
}

/// What is read and written back leaves the tanks as they were.
void checkFuel(FSInterfaceFSUIPC& object, const FsuipcScript& script)
{
    aviation::structs::AircraftFuel fuel;
    require(object.GetAircraftFuel(fuel) == simresult::kNone);
    int last = 0;
    for (const auto& tank : fuel.tanks) {
        require(tank.id > last && tank.id <= 11 && tank.capacity > 0.0);
        last = tank.id;
    }
    const auto before = script.memory;
    require(object.SetAircraftFuel(fuel) == simresult::kNone);
    require(script.memory == before);
}

void checkPayload(FSInterfaceFSUIPC& object)
{
    aviation::structs::AircraftPayload payload;
    require(object.GetAircraftPayload(payload) == simresult::kNone);
    require(payload.stations.size() <= 61);
    for (const auto& station : payload.stations) {
        require(std::isfinite(station.maxWeight) && station.weight == 0.0F);
        require(station.name.size() <= 16);
    }
}

/// What was read reads the same after it was written back.
void checkRadios(FSInterfaceFSUIPC& object)
{
    aviation::structs::RadioFrequencys radios;
    require(object.GetRadioFrequencys(radios) == simresult::kNone);
    require(radios.comm1active >= 10000 && radios.comm1active <= 19999);
    require(radios.transponder <= 9999 && radios.adf <= 9999);
    aviation::structs::RadioFrequencys again;
    require(object.SetRadioFrequencys(radios) == simresult::kNone);
    require(object.GetRadioFrequencys(again) == simresult::kNone);
    require(std::memcmp(&radios, &again, sizeof(radios)) == 0);
}

} // namespace

/// A simulator's memory of any bytes gives bounded records with finite numbers.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ScriptedBothClients clients;
    FsuipcScript& script = clients.fsuipcScript;
    fill(script, data, size);
    const StopFlag stop;
    FSInterfaceFSUIPC object(clients, QString(), stop);
    require(object.Connect() == simresult::kNone);
    checkAircraft(object, script);
    checkFuel(object, script);
    checkPayload(object);
    checkRadios(object);
    QString observation;
    require(object.GetWeatherAt(observation, 0.0, 0.0) == simresult::kNone);
    require(observation.size() <= 2000);
    return 0;
}

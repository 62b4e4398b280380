#include "sim/BridgeText.h"

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

void checkAircraft(const QByteArray& text)
{
    QString fault;
    const aviation::structs::AircraftData data = bridgetext::aircraftFromText(text, &fault);
    require(std::isfinite(data.position.latitude()) && std::isfinite(data.position.longitude()));
    require(std::isfinite(data.heading) && std::isfinite(data.temperature));
    require(std::isfinite(data.wind.Dir) && data.wind.Gust == -1.0F);
    require(data.name.size() <= 256);
    if (text.count(':') + 1 < bridgetext::kAircraftFields) {
        require(fault.isEmpty() && data.name == L"unknown" && data.altitude == 0);
    }
}

/// What was read survives writing and reading once more.
void checkLoads(const QByteArray& text)
{
    const aviation::structs::AircraftFuel fuel = bridgetext::fuelFromText(text);
    QString fault;
    require(bridgetext::fuelFromText(bridgetext::fuelText(fuel), &fault).tanks.size()
            == fuel.tanks.size());
    const aviation::structs::AircraftPayload payload = bridgetext::payloadFromText(text);
    require(bridgetext::payloadFromText(bridgetext::payloadText(payload), &fault).stations.size()
            == payload.stations.size());
    for (const auto& station : payload.stations) {
        require(station.type >= 0
                && station.type < static_cast<std::int32_t>(station.typeNames.size()));
    }
    const QByteArray radios = bridgetext::radioText(bridgetext::radioFromText(text));
    require(bridgetext::radioText(bridgetext::radioFromText(radios, &fault)) == radios);
    require(fault.isEmpty());
}

} // namespace

/// Any bytes give records with finite numbers and bounded names, from each of the text forms.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<int>(size));
    checkAircraft(text);
    checkLoads(text);
    require(std::isfinite(bridgetext::windFromText(text).Dir));
    qint64 number = 0;
    bridgetext::longFromText(text, number);
    return 0;
}

#include "aviation/Grib.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

using namespace aviation::weather;

namespace {

constexpr std::size_t kShortestLevel = 19; // characters of "hhHHHHH TTTDD dddff"

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

void checkLevel(const GribLevel& level)
{
    require(level.altitude >= 0 && level.altitude <= 328'082);
    require(level.temperature >= -99 && level.temperature <= 99);
    require(std::isfinite(level.humidity) && level.humidity >= 0.0F);
    require(level.wind.Dir >= 0.0F && level.wind.Dir <= 639.0F);
    require(level.wind.Speed >= 0.0F && level.wind.Speed <= 1099.0F);
}

} // namespace

/// Any text of five characters or more decodes, to levels in proportion to its length and with
/// values in their ranges; a second decode changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text(data, data + size);
    Grib grib(text);
    require(grib.Decode() == (size < 5 ? gribstatus::kFresh : gribstatus::kDecoded));
    require(grib.levels().size() * kShortestLevel <= size);
    for (const GribLevel& level : grib.levels()) {
        checkLevel(level);
        require(level.pressure >= 10.0F && level.pressure <= 1000.0F);
    }
    checkLevel(grib.maximumWind());
    checkLevel(grib.tropopause());
    require(std::abs(grib.latitude()) <= 99.9 && std::abs(grib.longitude()) <= 999.9);

    const std::size_t levels = grib.levels().size();
    require(grib.Decode() == grib.status() && grib.levels().size() == levels);

    Grib header(text);
    const bool found = header.DecodeHeader() == gribstatus::kDecoded;
    require(found == !header.key().empty());
    require(size < 5 || header.key() == grib.key());
    return 0;
}

#include "weather/store/WeatherManager.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

using namespace aviation::weather;

namespace {

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

} // namespace

/// Upper-air text: one record a line at most, and the same text once more only replaces.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size))
            .toStdWString();
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), L'\n')) + 1;
    WeatherManager store;
    const bool isTaken = store.Initialize(text, storekind::kUpperAir, false);
    const std::size_t count = store.gribCount();
    require(isTaken || count == 0);
    require(count <= lines);
    require(store.Initialize(text, storekind::kUpperAir, false) == isTaken);
    require(store.gribCount() == count);
    for (double latitude = -90.0; latitude <= 90.0; latitude += 30.0) {
        Grib grib;
        const bool isFound = store.SearchGrib(aviation::Position(latitude, latitude), grib);
        require(isFound == (grib.status() == gribstatus::kDecoded));
        require(!isFound || !grib.key().empty());
    }
    return 0;
}

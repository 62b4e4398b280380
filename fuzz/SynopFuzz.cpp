#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "aviation/support/Clock.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

using namespace aviation::weather;

namespace {

/// Time stands, or two decodes of one report could differ.
class StandingClock final : public aviation::Clock
{
public:
    StandingClock() { install(this); }
    ~StandingClock() override { install(nullptr); }
    UtcTime NowUtc() const override { return UtcTime(std::chrono::hours(464'000)); }
    std::int64_t MonotonicMs() const override { return 0; }
    void SleepMs(int) override {}
};

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

bool sameWind(const Wind& a, const Wind& b)
{
    return a.Dir == b.Dir && a.Speed == b.Speed && a.Gust == b.Gust && a.Fourth == b.Fourth;
}

bool sameValues(const Synop& a, const Synop& b)
{
    return a.status() == b.status() && a.icao() == b.icao() && a.name() == b.name()
           && a.samePlace(b) && a.time() == b.time() && a.isTimeValid() == b.isTimeValid()
           && a.timeGroup() == b.timeGroup() && a.visibility() == b.visibility()
           && a.temperature() == b.temperature() && a.dewPoint() == b.dewPoint()
           && a.qnh() == b.qnh() && sameWind(a.wind(), b.wind())
           && a.clouds().size() == b.clouds().size();
}

void checkRanges(const Synop& synop)
{
    require(synop.synop().windUnit <= kWindUnitUnknown);
    require(synop.lowCode() <= 9 && synop.middleCode() <= 9 && synop.highCode() <= 9);
    require(synop.visibility() >= 0 && synop.visibility() <= 75000);
    require(synop.wind().Dir >= 0.0F && synop.wind().Dir <= 990.0F);
    require(synop.clouds().size() * 5 <= synop.reportText().size());
    for (const Cloud& cloud : synop.clouds()) {
        require(cloud.coverage <= 8 && cloud.base >= 0 && cloud.base <= 75000);
    }
}

} // namespace

/// Decoding twice gives the same values within their ranges, and the quick header agrees with the
/// header of the full decode. A METAR made of it starts with its time.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const StandingClock clock;
    const std::wstring text(data, data + size);
    Synop synop(text);
    const int status = synop.Decode();
    require(status == synop.status());
    require(synop.isDecoded() == (status == synopstatus::kDecoded));
    checkRanges(synop);
    Synop again = synop;
    static_cast<void>(again.Decode());
    require(sameValues(synop, again));

    Synop header(text);
    const int headerStatus = header.DecodeHeader();
    require(status != synopstatus::kDecoded || headerStatus == status);
    require(status != synopstatus::kDecoded
            || (header.icao() == synop.icao() && header.time() == synop.time()));

    Metar metar;
    synop.ToMetar(metar);
    require(metar.reportText().find(synop.timeGroup()) != std::wstring::npos);
    return 0;
}

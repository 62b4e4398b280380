#include "app/cycle/ReportChoice.h"

#include "app/jobs/WeatherJobs.h"

#include <chrono>
#include <utility>

using aviation::weather::Metar;
using aviation::weather::Synop;

namespace reportchoice {

namespace {

constexpr double kNearSynopNm = 50.0;

int twoDigits(std::wstring_view text, std::size_t at)
{
    if (text.size() < at + 2) {
        return -1;
    }
    const wchar_t tens = text[at];
    const wchar_t ones = text[at + 1];
    const bool digits = tens >= L'0' && tens <= L'9' && ones >= L'0' && ones <= L'9';
    return digits ? (tens - L'0') * 10 + (ones - L'0') : -1;
}

int hourOf(aviation::Clock::UtcTime time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    return static_cast<int>(std::chrono::floor<std::chrono::hours>(time - day).count());
}

int dayOfMonth(aviation::Clock::UtcTime time)
{
    const std::chrono::year_month_day date(std::chrono::floor<std::chrono::days>(time));
    return static_cast<int>(static_cast<unsigned>(date.day()));
}

bool synopIsBetter(double metarNm, double synopNm, const Synop& synop, bool metarIsOld)
{
    constexpr double kNearMetarNm = 10.0;
    constexpr double kFarMetarNm = 100.0;
    const bool valid = synop.status() == aviation::weather::synopstatus::kDecoded;
    const bool nearer = metarNm > synopNm && metarNm > kNearMetarNm;
    return (valid && (nearer || metarIsOld)) || (synopNm < kNearSynopNm && metarNm > kFarMetarNm);
}

} // namespace

bool IsOldReport(std::wstring_view timeGroup, aviation::Clock::UtcTime now)
{
    constexpr int kAgeHours = 3;
    // In the first three hours of a day nothing of that day is old.
    return twoDigits(timeGroup, 0) != dayOfMonth(now)
           || twoDigits(timeGroup, 2) < hourOf(now) - kAgeHours;
}

Metar MetarOfSynop(const Synop& synop)
{
    Metar metar;
    synop.ToMetar(metar);
    return metar;
}

Metar ForAircraft(Metar metar, Synop& synop, const aviation::Position& aircraft,
                  aviation::Clock::UtcTime now)
{
    const double metarNm = metar.DistanceTo(aircraft);
    const double synopNm = synop.DistanceTo(aircraft);
    if (!synop.isDecoded() && !synop.reportText().empty()) {
        synop.Decode();
    }
    if (synopNm < kNearSynopNm) {
        metar.setVisFromSynop(synop.visibility());
    }
    const bool old = IsOldReport(metar.timeGroup(), now);
    return synopIsBetter(metarNm, synopNm, synop, old) ? MetarOfSynop(synop) : metar;
}

Metar MetarForRequest(Metar metar, const Synop& synop, int error)
{
    if (error == weathererror::kNoMetar && synop.isKnown()) {
        synop.ToMetar(metar);
    }
    return metar;
}

std::vector<Metar> ForRequest(Metar metar, const Synop& synop, const aviation::Position& aircraft,
                              const Request& request)
{
    std::vector<Metar> shown;
    if (!request.taf.empty()) {
        metar.setTafText(request.taf);
    }
    // Without a place there is no SYNOP that a report could be made of.
    if (request.error != weathererror::kNoSynop && synop.isKnown()) {
        if (metar.icao() != request.icao) {
            shown.push_back(MetarOfSynop(synop));
        } else if (synop.DistanceTo(aircraft) < kNearSynopNm) {
            metar.setVisFromSynop(synop.visibility());
        }
    }
    shown.push_back(std::move(metar));
    return shown;
}

} // namespace reportchoice

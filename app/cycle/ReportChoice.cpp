#include "app/cycle/ReportChoice.h"

#include "app/jobs/WeatherJobs.h"
#include "aviation/support/ReportTime.h"

#include <utility>

using aviation::weather::Metar;
using aviation::weather::Synop;

namespace reportchoice {

namespace {

constexpr double kNearSynopNm = 50.0;

/// `replaceable`: the METAR is old, and the SYNOP's station near its own.
bool synopIsBetter(double metarNm, double synopNm, const Synop& synop, bool replaceable)
{
    constexpr double kNearMetarNm = 10.0;
    constexpr double kFarMetarNm = 100.0;
    const bool valid = synop.status() == aviation::weather::synopstatus::kDecoded;
    const bool nearer = metarNm > synopNm && metarNm > kNearMetarNm;
    return (valid && (nearer || replaceable)) || (synopNm < kNearSynopNm && metarNm > kFarMetarNm);
}

} // namespace

Metar metarOfSynop(const Synop& synop)
{
    Metar metar;
    synop.ToMetar(metar);
    return metar;
}

Metar forAircraft(Metar metar, Synop& synop, const aviation::Position& aircraft,
                  aviation::Clock::UtcTime now)
{
    const double metarNm = metar.DistanceTo(aircraft);
    const double synopNm = synop.DistanceTo(aircraft);
    if (!synop.isDecoded() && !synop.reportText().empty()) {
        synop.Decode();
    }
    if (!metar.isKnown() && synop.isKnown()) {
        return metarOfSynop(synop); // however far away: it is all there is
    }
    if (synopNm < kNearSynopNm) {
        metar.setVisFromSynop(synop.visibility());
    }
    const bool replaceable =
        aviation::isTimeGroupOld(metar.timeGroup(), now) && metar.DistanceTo(synop) < kNearSynopNm;
    return synopIsBetter(metarNm, synopNm, synop, replaceable) ? metarOfSynop(synop) : metar;
}

Metar metarForRequest(Metar metar, const Synop& synop, int error)
{
    const bool noMetar = error == weathererror::kNoMetar || !metar.isKnown();
    if (noMetar && synop.isKnown()) {
        synop.ToMetar(metar);
    }
    return metar;
}

std::vector<Metar> forRequest(Metar metar, const Synop& synop, const aviation::Position& aircraft,
                              const Request& request)
{
    std::vector<Metar> shown;
    if (!request.taf.empty()) {
        metar.setTafText(request.taf);
    }
    // Without a place there is no SYNOP that a report could be made of.
    if (request.error != weathererror::kNoSynop && synop.isKnown()) {
        if (metar.icao() != request.icao) {
            shown.push_back(metarOfSynop(synop));
        } else if (synop.DistanceTo(aircraft) < kNearSynopNm) {
            metar.setVisFromSynop(synop.visibility());
        }
    }
    shown.push_back(std::move(metar));
    return shown;
}

} // namespace reportchoice

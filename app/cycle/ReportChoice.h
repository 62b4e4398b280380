#pragma once

#include "aviation/Metar.h"
#include "aviation/Position.h"
#include "aviation/Synop.h"
#include "aviation/support/Clock.h"

#include <string>
#include <vector>

/// Which of the nearest reports is shown: rules without a window. All functions are pure; reports
/// without a place count as infinitely far away.
namespace reportchoice {

/// The METAR made of a SYNOP.
aviation::weather::Metar metarOfSynop(const aviation::weather::Synop& synop);

/// The report of the periodic display. Decodes the SYNOP where that hasn't happened.
aviation::weather::Metar forAircraft(aviation::weather::Metar metar,
                                     aviation::weather::Synop& synop,
                                     const aviation::Position& aircraft,
                                     aviation::Clock::UtcTime now);

/// What the user's request for a station is answered with.
struct Request
{
    std::wstring icao;
    int error = 0;    ///< of weathererror, not kNoWeather
    std::wstring taf; ///< of the METAR's station; empty when it isn't wanted
};
/// The METAR itself, or the SYNOP made into one where there is no METAR (error 7, or one without a
/// place).
aviation::weather::Metar metarForRequest(aviation::weather::Metar metar,
                                         const aviation::weather::Synop& synop, int error);
/// The reports to show one after the other; the METAR is the last. `metar` is the result of
/// metarForRequest.
std::vector<aviation::weather::Metar> forRequest(aviation::weather::Metar metar,
                                                 const aviation::weather::Synop& synop,
                                                 const aviation::Position& aircraft,
                                                 const Request& request);

} // namespace reportchoice

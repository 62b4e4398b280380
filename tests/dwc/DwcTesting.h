#pragma once

#include "aviation/GribLevel.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"

#include <string>

/// Reports and levels of made-up weather.
namespace dwctesting {

inline aviation::weather::GribLevel levelAt(int altitude, float direction, float speed)
{
    aviation::weather::GribLevel level;
    level.altitude = altitude;
    level.wind.Dir = direction;
    level.wind.Speed = speed;
    return level;
}

/// `timeGroup` ddhhmm.
inline aviation::weather::Metar metarOf(const std::wstring& timeGroup,
                                        const aviation::weather::Wind& wind, int elevation)
{
    aviation::weather::Metar metar(L"EDDF " + timeGroup + L"Z");
    metar.DecodeHeader();
    metar.setWind(wind);
    metar.setElevation(elevation);
    return metar;
}

/// `time` ddhh.
inline aviation::weather::Synop synopOf(const std::wstring& time,
                                        const aviation::weather::Wind& wind)
{
    aviation::weather::Synop synop(L"AAXX " + time + L"1 10637");
    synop.DecodeHeader();
    synop.setWind(wind);
    return synop;
}

} // namespace dwctesting

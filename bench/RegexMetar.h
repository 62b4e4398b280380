#pragma once

#include "aviation/Metar.h"

#include <memory>
#include <string>

/// What the reference chain read from a report.
struct RegexMetarReading
{
    int status = 0;
    std::wstring icao;
    aviation::weather::SurfaceValues surface;
    aviation::weather::MetarValues metar;
};

/// The METAR chain stated with std::wregex, erasing from the front of a copy of the text: slow and
/// plain, to measure the decoder by. The patterns are built once for an object. Not for lines of
/// many thousand characters, where std::wregex overflows the stack.
class RegexMetar
{
public:
    RegexMetar();
    ~RegexMetar();

    /// Elevation in feet; the icao of a fresh station.
    RegexMetarReading Decode(const std::wstring& report, int elevation) const;

private:
    struct Patterns;
    std::unique_ptr<const Patterns> m_patterns;
};

#pragma once

#include "aviation/Position.h"

#include <cstdint>
#include <string>
#include <utility>

namespace aviation::weather {

/// A reporting point: an airport, a weather station or the place of a report. Plain value, used by
/// one thread at a time.
class Station : public Position
{
public:
    Station() = default;
    /// Takes over the three texts: the strings handed in are empty afterwards.
    Station(std::wstring& icao, std::wstring& name, std::wstring& country, std::int32_t elevation,
            const Position& position)
        : Position(position)
        , m_icao(std::exchange(icao, {}))
        , m_name(std::exchange(name, {}))
        , m_country(std::exchange(country, {}))
        , m_elevation(elevation)
    {}

    const std::wstring& icao() const { return m_icao; }
    void setIcao(std::wstring icao) { m_icao = std::move(icao); }
    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }
    const std::wstring& country() const { return m_country; }
    void setCountry(std::wstring country) { m_country = std::move(country); }
    const std::wstring& extraText() const { return m_extraText; }
    void setExtraText(std::wstring text) { m_extraText = std::move(text); }
    std::int64_t time() const { return m_time; }
    void setTime(std::int64_t seconds) { m_time = seconds; }
    std::int32_t elevation() const { return m_elevation; }
    void setElevation(std::int32_t feet) { m_elevation = feet; }
    double distance() const { return m_distance; }
    void setDistance(double nm) { m_distance = nm; }

    /// Copies every field of a table entry into this report but the icao and the report time.
    void setPlace(const Station& entry)
    {
        Position::operator=(entry);
        m_name = entry.m_name;
        m_country = entry.m_country;
        m_extraText = entry.m_extraText;
        m_elevation = entry.m_elevation;
        m_distance = entry.m_distance;
    }

private:
    std::wstring m_icao;          ///< ICAO location indicator, or WMO number of a SYNOP
    std::wstring m_name;          ///< for people
    std::wstring m_country;       ///< name or two-letter code, as the table has it
    std::wstring m_extraText;     ///< free text that travels with the station; empty when fresh
    std::int64_t m_time = 0;      ///< report time, seconds since 1970 UTC; 0 not known
    std::int32_t m_elevation = 0; ///< feet
    double m_distance = 0.0;      ///< NM to the aircraft, stored by whoever sorts a list by it
};

} // namespace aviation::weather

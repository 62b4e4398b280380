#pragma once

#include "aviation/WeatherBase.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace aviation::weather {

class Metar;
namespace synopdecoding {
struct Header;
}

/// Log and JSON show the numbers, so those that can't occur hold their place.
namespace synopstatus {
inline constexpr int kDecoded = 0;
inline constexpr int kNoHeader = 1;       ///< no header pattern matched
inline constexpr int kHeaderGroups = 2;   ///< a header gave a wrong number of groups; can't occur
inline constexpr int kSection5Groups = 3; ///< the same in section 5; can't occur
inline constexpr int kOutOfRange = 4;
inline constexpr int kTooShort = 6; ///< under 10 characters; also the status of a fresh object
} // namespace synopstatus

enum class SynopType : std::int32_t
{
    Land = 0,
    Ship = 1,
    Mobile = 2
};

/// The wind indicator iw of a report that doesn't say its unit.
inline constexpr std::uint8_t kWindUnitUnknown = 4;

/// What a SYNOP says beyond the surface values that all reports share.
struct SynopValues
{
    std::array<wchar_t, 8> timeGroup = std::to_array(L"000000Z"); ///< day, hour and "00Z",
                                                                  ///< terminated; see MetarValues
    bool cloudCodesRead = false;                                  ///< an 8-group was read
    SynopType type = SynopType::Land;
    std::uint8_t windUnit = 0; ///< iw: 0, 1 metres per second, 2, 3 knots, 4 unknown
    std::uint8_t precipitationIndicator = 0;
    Cloud baseCloud;                ///< base from h, coverage from N
    std::uint8_t lowCode = 0;       ///< CL, WMO code table 0513
    std::uint8_t middleCode = 0;    ///< CM, WMO code table 0515
    std::uint8_t highCode = 0;      ///< CH, WMO code table 0509
    double humidity = 0.0;          ///< as read from 29UUU, tenths like the dew point
    double stationPressure = 0.0;   ///< hPa
    double seaValue = 0.0;          ///< group 1 of section 5, tenths
    double seaSecondValue = 0.0;    ///< group 2 of section 5 with its sign, 0 absent
    std::int32_t gust10Minutes = 0; ///< knots
    std::int32_t gust1 = 0;         ///< knots
    std::int32_t gust2 = 0;         ///< knots
};

/// A surface report from a land station, a ship or a mobile station (WMO Manual on Codes, FM 12
/// SYNOP, FM 13 SHIP, FM 14 SYNOP MOBIL). Its cloud codes shape the layers of the composition, and
/// it can stand in for a METAR.
class Synop final : public WeatherBase
{
public:
    Synop() : WeatherBase(ReportKind::Synop, synopstatus::kTooShort) {}
    explicit Synop(std::wstring reportText) : Synop() { setReportText(std::move(reportText)); }

    /// Header only: station, time, type and wind unit; ships and mobile stations their position.
    int DecodeHeader() override;
    /// Reads everything, starting from default values; the position and name of a table entry stay.
    int Decode() override;

    /// Writes this report as a METAR line into `metar` and decodes it there afresh. The METAR keeps
    /// its icao and info text and takes position, country, name and elevation from here.
    void ToMetar(Metar& metar) const;

    const SynopValues& synop() const { return m_synop; }
    std::wstring_view timeGroup() const { return m_synop.timeGroup.data(); }
    const Cloud& baseCloud() const { return m_synop.baseCloud; }
    int lowCode() const { return m_synop.lowCode; }
    int middleCode() const { return m_synop.middleCode; }
    int highCode() const { return m_synop.highCode; }
    bool cloudCodesRead() const { return m_synop.cloudCodesRead; }
    SynopType type() const { return m_synop.type; }
    /// A header gave a time. Nothing is said of its range: ships and buoys are timed by their call
    /// sign, whose days may lie beyond the month and roll over.
    bool isTimeValid() const { return m_timeValid; }
    /// A ship or mobile report that placed itself.
    bool hasOwnPosition() const { return m_synop.type != SynopType::Land && isKnown(); }

private:
    void resetDecoded();
    void storeTime(std::wstring_view dayText, std::wstring_view hourText);
    void storeHeader(const synopdecoding::Header& header);

    SynopValues m_synop;
    bool m_timeValid = false;
};

} // namespace aviation::weather

#pragma once

#include "aviation/WeatherBase.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace aviation::weather {

class GroupReader;

/// Results of Metar::Decode. Missing visibility, temperature and pressure are no failures: the seen
/// flags and the defaults say so. JSON shows the numbers, so those that can't occur hold their
/// place.
namespace metarstatus {
inline constexpr int kDecoded = 0;
inline constexpr int kPattern = 1;       ///< a pattern gave a wrong number of groups; can't occur
inline constexpr int kNoWind = 2;        ///< decoding ends
inline constexpr int kNoVisibility = 3;  ///< passing value
inline constexpr int kNoTemperature = 5; ///< passing value
inline constexpr int kPressure = 6;      ///< missing: passing value; out of range: decoding ends
inline constexpr int kTooShort = 7;      ///< under 10 characters
inline constexpr int kOutOfRange = 8;    ///< text was picked apart beyond its end; can't occur
inline constexpr int kHeaderStarted = 9; ///< on entry of DecodeHeader
inline constexpr int kNothingLeft = 10;  ///< under 5 characters before the weather groups
} // namespace metarstatus

/// What a METAR says beyond the surface values that all reports share.
struct MetarValues
{
    std::array<wchar_t, 7> timeGroup{}; ///< six digits ddhhmm, terminated; held without memory of
                                        ///< its own, since headers are read by the thousand
    bool cavok = false;
    std::wstring runwayText;    ///< every runway group, each followed by one blank
    std::wstring phenomenaText; ///< weather groups without their sign, joined
    std::uint8_t intensity = 0; ///< 1 light, 2 moderate, 3 heavy; 0 not decoded that far
    bool noSignificantCloud = false;
    float seaLevelTemperature = 0.0F; ///< degrees Celsius
    float seaLevelDewPoint = 0.0F;    ///< degrees Celsius
    std::wstring tailRunwayText;      ///< runway groups after the pressure
    std::wstring tafText;             ///< the TAF, empty without one
    std::int32_t visFromSynop = -1;   ///< visibility of a near SYNOP, -1 none
};

/// An aerodrome report (WMO Manual on Codes, FM 15 METAR and FM 16 SPECI), decoded by a fixed chain
/// of patterns that eat the text from the front. Forgiving: what stood before a bad tail stays.
class Metar final : public WeatherBase
{
public:
    Metar() : WeatherBase(ReportKind::Metar, metarstatus::kDecoded) {}
    explicit Metar(std::wstring reportText) : Metar() { setReportText(std::move(reportText)); }

    int DecodeHeader() override;
    int Decode() override;

    /// Text for people, one line an item, ending in a line feed. `visibilityOverride` in metres
    /// replaces the decoded visibility unless it is 0.
    std::wstring GetDecodedText(std::int32_t visibilityOverride = 0) const;

    /// Forgets every decoded value and all decoding state; identity (icao, name, country, position,
    /// elevation, info text) and the report text stay.
    void resetDecoded();

    /// Six digits ddhhmm, or empty.
    std::wstring_view timeGroup() const { return m_metar.timeGroup.data(); }
    bool isCavok() const { return m_metar.cavok; }
    const std::wstring& runwayText() const { return m_metar.runwayText; }
    const std::wstring& phenomenaText() const { return m_metar.phenomenaText; }
    bool phenomenaContain(std::wstring_view code) const
    {
        return m_metar.phenomenaText.find(code) != std::wstring::npos;
    }
    int intensity() const { return m_metar.intensity; }
    bool noSignificantCloud() const { return m_metar.noSignificantCloud; }
    float SeaLevelTemperature() const { return m_metar.seaLevelTemperature; }
    float SeaLevelDewPoint() const { return m_metar.seaLevelDewPoint; }
    const std::wstring& tailRunwayText() const { return m_metar.tailRunwayText; }
    const std::wstring& infoText() const { return m_infoText; }
    void setInfoText(std::wstring text) { m_infoText = std::move(text); }
    /// The aerodrome's forecast, shown below the report; empty without one.
    const std::wstring& tafText() const { return m_metar.tafText; }
    void setTafText(std::wstring text) { m_metar.tafText = std::move(text); }
    /// Visibility of a near SYNOP in metres, -1 without one.
    std::int32_t visFromSynop() const { return m_metar.visFromSynop; }
    void setVisFromSynop(std::int32_t metres) { m_metar.visFromSynop = metres; }

private:
    void readHeader(GroupReader& report);
    void readVisibility(GroupReader& report);
    int readTail(GroupReader& report);

    MetarValues m_metar;
    std::wstring m_infoText; ///< optional note shown in the decoded text
};

} // namespace aviation::weather

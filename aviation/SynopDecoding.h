#pragma once

#include "aviation/GroupReader.h"
#include "aviation/Synop.h"
#include "aviation/support/NumberText.h"

/// The steps of the SYNOP decoder: each takes what it knows off the front of the report and stores
/// it. Internal to Synop.
namespace aviation::weather::synopdecoding {

/// What the header of a report says. The texts are views into the report.
struct Header
{
    enum class Outcome
    {
        None,
        OutOfRange,
        Read
    };

    Outcome outcome = Outcome::None;
    SynopType type = SynopType::Land;
    std::wstring_view day;  ///< two characters; of a call sign, letters as a rule
    std::wstring_view hour; ///< up to two characters
    wchar_t windIndicator = L'/';
    std::wstring_view number;     ///< WMO number, or the latitude group
    std::wstring_view numberTail; ///< nothing, or the longitude group
    std::wstring_view callSign;   ///< empty for land stations
    Position position;            ///< (0, 0) unless the report placed itself
};

/// `quick` is the header step alone, which takes slashes in a land station's number.
Header readHeader(GroupReader& report, bool quick);

/// The report under way and where its values go.
struct Reading
{
    GroupReader report;
    SurfaceValues& surface;
    SynopValues& synop;

    /// Whether the header gave speeds in metres per second, and not in knots or nothing.
    bool inMetresPerSecond() const;
    /// Knots of a wind speed in the unit of the report.
    double knots(int speed) const;
};

/// Wind::Gust of a report that doesn't give a gust.
inline constexpr float kNoGust = -1.0F;

/// Sections 1 to 5 in this order; each is optional.
void readSurface(Reading& reading);
void readSea(Reading& reading);
void readRegional(Reading& reading);
void readMountain(Reading& reading);
void readNational(Reading& reading);

/// Feet of a cloud base in the code hshs (WMO code table 1677), 0 for a code that is none.
std::int32_t cloudBaseFromCode(int code);

/// A number in tenths, 0 for slashes.
inline double tenths(std::wstring_view digits)
{
    return integerFromDigits(digits) / 10.0;
}

/// The number that one character of a report stands for, 0 for a slash.
constexpr int digit(wchar_t character)
{
    return character >= L'0' && character <= L'9' ? static_cast<int>(character - L'0') : 0;
}

} // namespace aviation::weather::synopdecoding

#include "aviation/SynopDecoding.h"
#include "aviation/SynopPatterns.h"

namespace aviation::weather::synopdecoding {

namespace {

using namespace synoppatterns;

/// From "99LaLaLa" and "QcLoLoLoLo", tenths of a degree. A quadrant that there isn't gives (0, 0).
Position placedBy(std::wstring_view latitudeGroup, std::wstring_view longitudeGroup)
{
    const double latitude = tenths(latitudeGroup.substr(2));
    const double longitude = tenths(longitudeGroup.substr(1));
    switch (longitudeGroup.front()) {
    case L'1':
        return {latitude, longitude};
    case L'3':
        return {-latitude, longitude};
    case L'5':
        return {-latitude, -longitude};
    case L'7':
        return {latitude, -longitude};
    default:
        return {};
    }
}

template <class Pattern>
Header readLand(GroupReader& report)
{
    Header header;
    if (const auto groups = report.take<Pattern>()) {
        header.day = groups[1].substr(0, 2);
        header.hour = groups[1].substr(2, 2);
        header.windIndicator = groups[1][4];
        header.number = groups[2];
        header.outcome = Header::Outcome::Read;
    }
    return header;
}

template <class Pattern>
Header readMoving(GroupReader& report, SynopType type)
{
    Header header;
    const auto groups = report.take<Pattern>();
    if (!groups) {
        return header;
    }
    const std::wstring_view callSign = groups[1];
    if (callSign.size() < 2) {
        header.outcome = Header::Outcome::OutOfRange; // no hour stands after the day
        return header;
    }
    // Not the time of the date group: moving stations are timed by their call sign, on purpose.
    header.day = callSign.substr(0, 2);
    header.hour = callSign.substr(2, 2);
    header.windIndicator = groups[2][4];
    header.number = groups[3];
    header.numberTail = groups[4];
    header.callSign = callSign;
    header.position = placedBy(groups[3], groups[4]);
    header.type = type;
    header.outcome = Header::Outcome::Read;
    return header;
}

} // namespace

Header readHeader(GroupReader& report, bool quick)
{
    Header header = quick ? readLand<LandHeaderQuick>(report) : readLand<LandHeader>(report);
    if (header.outcome == Header::Outcome::None) {
        header = readMoving<ShipHeader>(report, SynopType::Ship);
    }
    if (header.outcome == Header::Outcome::None) {
        header = readMoving<MobileHeader>(report, SynopType::Mobile);
    }
    return header;
}

} // namespace aviation::weather::synopdecoding

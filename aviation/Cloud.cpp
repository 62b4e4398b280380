#include "aviation/Cloud.h"

#include "aviation/support/NumberText.h"

#include <algorithm>
#include <limits>

namespace aviation::weather {

namespace {

const char* typeSuffix(std::uint8_t type)
{
    switch (type) {
    case cloudtype::kCirrus:
        return "CI";
    case cloudtype::kCumulonimbus:
        return "CB";
    case cloudtype::kToweringCumulus:
        return "TCU";
    default:
        return "";
    }
}

} // namespace

bool Cloud::setCoverage(int octas)
{
    if (octas < 0 || octas > 8) {
        return false;
    }
    coverage = static_cast<std::uint8_t>(octas);
    return true;
}

std::int32_t altitudeAboveSea(std::int32_t aboveStation, std::int32_t elevation)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const std::int64_t sum = std::int64_t{aboveStation} + elevation;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(sum, Limits::min(), Limits::max()));
}

const char* coverageAbbreviation(int octas)
{
    static constexpr const char* kNames[] = {"",    "FEW", "FEW", "SCT", "SCT",
                                             "BKN", "BKN", "BKN", "OVC"};
    return octas >= 1 && octas <= 8 ? kNames[octas] : "";
}

std::string metarGroup(const Cloud& cloud)
{
    return coverageAbbreviation(cloud.coverage) + integerText(cloud.base / 100, 3)
           + typeSuffix(cloud.type);
}

} // namespace aviation::weather

#include "aviation/Metar.h"

#include <algorithm>
#include <cstdlib>

using aviation::weather::Cloud;
using aviation::weather::Metar;
namespace status = aviation::weather::metarstatus;

namespace {

void require(bool held)
{
    if (!held) {
        std::abort();
    }
}

bool isReturned(int value)
{
    constexpr int kReturned[] = {status::kDecoded,   status::kNoWind,      status::kPressure,
                                 status::kTooShort,  status::kNothingLeft, status::kPattern,
                                 status::kOutOfRange};
    return std::find(std::begin(kReturned), std::end(kReturned), value) != std::end(kReturned);
}

bool isGood(const Cloud& cloud, std::int32_t elevation)
{
    const bool assumed = cloud.base == 5000 && cloud.altitude == elevation + 2000;
    return cloud.coverage >= 1 && cloud.coverage <= 8 && cloud.top == -1 && cloud.base >= 0
           && cloud.base <= 99900 && (assumed || cloud.altitude == cloud.base + elevation);
}

bool isTextPart(const std::wstring& part, const std::wstring& text)
{
    return part.size() <= 2 * text.size();
}

} // namespace

/// A report decodes to values within their ranges, and to the same text again and in a copy.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::int32_t kElevation = 364;
    const std::wstring text(data, data + size);
    Metar metar(text);
    metar.setElevation(kElevation);
    require(isReturned(metar.Decode()));
    const auto good = [](const Cloud& cloud) {
        return isGood(cloud, kElevation);
    };
    require(std::all_of(metar.clouds().begin(), metar.clouds().end(), good));
    require(metar.wind().Dir >= 0.0F && metar.wind().Dir <= 999.0F && metar.wind().Speed >= 0.0F);
    require(metar.visibility() >= 0 && metar.intensity() >= 0 && metar.intensity() <= 3);
    require(metar.qnh() >= 0.0F && metar.qnh() <= 3387.0F);
    require(isTextPart(metar.runwayText(), text) && isTextPart(metar.phenomenaText(), text)
            && isTextPart(metar.tailRunwayText(), text));
    require(metar.timeGroup().empty() || metar.timeGroup().size() == 6);

    const std::wstring decoded = metar.GetDecodedText();
    const int before = metar.status();
    require(metar.Decode() == before && metar.GetDecodedText() == decoded);
    metar.resetDecoded();
    require(metar.Decode() == before && metar.GetDecodedText() == decoded);
    return 0;
}

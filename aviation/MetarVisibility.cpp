#include "aviation/MetarVisibility.h"

#include "aviation/MetarPatterns.h"
#include "aviation/Units.h"
#include "aviation/support/NumberText.h"

#include <cmath>

namespace aviation::weather {

namespace {

using namespace metarpatterns;

constexpr std::size_t kUnitLength = 2;     ///< of "SM" and "KM"
constexpr std::size_t kLongestInFront = 5; ///< characters before the unit, as in "1 1/2SM"

/// A searched pattern's match: the metres, and the length to cut off.
struct Found
{
    std::int32_t metres = 0;
    std::size_t length = 0;
};

/// Truncated metres; a fraction with the denominator 0 is worth nothing.
std::int32_t fractionMetres(std::wstring_view numerator, std::wstring_view denominator)
{
    const int divisor = integerFromDigits(denominator);
    if (divisor == 0) {
        return 0;
    }
    const double miles = static_cast<double>(integerFromDigits(numerator)) / divisor;
    return static_cast<std::int32_t>(miles * kMetresPerStatuteMile);
}

std::int32_t wholeMiles(std::wstring_view number)
{
    return integerFromDigits(number) * kMetresPerStatuteMile;
}

std::int32_t metresOf(const MilesLongFraction::Result& match, MilesLongFraction)
{
    return fractionMetres(match[1], match[2]);
}

std::int32_t metresOf(const MilesAndFraction::Result& match, MilesAndFraction)
{
    return wholeMiles(match[1]) + fractionMetres(match[2], match[3]);
}

std::int32_t metresOf(const MilesFraction::Result& match, MilesFraction)
{
    return fractionMetres(match[1], match[2]);
}

std::int32_t metresOf(const MilesTwoDigits::Result& match, MilesTwoDigits)
{
    return match[1].starts_with(L"10") ? kGoodVisibility : wholeMiles(match[1]);
}

std::int32_t metresOf(const MilesOneDigit::Result& match, MilesOneDigit)
{
    return wholeMiles(match[1]);
}

std::int32_t metresOf(const Kilometres::Result& match, Kilometres)
{
    constexpr std::int32_t kMetresPerKm = 1000;
    return integerFromDigits(match[1]) * kMetresPerKm;
}

template <class P>
bool findGroup(std::wstring_view window, Found& found)
{
    const auto match = P::Search(window);
    if (match) {
        found = {metresOf(match, P()), match.length()};
    }
    return static_cast<bool>(match);
}

/// The searched patterns in their order of preference.
using Finder = bool (*)(std::wstring_view, Found&);
constexpr Finder kFinders[] = {findGroup<MilesLongFraction>, findGroup<MilesAndFraction>,
                               findGroup<MilesFraction>,     findGroup<MilesTwoDigits>,
                               findGroup<MilesOneDigit>,     findGroup<Kilometres>};

/// Where the next "SM" or "KM" starts, or npos.
std::size_t nextUnit(std::wstring_view text, std::size_t from)
{
    std::size_t at = text.find(L'M', from + 1);
    while (at != std::wstring_view::npos && text[at - 1] != L'S' && text[at - 1] != L'K') {
        at = text.find(L'M', at + 1);
    }
    return at == std::wstring_view::npos ? at : at - 1;
}

/// What the searched patterns, tried one after the other over the whole text, would find first. All
/// of them end in a unit, so one pass over the units does: at each, only patterns that are
/// preferred to the best one so far can still improve on it.
std::optional<Found> searchVisibility(std::wstring_view text)
{
    std::optional<Found> best;
    std::size_t tries = std::size(kFinders);
    for (std::size_t unit = nextUnit(text, 0); unit != std::wstring_view::npos && tries > 0;
         unit = nextUnit(text, unit + 1))
    {
        const std::size_t start = unit > kLongestInFront ? unit - kLongestInFront : 0;
        const std::wstring_view window = text.substr(start, unit + kUnitLength - start);
        for (std::size_t at = 0; at < tries; ++at) {
            Found found;
            if (kFinders[at](window, found)) {
                best = found;
                tries = at;
            }
        }
    }
    return best;
}

} // namespace

std::optional<std::int32_t> visibilityFrom(GroupReader& report)
{
    if (const auto found = searchVisibility(report.rest())) {
        report.cut(found->length);
        return found->metres;
    }
    if (const auto match = report.take<Metres>()) {
        return match[1] == L"////" ? kGoodVisibility : integerFromDigits(match[1]);
    }
    if (const auto match = report.take<MoreThanMetres>()) {
        return integerFromDigits(match[2]);
    }
    return std::nullopt;
}

} // namespace aviation::weather

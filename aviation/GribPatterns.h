#pragma once

#include "aviation/pattern/Pattern.h"

/// The groups of an upper-air record as patterns, in the order in which the decoder tries them.
namespace aviation::weather::gribpatterns {

using pattern::Pattern;

using Header = Pattern<L"^GRIB ([0-9]{5}) ([0-9]{5}) (99[0-9]{3}) ([0-9]{5})">;
using Surface = Pattern<L"^(99[0-9]{3}) ([0-9]{5}) ([0-9]{5})">;
using Level = Pattern<L"^([0-9/]{7}) ([0-9/]{5}) ([0-9]{5,6})">;
// The bracket within these classes belongs to them: a '[' may stand among the digits.
using LowCloud = Pattern<L"^L([[0-9]{4})">;
using MiddleCloud = Pattern<L"^M([[0-9]{4})">;
using HighCloud = Pattern<L"^H([[0-9]{4})">;

/// Every pattern once, for whoever holds the matcher against another one.
using AllGribPatterns =
    pattern::PatternList<Header, Surface, Level, LowCloud, MiddleCloud, HighCloud>;

} // namespace aviation::weather::gribpatterns

#pragma once

#include "aviation/pattern/Pattern.h"

/// The groups of a METAR (WMO Manual on Codes, FM 15) as patterns, in the order in which the
/// decoder tries them. Each takes its text away from those that follow: to widen a class or a limit
/// that looks odd changes what they find, and so which reports are decoded.
namespace aviation::weather::metarpatterns {

using pattern::Pattern;

using Header = Pattern<L"^([A-Z0-9]{4}) ([0-9]{6}Z)">;
using Modifier = Pattern<L"^(AUTO|COR|RTD)">;

// Wind: direction or VRB, speed, and a gust after G.
using WindKnots = Pattern<L"^([0-9/]{3})([0-9/]{2})KT">;
using WindGustKnots = Pattern<L"^([0-9]{3})([0-9]{2})G([0-9]{2})KT">;
using WindMetres = Pattern<L"^([0-9]{3})([0-9]{2})MPS">;
using WindGustMetres = Pattern<L"^([0-9]{3})([0-9]{2})G([0-9]{2})MPS">;
using VariableKnots = Pattern<L"^VRB([0-9]{2})KT">;
using VariableMetres = Pattern<L"^VRB([0-9]{2})MPS">;
using VariableGustKnots = Pattern<L"^VRB([0-9]{2})G([0-9]{2}KT)">;
using VariableGustMetres = Pattern<L"^VRB([0-9]{2})G([0-9]{2}MPS)">;
using VariableSector = Pattern<L"^([0-9/]{3})V([0-9/]{3})">;

// Visibility. The patterns in miles and kilometres have no ^: they are found anywhere in the rest
// of the report, so a remark can give the visibility.
using Cavok = Pattern<L"^(CAVOK)">;
using MilesLongFraction = Pattern<L"([0-9]{1})/([0-9]{2})SM">;
using MilesAndFraction = Pattern<L"([0-9]{1}) ([0-9]{1})/([0-9]{1})SM">;
using MilesFraction = Pattern<L"([0-9]{1})/([0-9]{1})SM">;
using MilesTwoDigits = Pattern<L"([0-9]{2}SM)">;
using MilesOneDigit = Pattern<L"([0-9]{1}SM)">;
using Kilometres = Pattern<L"([0-9]{1,2}KM)">;
using Metres = Pattern<L"^(([0-9]{4})|([/]{4}))((NDV)|([NESW]{0,2}))*">;
using MoreThanMetres = Pattern<L"^([P]{1})([0-9]{4})">;
using DirectionalMetres = Pattern<L"^([0-9]{4}[NESW/]{0,2})">;

using RunwayVisualRange = Pattern<L"^((R[0-9/]{2}[LRC/]*/[VMPUDN/]*[0-9/]{3,4}[VUDNPM/"
                                  L"]*[0-9]*[VUDNPMFT/]*)|(R[0-9/]{2}[LR/]*/[/VMPUDN]*))">;
using TailRunwayVisualRange =
    Pattern<L"^(R[0-9]{2}[LR]*/[VMPUDN]*[0-9]{4}[VUDNPM]*[0-9]*[VUDNPM]*)">;

using WeatherGroup =
    Pattern<L"^(([-+]*[A-Z/]{4} )|([-+]*[A-Z/]{2} )|([-+]*[A-Z/]{6})|(NSC)|(NCD))">;

// The inner ^ hold as well: only the front of the rest is looked at.
using CloudGroup = Pattern<
    L"^(([A-Z/]{3}[0-9/]{3}[/]{3})|^([A-Z/]{3}[0-9/]{3}[A-Z/]{3})|^([A-Z/]{3}[0-9/]{3}[A-Z/]{2})"
    L"|^([/]{3}[A-Z/]{3})|^([/]{3}[A-Z/]{2})|^([A-Z/]{3}[0-9/]{3}))"
    L"|(^(CLR)|^(SKC)|^(NSC)|^(VV[0-9/]{3}))">;

// Temperature and dew point, M for minus.
using BothBelowZero = Pattern<L"^M([0-9/]{2})/M([0-9/]{2})">;
using DewPointBelowZero = Pattern<L"^([0-9/]{2})/M([0-9/]{2})">;
using BothAboveZero = Pattern<L"^([0-9/]{2})/([0-9/]{2})">;
using NoDewPoint = Pattern<L"^M([0-9/]{2})/ ">;

using QnhHectopascals = Pattern<L"^Q([0-9]{3,4})">;
using QnhInches = Pattern<L"^A([0-9]{4})">;

/// Patterns that look at the front of the rest, each once, for whoever holds the matcher against
/// another one.
using FrontPatterns =
    pattern::PatternList<Header, Modifier, WindKnots, WindGustKnots, WindMetres, WindGustMetres,
                         VariableKnots, VariableMetres, VariableGustKnots, VariableGustMetres,
                         VariableSector, Cavok, Metres, MoreThanMetres, DirectionalMetres,
                         RunwayVisualRange, TailRunwayVisualRange, WeatherGroup, CloudGroup,
                         BothBelowZero, DewPointBelowZero, BothAboveZero, NoDewPoint,
                         QnhHectopascals, QnhInches>;

/// The patterns that are found anywhere.
using SearchedPatterns = pattern::PatternList<MilesLongFraction, MilesAndFraction, MilesFraction,
                                              MilesTwoDigits, MilesOneDigit, Kilometres>;

} // namespace aviation::weather::metarpatterns

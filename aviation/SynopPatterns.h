#pragma once

#include "aviation/pattern/Pattern.h"

/// The groups of a SYNOP (WMO Manual on Codes, FM 12, FM 13, FM 14) as patterns, in the order in
/// which the decoder tries them. To widen a class that looks odd changes what is left for the
/// patterns that follow, and so which reports are decoded.
namespace aviation::weather::synoppatterns {

using pattern::Pattern;

// Headers. Only the quick header step takes slashes in the station number.
using LandHeader = Pattern<L"^AAXX[[:blank:]]{0,}([0-9/]{5})[[:blank:]]{0,}([0-9]{5})">;
using LandHeaderQuick = Pattern<L"^AAXX[[:blank:]]{0,}([0-9/]{5})[[:blank:]]{0,}([0-9/]{5})">;
using ShipHeader =
    Pattern<L"^BBXX[[:blank:]]{0,}([0-9A-Za_Z]{0,7})[[:blank:]]{0,}([0-9/]{5})[[:blank:]]{0,}"
            L"(99[0-9]{3})[[:blank:]]{0,}([0-9]{5})[[:blank:]]{0,}([0-9/]{5})">;
using MobileHeader =
    Pattern<L"^OOXX[[:blank:]]{0,}([0-9A-Za_Z]{0,5})[[:blank:]]{0,}([0-9/]{5})[[:blank:]]{0,}"
            L"(99[0-9]{3})[[:blank:]]{0,}([0-9]{5})[[:blank:]]{0,}([0-9/]{5})">;

// Section 1.
using Visibility = Pattern<L"^[[:blank:]]{0,}([0-4]{1})([0-7]{1})([0-9/]{1})([0-9/]{2})">;
using SurfaceWind = Pattern<L"^[[:blank:]]{0,}([0-9/]{1})([0-9/]{2})([0-9/]{2})">;
using StrongWind = Pattern<L"^[[:blank:]]{0,}00([0-9/]{3})">;
using Temperature = Pattern<L"^[[:blank:]]{0,}1([0-1]{1})([0-9/]{3})">;
using DewPoint = Pattern<L"^[[:blank:]]{0,}2([019]{1})([0-9/]{3})">;
using StationPressure = Pattern<L"^[[:blank:]]{0,}3([0-9/]{4})">;
using SeaLevelPressure = Pattern<L"^[[:blank:]]{0,}4([09]{1}[0-9/]{3})">;
using Geopotential = Pattern<L"^[[:blank:]]{0,}4([12578]{1}[0-9/]{3})">;
using Tendency = Pattern<L"^[[:blank:]]{0,}5([0-8]{1})([0-9/]{3})">;
using Precipitation = Pattern<L"^[[:blank:]]{0,}6([0-9/]{3})([0-9/]{1})">;
using PresentWeather = Pattern<L"^[[:blank:]]{0,}7([0-9/]{2})([0-9/]{1})([0-9/]{1})">;
using CloudForms = Pattern<L"^[[:blank:]]{0,}8([0-9/]{1})([0-9/]{1})([0-9/]{1})([0-9/]{1})">;

// Section 2, the sea. Section 3 shares the plain groups.
using Section2 = Pattern<L"^222([0-9/]{2})">;
using Plain0 = Pattern<L"^0([0-9/]{4})">;
using Plain1 = Pattern<L"^1([0-9/]{4})">;
using Plain2 = Pattern<L"^2([0-9/]{4})">;
using Plain3 = Pattern<L"^3([0-9/]{4})">;
using Plain4 = Pattern<L"^4([0-9/]{4})">;
using Plain5 = Pattern<L"^5([0-9/]{4})">;
using Plain6 = Pattern<L"^6([0-9/]{4})">;
using Plain7 = Pattern<L"^7([0-9/]{4})">;

// Section 3, regional groups.
using Section3 = Pattern<L"^333[[:blank:]]{0,}">;
using MaximumTemperature = Pattern<L"^1([01]{1})([0-9/]{3})">;
using MinimumTemperature = Pattern<L"^2([01]{1})([0-9/]{3})">;
using GroundTemperature = Pattern<L"^3([0-9/]{1})([01]{1})([0-9/]{2})">;
using SnowTemperature = Pattern<L"^4([01]{1})([0-9/]{3})">;
using DailySunshine = Pattern<L"^55([0-9/]{3})">;
using HourlySunshine = Pattern<L"^553([0-9/]{2})">;
using RegionalPrecipitation = Pattern<L"^6([0-9/]{3})([0-9/]{1})">;
using CloudLayer = Pattern<L"^8([0-9/]{1})([0-9/]{1})([0-9/]{2})">;
using Supplement = Pattern<L"^9([0-9/]{2})([0-9/]{2})">;

// Section 4.
using Section4 = Pattern<L"^444[[:blank:]]{0,}">;
using AnyGroup = Pattern<L"^([0-9/]{5})">;

// Section 5, national groups.
using Section5 = Pattern<L"^555[[:blank:]]{0,}(0[01][0-9/]{3})[[:blank:]]{0,}(1[0-9/]{4})">;
using SeaSecond = Pattern<L"^(2[01]{1}[0-9/]{3})">;
using National22 = Pattern<L"^(22[0-9/]{3})">;
using National23 = Pattern<L"^(23[0-9/]{2})">;
using National24 = Pattern<L"^(24[0-9/]{2})">;
using National25 = Pattern<L"^(25[0-9/]{2})">;
using National26 = Pattern<L"^(26[0-9/]{3})">;
using National3 = Pattern<L"^(3[0-9/]{4})">;
using National4 = Pattern<L"^(4[0-9/]{4})">;
using National5 = Pattern<L"^(5[0-9/]{4})">;
using National7 = Pattern<L"^(7[0-9/]{4})">;
using NationalCloud = Pattern<L"^(8[0-9/]{4})">;
using Gust10Minutes = Pattern<L"^(910[0-9/]{2})">;
using GustPeak = Pattern<L"^(911[0-9/]{2})">;
using PicGroup = Pattern<L"^PIC[[:blank:]]{0,}([0-9/]{2})">;
using BotGroup = Pattern<L"^BOT[[:blank:]]{0,}([0-9/]{5})">;

/// Every pattern once, for whoever holds the matcher against another one.
using AllSynopPatterns = pattern::PatternList<
    LandHeader, LandHeaderQuick, ShipHeader, MobileHeader, Visibility, SurfaceWind, StrongWind,
    Temperature, DewPoint, StationPressure, SeaLevelPressure, Geopotential, Tendency, Precipitation,
    PresentWeather, CloudForms, Section2, Plain0, Plain1, Plain2, Plain3, Plain4, Plain5, Plain6,
    Plain7, Section3, MaximumTemperature, MinimumTemperature, GroundTemperature, SnowTemperature,
    DailySunshine, HourlySunshine, RegionalPrecipitation, CloudLayer, Supplement, Section4,
    AnyGroup, Section5, SeaSecond, National22, National23, National24, National25, National26,
    National3, National4, National5, National7, NationalCloud, Gust10Minutes, GustPeak, PicGroup,
    BotGroup>;

} // namespace aviation::weather::synoppatterns

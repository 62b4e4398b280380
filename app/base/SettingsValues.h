#pragma once

/// What the numbers of the options mean; they stand in settings files. Options: SettingsOptions.h.
/// interface/interfacetype holds an aviation::interfaceid, main/loggerlevel a loglevel.

/// weather/source
namespace weathersource {
inline constexpr int kVatsim = 1;
inline constexpr int kIvao = 2;
inline constexpr int kNoaa = 3;
} // namespace weathersource

/// weather/wxservertype
namespace wxservertype {
inline constexpr int kAuto = 0; ///< the first or the second by chance
inline constexpr int kFirst = 1;
inline constexpr int kSecond = 2;
inline constexpr int kExternal = 3; ///< the addresses of waather/urlextern...
} // namespace wxservertype

/// weather/mode
namespace weathermode {
inline constexpr int kDirect = 0;
inline constexpr int kFiles = 1;
} // namespace weathermode

/// weather/cavok_cover in eighths and weather/cavok_height in feet, weather/vis_max in metres
namespace cavokcover {
inline constexpr int kNone = 0;
inline constexpr int kRandom = 8; ///< 1 to 7, drawn for each composition
} // namespace cavokcover
namespace cavokheight {
inline constexpr int kRandom = 10000;
} // namespace cavokheight
namespace highestvisibility {
inline constexpr int kUnlimited = 100000;
} // namespace highestvisibility

/// map/type
namespace maptype {
inline constexpr int kShapefiles = 0;
inline constexpr int kOpenStreetMap = 1;
} // namespace maptype

/// units/weight
namespace weightunit {
inline constexpr int kPounds = 0;
inline constexpr int kKilograms = 1;
} // namespace weightunit

/// units/volume
namespace volumeunit {
inline constexpr int kGallons = 0;
inline constexpr int kLitres = 1;
} // namespace volumeunit

/// The unit as load editor and flight plans count it: 1 pounds or gallons, 2 kilograms or litres.
/// That is units/weight or units/volume plus one; a value that means nothing is taken as 1, the
/// default.
constexpr int unitNumber(int stored)
{
    constexpr int kPoundsOrGallons = 1;
    constexpr int kKilogramsOrLitres = 2;
    return stored == weightunit::kPounds ? kPoundsOrGallons : kKilogramsOrLitres;
}

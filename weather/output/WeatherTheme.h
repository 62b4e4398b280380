#pragma once

#include "aviation/Position.h"
#include "weather/output/records/NewWeather.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

/// The weather theme of FSX and Prepar3D: a grid of stations in a binary ".WTB" file beside a small
/// ".wt" text that the simulator lists it by. All values are little-endian and 32 bits wide,
/// heights are metres above the station unless a field says otherwise.

/// Opens a station; the counts say how many layers of each kind follow.
struct ThemeHeader
{
    std::int32_t winds = 0;
    std::int32_t visibilities = 0;
    std::int32_t clouds = 0;
    std::int32_t temperatures = 0;
    std::int32_t reserved = 0;
    std::array<char, 4> station{' ', ' ', ' ', ' '};
    std::int32_t marker = 127;
};
static_assert(sizeof(ThemeHeader) == 28);

struct ThemeWind
{
    float height = 0.0F;
    float speed = 0.0F;     ///< knots
    float gust = 0.0F;      ///< knots; absolute in the surface wind, above the speed in a layer
    float direction = 0.0F; ///< degrees
    float variance = 0.0F;  ///< degrees
    float turbulence = 0.0F;
    float shear = 0.0F;
};
static_assert(sizeof(ThemeWind) == 28);

struct ThemeVisibility
{
    float range = 0.0F; ///< metres
    float lower = 0.0F; ///< metres above sea level
    float upper = 0.0F; ///< metres above sea level
};
static_assert(sizeof(ThemeVisibility) == 12);

/// The whole numbers are those of CloudLayer.
struct ThemeCloud
{
    std::uint32_t type = 0;
    float base = 0.0F;
    float top = 0.0F;
    float deviation = 0.0F; ///< written as 0 whatever stands here
    std::uint32_t coverage = 0;
    std::uint32_t topShape = 0;
    std::uint32_t turbulence = 0;
    std::uint32_t precipitationType = 0;
    float precipitationBase = 0.0F; ///< metres above sea level
    std::uint32_t precipitationRate = 0;
    std::uint32_t icing = 0;
};
static_assert(sizeof(ThemeCloud) == 44);

struct ThemeTemperature
{
    float height = 0.0F;
    float temperature = 0.0F; ///< degrees Celsius
    float variation = 3.0F;
    float dewPoint = 0.0F; ///< degrees Celsius
};
static_assert(sizeof(ThemeTemperature) == 16);

/// One station of the grid, with all layers that its record uses. The position serves the search
/// for the nearest station and is not written.
struct ThemeStation : aviation::Position
{
    ThemeHeader header; ///< its counts are taken from the blocks when written
    ThemeWind surfaceWind;
    std::vector<ThemeWind> winds;
    std::vector<ThemeVisibility> visibilities;
    std::vector<ThemeCloud> clouds;
    std::vector<ThemeTemperature> temperatures;
    float qnh = 0.0F; ///< hPa
};

struct ThemeGrid
{
    std::int32_t columns = 0;
    std::int32_t rows = 0;
    std::int32_t spare = 0;
    std::vector<ThemeStation> stations;
};

/// Where the stations of a theme lie: the aircraft first, then `columnsAndRows` rows of as many
/// stations, 16 km apart, row by row from the south-west corner. A range too small for a cell gives
/// the aircraft alone. The double of the last station, with which the file ends, isn't in the list:
/// makeThemeGrid adds it.
std::vector<aviation::Position> themeGridPositions(const aviation::Position& aircraft, int rangeNm,
                                                   int& columnsAndRows);

/// Puts the stations of themeGridPositions, in that order, together and ends with the last one once
/// more.
ThemeGrid makeThemeGrid(std::vector<ThemeStation> stations, int columnsAndRows);

/// The composed weather of one place as a station of the theme; qnh in hPa.
ThemeStation makeThemeStation(const NewWeather& record, float qnh,
                              const aviation::Position& position);

/// Keeps the weather around the aircraft from jumping at a reload: when the former grid has a
/// station within 50 NM, it replaces the first station of the new grid and the one nearest to the
/// aircraft.
void keepNearestStation(const ThemeGrid& previous, ThemeGrid& current,
                        const aviation::Position& aircraft);

/// The whole ".WTB" file.
QByteArray themeBytes(const ThemeGrid& grid);

/// The whole ".wt" file; its date is the present moment, UTC.
std::string themeText();

/// Writes baseName + ".WTB" and baseName + ".wt". Each file is complete or as it was before.
/// Returns false if one can't be written; `fault` says which and why. What people see on the
/// console goes to `console`: the failure, and a line for each layer above 3000 m that is over 20
/// degrees.
bool WriteTheme(const ThemeGrid& grid, const QString& baseName, std::ostream& console,
                QString& fault);
/// The same with the standard output.
bool WriteTheme(const ThemeGrid& grid, const QString& baseName, QString& fault);

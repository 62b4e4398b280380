#pragma once

#include "aviation/FsId.h"
#include "aviation/support/RandomSource.h"

#include <QString>

#include <functional>

class Settings;

/// The options that shape composed weather, taken once for each record so that it is made of one
/// set of values. Defaults are those of Settings.
struct CompositionOptions
{
    aviation::FsId simulator = aviation::fsid::kFsx;
    int interfaceType = aviation::interfaceid::kFsuipc;
    int weatherMode = 0; ///< 1 thins out the upper layers for weather theme files
    bool gustySurfaceWind = true;
    bool directWindControl = true;
    int vis9999 = 30000;    ///< metres, as the setting stands; used times 1000
    int visMin = 0;         ///< metres in the layered record; times 1000 in the X-Plane record
    int visMax = 100000;    ///< likewise
    int cavokCover = 1;     ///< octas
    int cavokHeight = 5000; ///< feet
    bool turbulenceInCloud = true;
    bool generateStratus = false;
    bool mixedClouds = false;
    bool generateCirrus = true;
    bool icingInClouds = true;

    /// The values as they stand now; no setting holds the simulator, so it is left as above.
    static CompositionOptions fromSettings(const Settings& settings);

    /// Draws cover (1 to 7 octas) and height (5000 to 9999 feet; both ranges are our choice) of the
    /// CAVOK cloud if they stand at the values that mean random, 8 octas and 10000 feet.
    void drawRandomCavok(aviation::RandomSource& random);
};

/// What composing needs from its surroundings. The log gets text and level; an empty one is silent.
struct CompositionContext
{
    CompositionOptions options;
    aviation::RandomSource& random;
    std::function<void(const QString&, int)> log;
};

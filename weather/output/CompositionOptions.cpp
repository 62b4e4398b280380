#include "weather/output/CompositionOptions.h"

#include "app/base/Settings.h"
#include "app/base/SettingsValues.h"

CompositionOptions CompositionOptions::fromSettings(const Settings& settings)
{
    CompositionOptions options;
    options.interfaceType = settings.interfaceType();
    options.weatherMode = settings.weatherMode();
    options.gustySurfaceWind = settings.gustySurfaceWind();
    options.directWindControl = settings.fsWindDwc();
    options.vis9999 = settings.vis9999();
    options.visMin = settings.visMin();
    options.visMax = settings.visMax();
    options.cavokCover = settings.cavokCover();
    options.cavokHeight = settings.cavokHeight();
    options.turbulenceInCloud = settings.turbulenceInCloud();
    options.generateStratus = settings.generateStratus();
    options.mixedClouds = settings.mixedClouds();
    options.generateCirrus = settings.generateCirrus();
    options.icingInClouds = settings.icingInClouds();
    return options;
}

void CompositionOptions::drawRandomCavok(aviation::RandomSource& random)
{
    constexpr int kLowestHeight = 5000;
    if (cavokCover == cavokcover::kRandom) {
        cavokCover = random.next() % (cavokcover::kRandom - 1) + 1;
    }
    if (cavokHeight == cavokheight::kRandom) {
        cavokHeight = random.next() % (cavokheight::kRandom - kLowestHeight) + kLowestHeight;
    }
}

#include "app/jobs/WeatherJobs.h"

#include <array>
#include <utility>

QString weatherErrorText(int error)
{
    static constexpr std::array<std::pair<int, const char*>, 13> kTexts{{
        {weathererror::kNone, "No Error"},
        {weathererror::kDecode, "Decode Error"},
        {weathererror::kPrepare, "Prepare weather Error"},
        {weathererror::kNoPosition, "Prepare weather no position Error"},
        {weathererror::kNoGrib, "Prepare weather no grib Error"},
        {weathererror::kCannotCreateFile, "can not create file error"},
        {weathererror::kUnknownJob, "unknown job ID"},
        {weathererror::kNoMetar, "no metars found"},
        {weathererror::kNoSynop, "no synops found"},
        {weathererror::kNoGribFound, "no gribs found"},
        {weathererror::kNoWeather, "no weather"},
        {weathererror::kDecodeVisibility, "Decode visibility error"},
        {weathererror::kDecodeCloud, "Decode cloud error"},
    }};
    for (const auto& [code, text] : kTexts) {
        if (code == error) {
            return QLatin1String(text);
        }
    }
    return QStringLiteral("unknown error");
}

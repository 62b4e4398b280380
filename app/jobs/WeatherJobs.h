#pragma once

#include <QString>

/// Job ids of WeatherWorker. A number of its own: the ids of the simulator worker mean other
/// things.
namespace weatherjob {
inline constexpr int kDecodeWeather = 1;
inline constexpr int kFsuipcAll = 2;
inline constexpr int kFsuipcStation = 3;
inline constexpr int kFsuipcStationAgain = 4;
inline constexpr int kSimConnectAll = 5;
inline constexpr int kSimConnectStation = 6;
inline constexpr int kSimConnectStationAgain = 7;
inline constexpr int kXPlaneRecord = 8;
inline constexpr int kXPlane12Record = 9;
inline constexpr int kXPlaneFiles = 10;
inline constexpr int kThemeFile = 11;
inline constexpr int kDecodeGrib = 12;
inline constexpr int kSearchForDwc = 13;
inline constexpr int kSearchAtStation = 14;
inline constexpr int kSearchAtAircraft = 15;
inline constexpr int kWeatherSearch = 16;
inline constexpr int kSearchAtPosition = 17;

/// Jobs that end in weather for the simulator.
constexpr bool isPrepare(int job)
{
    return job >= kFsuipcAll && job <= kThemeFile;
}
} // namespace weatherjob

/// Results of the weather jobs, carried by WeatherWorker::sigFinishedJob.
namespace weathererror {
inline constexpr int kNone = 0;
inline constexpr int kDecode = 1;
inline constexpr int kPrepare = 2;
inline constexpr int kNoPosition = 3;
inline constexpr int kNoGrib = 4;
inline constexpr int kCannotCreateFile = 5;
inline constexpr int kUnknownJob = 6;
inline constexpr int kNoMetar = 7;
inline constexpr int kNoSynop = 8;
inline constexpr int kNoGribFound = 9;
inline constexpr int kNoWeather = 10;
/// A theme file was written: the good end of job 11.
inline constexpr int kThemeWritten = 11;
inline constexpr int kDecodeVisibility = 100;
inline constexpr int kDecodeCloud = 101;
} // namespace weathererror

/// The text for a result, "unknown error" for a number without one.
QString weatherErrorText(int error);

#pragma once

#include "aviation/FsId.h"
#include "aviation/Position.h"

#include <QString>

#include <cstdint>

/// The rules of the weather cycle, without timers, workers and window. All functions are pure.
namespace cycle {

/// Value of a counter of milliseconds for what never happened.
inline constexpr std::int32_t kNever = -1;
/// Surface visibility of X-Plane when none was set.
inline constexpr float kNoVisibility = -1.0F;

/// Jobs that may wait for the simulator before no more are posted by themselves: a slow one isn't
/// buried under questions.
inline constexpr int kMostWaitingJobs = 10;

/// The simulator at the other end, as ConnectWorker reports it after a connect.
struct Simulator
{
    int interfaceType = 0;
    aviation::FsId fsId = aviation::fsid::kNone;
};

/// A counter after some time; it stops at the largest number.
std::int32_t addElapsed(std::int32_t counter, std::int64_t elapsedMs);

/// A step of direct wind control is due, by a counter and its period, ms. Ticks of the weather
/// clock come a little early at times: a tenth less than the period counts as one.
bool stepDue(std::int32_t msSinceStep, std::int32_t periodMs);

/// A polling time of the settings, ms, limited to what the event loop can bear.
int pollTime(int setting);
/// Interval of the polling of the simulator, ms: `minimum` near the ground and moving, `maximum`
/// otherwise. The gap between the thresholds is hysteresis. Height above ground in feet, ground
/// speed in knots, `current` the interval now.
int pollInterval(int heightAgl, int groundSpeed, int current, int minimum, int maximum);

/// NM from the aircraft to where weather was last set; 0 when that is unknown.
double distanceFromLastUpdate(const aviation::Position& aircraft, const aviation::Position& last);

/// Half the range in whole NM: farther away new weather is due.
int distanceLimitNm(int rangeNm);
/// New weather by time or by distance. Times in seconds but for the counter.
bool updateDue(std::int32_t msSinceUpdate, int updateTime, double distanceNm, int rangeNm);

/// A counter that makes an update due at the next tick.
std::int32_t overdue(int updateTime);

/// Seconds and NM that are left until the next update; below 0 when it is overdue.
struct Remaining
{
    int seconds = 0;
    int distanceNm = 0;
};
Remaining untilUpdate(std::int32_t msSinceUpdate, int updateTime, double distanceNm, int rangeNm);

/// Seconds left until a download as they are displayed. The 900 seconds deliberately don't follow
/// the setting of the download interval.
int untilDownload(std::int32_t msSinceDownload);

/// A job for the weather worker that prepares the weather.
struct PrepareJob
{
    int id = 0; ///< of weatherjob; 0: this connection takes no weather
    QString name;
    bool wrongMode = false; ///< theme files were asked for where there are none
};
/// What a prepare job may be named by.
struct PrepareNames
{
    QString destination; ///< ICAO, may be empty
    QString themeFile;   ///< path without extension
};
/// `weatherMode` 1 asks for weather files.
PrepareJob prepareJobFor(const Simulator& simulator, int weatherMode, const PrepareNames& names);
/// The weather theme file without extension: through the bridge it lies in the temporary folder.
QString themeFile(int interfaceSetting, const QString& tmpFolder, const QString& simPath);

/// X-Plane whose visibility follows the height of the aircraft.
bool hasVisibilitySteps(const Simulator& simulator);
/// Metres to set: the surface value and twice the height in feet, cut off, at most
/// `maximumKm` x 1000; below 100 ft the surface value as it is.
std::int32_t visibilityAt(float surfaceVisibility, int heightAgl, int maximumKm);

/// The next source of weather: 1, 2, 3 and 1 again.
int nextSource(int source);

/// Why direct wind control can't be used with a simulator, a text for Controller::tr; null when it
/// can.
const char* dwcObstacle(aviation::FsId fsId);

/// How direct wind control reaches a simulator: as one wind at the aircraft, as layers of X-Plane,
/// or not at all.
enum class WindWay
{
    None,
    AtAircraft,
    Layers
};
WindWay windWayFor(const Simulator& simulator);
/// X-Plane before 12 reads its wind from files when `weatherMode` asks for weather files.
bool takesWindFromFiles(aviation::FsId fsId, int weatherMode);

/// The wait before the next attempt to connect, ms: 10 s, doubling up to 160 s.
int nextReconnectDelay(int lastDelayMs);

} // namespace cycle

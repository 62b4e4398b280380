#include "app/cycle/CycleRules.h"

#include "app/base/SettingsValues.h"
#include "app/jobs/WeatherJobs.h"

#include <algorithm>
#include <limits>

namespace cycle {

namespace {

constexpr int kMsPerSecond = 1000;

bool isClassicXPlane(const Simulator& simulator)
{
    const bool bridge = simulator.interfaceType == aviation::interfaceid::kBridge;
    return (bridge
            && (simulator.fsId == aviation::fsid::kXPlaneId8
                || simulator.fsId == aviation::fsid::kXPlaneId9))
           || simulator.interfaceType == aviation::interfaceid::kXPlanePlugin6
           || simulator.interfaceType == aviation::interfaceid::kXPlanePlugin7;
}

bool isXPlane12(const Simulator& simulator)
{
    return (simulator.interfaceType == aviation::interfaceid::kBridge
            && simulator.fsId == aviation::fsid::kXPlane12)
           || simulator.interfaceType == aviation::interfaceid::kXPlane12Plugin;
}

bool isXPlaneBefore12(aviation::FsId fsId)
{
    return fsId >= aviation::fsid::kXPlaneId7 && fsId <= aviation::fsid::kXPlaneId9;
}

} // namespace

std::int32_t addElapsed(std::int32_t counter, std::int64_t elapsedMs)
{
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    const std::int64_t elapsed = std::clamp<std::int64_t>(elapsedMs, 0, kLargest);
    return static_cast<std::int32_t>(std::min(counter + elapsed, kLargest));
}

bool stepDue(std::int32_t msSinceStep, std::int32_t periodMs)
{
    constexpr std::int32_t kTenth = 10;
    return msSinceStep >= periodMs - periodMs / kTenth || msSinceStep == kNever;
}

int pollTime(int setting)
{
    constexpr int kShortest = 20;
    return std::max(kShortest, setting);
}

int pollInterval(int heightAgl, int groundSpeed, int current, int minimum, int maximum)
{
    if (heightAgl < 200 && groundSpeed >= 21) {
        return minimum;
    }
    if (current == minimum && (heightAgl >= 201 || groundSpeed < 20)) {
        return maximum;
    }
    return current;
}

double distanceFromLastUpdate(const aviation::Position& aircraft, const aviation::Position& last)
{
    return last.isKnown() ? aircraft.DistanceTo(last) : 0.0;
}

int distanceLimitNm(int rangeNm)
{
    return rangeNm / 2;
}

bool updateDue(std::int32_t msSinceUpdate, int updateTime, double distanceNm, int rangeNm)
{
    return msSinceUpdate / kMsPerSecond > updateTime || msSinceUpdate == kNever
           || distanceNm > distanceLimitNm(rangeNm);
}

std::int32_t overdue(int updateTime)
{
    return addElapsed(0, (static_cast<std::int64_t>(updateTime) + 1) * kMsPerSecond);
}

Remaining untilUpdate(std::int32_t msSinceUpdate, int updateTime, double distanceNm, int rangeNm)
{
    return {updateTime - msSinceUpdate / kMsPerSecond,
            static_cast<int>(distanceLimitNm(rangeNm) - distanceNm)};
}

int untilDownload(std::int32_t msSinceDownload)
{
    constexpr int kShownInterval = 900;
    return kShownInterval - msSinceDownload / kMsPerSecond;
}

PrepareJob prepareJobFor(const Simulator& simulator, int weatherMode, const PrepareNames& names)
{
    const bool files = weatherMode == weathermode::kFiles;
    switch (simulator.interfaceType) {
    case aviation::interfaceid::kSimConnect:
    case aviation::interfaceid::kFsuipcSimConnect:
        return files ? PrepareJob{weatherjob::kThemeFile, names.themeFile, false}
                     : PrepareJob{weatherjob::kSimConnectAll, names.destination, false};
    case aviation::interfaceid::kFsuipc:
        return {weatherjob::kFsuipcAll, names.destination, files};
    default:
        break;
    }
    const bool classic = isClassicXPlane(simulator);
    if (!classic && !isXPlane12(simulator)) {
        return {};
    }
    if (files) {
        return {weatherjob::kXPlaneFiles, QString(), false};
    }
    return {classic ? weatherjob::kXPlaneRecord : weatherjob::kXPlane12Record, QString(), false};
}

QString themeFile(int interfaceSetting, const QString& tmpFolder, const QString& simPath)
{
    return interfaceSetting == aviation::interfaceid::kBridge
               ? tmpFolder + QStringLiteral("cirrilon")
               : simPath + QStringLiteral("/Weather/themes/cirrilon");
}

bool hasVisibilitySteps(const Simulator& simulator)
{
    return isClassicXPlane(simulator);
}

std::int32_t visibilityAt(float surfaceVisibility, int heightAgl, int maximumKm)
{
    constexpr int kLowHeight = 100; // feet
    constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
    const double surface = std::clamp(static_cast<double>(surfaceVisibility), 0.0, kLargest);
    if (heightAgl < kLowHeight) {
        return static_cast<std::int32_t>(surface);
    }
    const double raised = std::clamp(2.0 * heightAgl + surface, surface, kLargest);
    const double limit = std::clamp(maximumKm * 1000.0, 0.0, kLargest);
    return static_cast<std::int32_t>(std::min(raised, limit));
}

int nextSource(int source)
{
    constexpr int kLastSource = 3;
    return source + 1 > kLastSource ? 1 : source + 1;
}

const char* dwcObstacle(aviation::FsId fsId)
{
    switch (fsId) {
    case aviation::fsid::kPrepar3dV4:
        return QT_TRANSLATE_NOOP("Controller", "is not available for P3Dv4");
    case aviation::fsid::kPrepar3dV5:
        return QT_TRANSLATE_NOOP("Controller", "is not available for P3Dv5");
    case aviation::fsid::kFs2020:
        return QT_TRANSLATE_NOOP("Controller", "is not available for FS2020");
    default:
        return nullptr;
    }
}

WindWay windWayFor(const Simulator& simulator)
{
    // SimConnect alone can't set a wind.
    if (simulator.interfaceType == aviation::interfaceid::kSimConnect
        || dwcObstacle(simulator.fsId) != nullptr)
    {
        return WindWay::None;
    }
    const bool xplane =
        isXPlaneBefore12(simulator.fsId) || simulator.fsId == aviation::fsid::kXPlane12;
    return xplane ? WindWay::Layers : WindWay::AtAircraft;
}

bool takesWindFromFiles(aviation::FsId fsId, int weatherMode)
{
    return isXPlaneBefore12(fsId) && weatherMode == weathermode::kFiles;
}

int nextReconnectDelay(int lastDelayMs)
{
    constexpr int kFirst = 10000;
    constexpr int kLongest = 160000;
    return lastDelayMs <= 0 ? kFirst : std::min(lastDelayMs * 2, kLongest);
}

} // namespace cycle

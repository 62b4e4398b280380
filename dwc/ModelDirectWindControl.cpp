#include "dwc/ModelDirectWindControl.h"

#include "app/base/Settings.h"
#include "aviation/support/Clock.h"
#include "aviation/support/ReportTime.h"
#include "dwc/TargetWind.h"
#include "dwc/WindSteering.h"
#include "dwc/XPlaneLayers.h"

#include <QDebug>

#include <algorithm>
#include <utility>

using aviation::Clock;
using aviation::weather::GribLevel;
using aviation::weather::Metar;
using aviation::weather::Synop;
using aviation::weather::Wind;

namespace {

constexpr float kUnknown = -1.0F; ///< direction or speed of a wind

/// A variable wind has no direction to steer to.
bool isBlowingFrom(const Wind& wind)
{
    return wind.Dir >= 0.0F && wind.Speed >= 0.0F;
}

/// A SYNOP from far away says less of the METAR's station than its own old report. A METAR without
/// a place is one that wasn't found.
bool standsInFor(const Synop& synop, const Metar& metar)
{
    constexpr double kNearNm = 50.0;
    return !metar.isKnown() || metar.DistanceTo(synop) < kNearNm;
}

} // namespace

ModelDirectWindControl::ModelDirectWindControl(const Settings& settings,
                                               aviation::RandomSource& random)
    : m_settings(settings)
    , m_gusts(random)
{
    qDebug() << Q_FUNC_INFO;
    m_aircraft.wind = {kUnknown, kUnknown, kUnknown, 0.0F}; // until there is a sample
}

void ModelDirectWindControl::SetWeather(const Metar& metar, const Synop& synop,
                                        const aviation::weather::Grib& grib)
{
    setReports(metar, synop, grib.levels());
}

void ModelDirectWindControl::setReports(const Metar& metar, const Synop& synop,
                                        std::vector<GribLevel> levels)
{
    m_metar = metar;
    m_synop = synop;
    m_levels = std::move(levels);
    m_hasReports = true;
    std::stable_sort(m_levels.begin(), m_levels.end(), [](const GribLevel& a, const GribLevel& b) {
        return a.altitude < b.altitude;
    });
    m_stepTimer = Clock::current().MonotonicMs();
}

void ModelDirectWindControl::SetAircraftData(const aviation::structs::AircraftData& data)
{
    m_aircraft = data;
    if (m_windCurrent.Dir == kUnknown || m_windCurrent.Speed == kUnknown) {
        m_windCurrent = data.wind;
    }
}

void ModelDirectWindControl::Step()
{
    updateTarget();
    steer();
    m_gusts.draw(m_windTarget, m_aircraft.heightAgl); // only the offset in the model advances
}

/// Only a user who leaves out upper-air data has the surface wind at all heights, as in the weather
/// that is set then.
bool ModelDirectWindControl::hasWind() const
{
    const bool surfaceWillDo = m_settings.gribOff() && m_metar.isKnown();
    return !m_levels.empty() || (surfaceWillDo && isBlowingFrom(m_metar.wind()));
}

void ModelDirectWindControl::updateTarget()
{
    if (aviation::isTimeGroupOld(m_metar.timeGroup(), Clock::current().NowUtc())
        && standsInFor(m_synop, m_metar))
    {
        m_synop.ToMetar(m_metar);
    }
    if (!hasWind()) {
        return;
    }
    const GribLevel ground = targetwind::groundLevel(m_metar, m_aircraft.magneticVariation);
    m_windTarget = targetwind::levelAt(m_levels, ground, m_aircraft.altitude).wind;
}

/// Whether the simulator may have another wind by now than the one that the last step gave it.
bool ModelDirectWindControl::isAfterGap() const
{
    constexpr std::int64_t kLongestPauseMs = 60000;
    constexpr double kFarthestNm = 50.0;
    if (!m_lastStep || Clock::current().MonotonicMs() - m_lastStep->atMs > kLongestPauseMs) {
        return true;
    }
    const aviation::Position& place = m_lastStep->place;
    return place.isKnown() && m_aircraft.position.isKnown()
           && place.DistanceTo(m_aircraft.position) > kFarthestNm;
}

void ModelDirectWindControl::takeWindAtAircraft()
{
    constexpr float kMostKnots = 200.0F;
    const Wind& wind = m_aircraft.wind;
    if (windsteering::isDirectionInRange(wind) && wind.Speed >= 0.0F) {
        m_windOut.Dir = windsteering::foldedDirection(static_cast<double>(wind.Dir));
        m_windOut.Speed = std::min(wind.Speed, kMostKnots);
    }
}

void ModelDirectWindControl::steer()
{
    if (isAfterGap()) {
        takeWindAtAircraft();
    }
    m_lastStep = {Clock::current().MonotonicMs(), m_aircraft.position};
    m_windCurrent = m_windOut;
    const Wind gust =
        m_gusts.update(m_windTarget, m_aircraft.heightAgl, m_settings.gustySurfaceWind());
    const Wind aim = windsteering::sum(m_windTarget, gust);
    const windsteering::Limits limits = windsteering::limitsFor(
        takeStepMs(), m_settings.dwcDegreesPerSecond(), m_settings.dwcKnotsPerSecond());
    m_windOut = windsteering::stepped(m_windCurrent, aim, limits);
    if (!windsteering::isDirectionInRange(m_windOut)) {
        qDebug().noquote() << windtexts::directionError(m_windOut);
        m_windOut = m_windCurrent;
    }
    if (!windsteering::isSpeedInRange(m_windOut)) {
        qDebug().noquote() << windtexts::speedError(m_windOut);
        m_windOut = m_windCurrent;
    }
}

/// Milliseconds since the last step; 0 when nothing has started the timer yet. A stall counts as
/// one second, so that it doesn't unleash one great jump.
double ModelDirectWindControl::takeStepMs()
{
    constexpr std::int64_t kStallMs = 5000;
    constexpr std::int64_t kMsAfterStall = 1000;
    const std::int64_t now = Clock::current().MonotonicMs();
    const std::int64_t elapsed = now - m_stepTimer.value_or(now);
    m_stepTimer = now;
    return static_cast<double>(elapsed > kStallMs ? kMsAfterStall : elapsed);
}

bool ModelDirectWindControl::hasWindForXPlane() const
{
    Metar surface = m_metar;
    xplanelayers::fillMissingWind(surface, m_synop, m_metar.DistanceTo(m_synop));
    return m_levels.size() >= xplanelayers::kFewestLevels && surface.wind().Speed >= 0.0F;
}

void ModelDirectWindControl::StepXPlane()
{
    const double spreadNm = m_metar.DistanceTo(m_synop);
    xplanelayers::fillMissingWind(m_metar, m_synop, spreadNm);
    const xplanelayers::Surface surface{m_metar, m_synop, spreadNm, m_settings.gustySurfaceWind()};
    auto layers = xplanelayers::build(surface, m_levels, m_aircraft);
    if (!layers.empty()) {
        m_xpLayers = std::move(layers);
    }
    m_stepTimer = Clock::current().MonotonicMs();
}

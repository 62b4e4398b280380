#include "app/cycle/DirectWind.h"

#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/jobs/WeatherJobs.h"
#include "aviation/support/RandomSource.h"
#include "dwc/ModelDirectWindControl.h"
#include "dwc/WindTexts.h"
#include "sim/ConnectJobs.h"
#include "sim/SimResult.h"

#include <cmath>
#include <utility>

DirectWind::DirectWind(const Settings& settings, MainView& view, JobPosts posts,
                       std::unique_ptr<aviation::RandomSource> random)
    : m_settings(settings)
    , m_view(view)
    , m_posts(std::move(posts))
    , m_random(std::move(random))
    , m_model(std::make_unique<ModelDirectWindControl>(settings, *m_random))
{}

DirectWind::~DirectWind() = default;

void DirectWind::update(const cycle::Simulator& simulator,
                        const aviation::structs::AircraftData& aircraft, bool ready)
{
    m_way = cycle::WindWay::None;
    if (!m_settings.fsWindDwc() || cycle::dwcObstacle(simulator.fsId) != nullptr) {
        hide();
        return;
    }
    const cycle::WindWay way = cycle::windWayFor(simulator);
    if (way == cycle::WindWay::None || !ready) {
        show(ready ? tr("no DWC, SimConnect can't set a wind") : tr("no DWC, no weather yet"));
        return;
    }
    // Only the time of the ticks that come this far counts, so that the reports are searched anew
    // every two minutes.
    m_msSinceDwcSearch = cycle::addElapsed(m_msSinceDwcSearch, m_clock.lapMs());
    if (cycle::takesWindFromFiles(simulator.fsId, m_settings.weatherMode())) {
        const QString text = tr("no DWC, XPlane weather file mode");
        m_view.OnStatusbarStatus(text);
        show(text);
        return;
    }
    m_way = way;
    // One wind at a time: a slow simulator isn't sent those of the past.
    if (searchIfDue(aircraft.position) || m_windUnderWay) {
        return;
    }
    // Without levels nothing is known of the wind: a calm would replace the one that the weather
    // set. Nor says the wind of another place anything here.
    if (!hasWind()) {
        show(m_model->hasReports() && !m_isElsewhere ? tr("no DWC, no upper-air data")
                                                     : tr("no DWC, no reports near the aircraft"));
        return;
    }
    m_model->SetAircraftData(aircraft);
    send();
    if (m_refusal != simresult::kNone) {
        show(tr("no DWC, the simulator refuses the wind (error %1)").arg(m_refusal));
    }
}

bool DirectWind::hasWind() const
{
    const bool isKnown =
        m_way == cycle::WindWay::AtAircraft ? m_model->hasWind() : m_model->hasWindForXPlane();
    return isKnown && !m_isElsewhere;
}

bool DirectWind::sends() const
{
    return m_way != cycle::WindWay::None && hasWind() && m_refusal == simresult::kNone;
}

/// A jump makes it due at once, since the reports are those of the place before.
bool DirectWind::searchIfDue(const aviation::Position& aircraft)
{
    constexpr int kSearchMs = 120000;
    constexpr double kFarthestNm = 50.0;
    const bool jumped = m_searchedAt.isKnown() && m_searchedAt.DistanceTo(aircraft) > kFarthestNm;
    if (m_msSinceDwcSearch <= kSearchMs && m_msSinceDwcSearch != cycle::kNever && !jumped) {
        return false;
    }
    m_isElsewhere = m_isElsewhere || jumped;
    m_searchedAt = aircraft;
    m_msSinceDwcSearch = 0;
    m_posts.toWeather(
        Job(weatherjob::kSearchForDwc, QStringLiteral("search nearest weather for DWC")));
    return true;
}

void DirectWind::takeReports(const aviation::weather::Metar& metar,
                             const aviation::weather::Synop& synop,
                             const aviation::weather::Grib& grib)
{
    m_model->SetWeather(metar, synop, grib);
    m_isElsewhere = false;
}

void DirectWind::windFinished(int result)
{
    m_windUnderWay = false;
    m_refusal = result;
}

/// What went to the last connection has no meaning for this one.
void DirectWind::connected()
{
    m_way = cycle::WindWay::None;
    m_windUnderWay = false;
    m_refusal = simresult::kNone;
    m_shown = false;
    m_msSinceDwcSearch = cycle::kNever; // and the first lap is 0, so that it stays so
    m_clock = LapClock();
    m_isElsewhere = true;
    m_model->startAnew();
}

void DirectWind::send()
{
    m_windUnderWay = true;
    if (m_way == cycle::WindWay::AtAircraft) {
        sendWindAtAircraft();
    } else {
        sendLayers();
    }
}

/// Gust and fourth value of the wind don't travel.
void DirectWind::sendWindAtAircraft()
{
    m_model->Step();
    m_posts.toSimulator(Job(connectjob::kWindAtAircraft, windtexts::jobName(m_model->GetWind())));
    m_shown = true;
    m_view.SetTargetWind(m_model->GetWind());
    const aviation::weather::Wind& target = m_model->windTarget();
    const QString text = m_model->isSurfaceWind()
                             ? tr("Wind on the ground, upper-air data are ignored: %1°/%2kt")
                             : tr("Real wind at this altitude: %1°/%2kt");
    m_view.SetTargetWindTooltip(text.arg(std::lround(target.Dir)).arg(std::lround(target.Speed)));
}

void DirectWind::sendLayers()
{
    m_model->StepXPlane();
    m_posts.toSimulator(
        Job(connectjob::kSetWindLayers, m_model->GetXPlaneLayers(), QStringLiteral("Set XPWind")));
    show(windtexts::layersText(m_model->GetXPlaneLayers()));
}

void DirectWind::show(const QString& text)
{
    m_shown = true;
    m_view.SetTargetWind(text);
    m_view.SetTargetWindTooltip(text);
}

/// Only what was shown by a tick goes, not why there is no direct wind control.
void DirectWind::hide()
{
    if (m_shown) {
        show(QString());
        m_shown = false;
    }
}

#include "app/Controller.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/cycle/CycleRules.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/Clock.h"
#include "dwc/ModelDirectWindControl.h"
#include "dwc/WindTexts.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"

#include <cmath>

void Controller::UpdateDirectWindControl()
{
    const cycle::WindWay way = cycle::WindWayFor(simulator());
    const bool ready = weatherDecoded && aircraftDataValid && aircraftData.position.isKnown();
    if (!m_settings.fsWindDwc() || !ready || way == cycle::WindWay::None) {
        hideDirectWind();
        return;
    }
    addDirectWindTime();
    if (cycle::TakesWindFromFiles(simulator().fsId, m_settings.weatherMode())) {
        const QString text = tr("no DWC, XPlane weather file mode");
        m_view.OnStatusbarStatus(text);
        showDirectWind(text);
        return;
    }
    // One wind at a time: a slow simulator isn't sent those of the past. And none before the first
    // reports: where they never come, a calm would replace the wind that the weather set.
    if (searchDirectWindIfDue() || m_windUnderWay || !m_directWind->hasReports()) {
        return;
    }
    m_directWind->SetAircraftData(aircraftData);
    if (way == cycle::WindWay::AtAircraft) {
        sendWindAtAircraft();
    } else {
        sendWindLayers();
    }
}

/// The time since the last tick that came this far, so that the reports are searched anew every two
/// minutes.
void Controller::addDirectWindTime()
{
    const std::int64_t now = aviation::Clock::Current().MonotonicMs();
    const std::int64_t elapsed = now - m_directWindClockMs.value_or(now);
    m_directWindClockMs = now;
    msSinceDwcSearch = cycle::AddElapsed(msSinceDwcSearch, elapsed);
}

bool Controller::searchDirectWindIfDue()
{
    constexpr int kSearchMs = 120000;
    if (msSinceDwcSearch <= kSearchMs && msSinceDwcSearch != cycle::kNever) {
        return false;
    }
    msSinceDwcSearch = 0;
    postWeatherJob(
        Job(weatherjob::kSearchForDwc, QStringLiteral("search nearest weather for DWC")));
    return true;
}

void Controller::takeDirectWindReports(int error)
{
    if (error != weathererror::kNone) {
        return; // the wind goes on with the reports of before
    }
    aviation::weather::Metar metar;
    aviation::weather::Synop synop;
    aviation::weather::Grib grib;
    m_weatherWorker->GetSearchResult(metar, synop, grib);
    m_directWind->SetWeather(metar, synop, grib);
}

/// Gust and fourth value of the wind don't travel.
void Controller::sendWindAtAircraft()
{
    m_directWind->Step();
    m_windUnderWay = true;
    postConnectJob(Job(connectjob::kWindAtAircraft, windtexts::JobName(m_directWind->GetWind())));
    m_directWindShown = true;
    m_view.SetTargetWind(m_directWind->GetWind());
    const aviation::weather::Wind& target = m_directWind->windTarget();
    m_view.SetTargetWindTooltip(tr("Real wind at this altitude: %1°/%2kt")
                                    .arg(std::lround(target.Dir))
                                    .arg(std::lround(target.Speed)));
}

void Controller::sendWindLayers()
{
    m_directWind->StepXPlane();
    if (m_directWind->GetXPlaneLayers().empty()) {
        return;
    }
    m_windUnderWay = true;
    postConnectJob(Job(connectjob::kSetWindLayers, m_directWind->GetXPlaneLayers(),
                       QStringLiteral("Set XPWind")));
    showDirectWind(windtexts::Layers(m_directWind->GetXPlaneLayers()));
}

void Controller::showDirectWind(const QString& text)
{
    m_directWindShown = true;
    m_view.SetTargetWind(text);
    m_view.SetTargetWindTooltip(text);
}

/// Only what was shown by a tick goes, not why there is no direct wind control.
void Controller::hideDirectWind()
{
    if (m_directWindShown) {
        showDirectWind(QString());
        m_directWindShown = false;
    }
}

#pragma once

#include "app/base/JobPosts.h"
#include "app/cycle/CycleRules.h"
#include "app/cycle/LapClock.h"
#include "aviation/AircraftData.h"

#include <QCoreApplication>
#include <QString>

#include <cstdint>
#include <memory>

class MainView;
class ModelDirectWindControl;
class Settings;

namespace aviation {
class RandomSource;
}
namespace aviation::weather {
class Grib;
class Metar;
class Synop;
} // namespace aviation::weather

/// Direct wind control within the weather cycle: once a second it has the wind worked out, sends it
/// to the simulator and shows it, and every two minutes it has the nearest reports searched anew.
/// Main thread; owned by the controller.
class DirectWind
{
    Q_DECLARE_TR_FUNCTIONS(DirectWind)
public:
    /// Settings and view outlive it. `random` is a source of its own, since the store draws from
    /// the common one on the worker's thread.
    DirectWind(const Settings& settings, MainView& view, JobPosts posts,
               std::unique_ptr<aviation::RandomSource> random);
    ~DirectWind();

    /// A tick. `ready`: there are reports, and the aircraft's place is known.
    void update(const cycle::Simulator& simulator, const aviation::structs::AircraftData& aircraft,
                bool ready);
    /// The result of the search that a tick posted.
    void takeReports(const aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
                     const aviation::weather::Grib& grib);
    /// The simulator has taken the wind of the last tick, or refused it.
    void windFinished() { m_windUnderWay = false; }
    /// Another connection: what the line of direct wind control says then stays until a tick.
    void connected() { m_shown = false; }

private:
    bool searchIfDue();
    void sendWindAtAircraft();
    void sendLayers();
    void show(const QString& text);
    void hide();

    const Settings& m_settings;
    MainView& m_view;
    const JobPosts m_posts;
    std::unique_ptr<aviation::RandomSource> m_random;
    std::unique_ptr<ModelDirectWindControl> m_model;
    LapClock m_clock;
    std::int32_t m_msSinceDwcSearch = cycle::kNever;
    bool m_windUnderWay = false; ///< job 19 or 35 isn't finished
    bool m_shown = false;
};

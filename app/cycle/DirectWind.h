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
    /// The simulator has taken the wind of the last tick, or refused it: a result of simresult.
    void windFinished(int result);
    /// Another connection, whose first wind starts from the one at the aircraft. What the line of
    /// direct wind control says then stays until a tick.
    void connected();
    /// As of the last tick nothing is in the way of sending, and the simulator hasn't refused the
    /// last wind.
    bool sends() const;

private:
    bool searchIfDue(const aviation::Position& aircraft);
    bool hasWind() const;
    void send();
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
    aviation::Position m_searchedAt; ///< the aircraft, at the last search
    bool m_isElsewhere = false;      ///< the reports are of the connection or the place before
    cycle::WindWay m_way = cycle::WindWay::None; ///< of the last tick; none: it couldn't send
    bool m_windUnderWay = false;                 ///< job 19 or 35 isn't finished
    int m_refusal = 0;                           ///< result of the last job, of simresult
    bool m_shown = false;
};

#pragma once

#include "aviation/AircraftData.h"
#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "aviation/Wind.h"
#include "dwc/GustModel.h"
#include "dwc/WindTexts.h"
#include "weather/output/records/XPlaneWeather.h"

#include <cstdint>
#include <optional>
#include <vector>

class Settings;

namespace aviation {
class RandomSource;
}

/// Direct wind control: works out the real wind at the aircraft and moves the simulator's wind
/// towards it at a limited rate, with gusts near the ground. Owned by DirectWind; main thread.
class ModelDirectWindControl
{
public:
    /// Both must outlive the model. Limits and gusts are read from the settings at every step;
    /// limits below 0 count as 0.
    ModelDirectWindControl(const Settings& settings, aviation::RandomSource& random);

    /// The nearest reports, used until the next call. The time of the next step counts from here.
    void SetWeather(const aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
                    const aviation::weather::Grib& grib);
    /// The same with the levels of an upper-air report, in any order.
    void setReports(const aviation::weather::Metar& metar, const aviation::weather::Synop& synop,
                    std::vector<aviation::weather::GribLevel> levels);
    /// Reports have been given.
    bool hasReports() const { return m_hasReports; }
    /// The present reports say anything of the wind at the aircraft.
    bool hasWind() const;
    /// The target of Step() is the wind on the ground, for want of levels.
    bool isSurfaceWind() const { return m_levels.empty(); }
    /// There are a wind on the ground and enough levels for StepXPlane().
    bool hasWindForXPlane() const;
    void SetAircraftData(const aviation::structs::AircraftData& data);
    /// One step, about once a second. After a gap it starts from the wind at the aircraft, where
    /// the simulator reports one, and not from where the last step ended: the first step, one after
    /// more than a minute, and one more than 50 NM away from the last.
    void Step();
    /// The next step starts from the wind at the aircraft.
    void startAnew() { m_lastStep.reset(); }
    /// What the simulator is to get now: direction in [0, 360), speed from 0 to 200 knots.
    const aviation::weather::Wind& GetWind() const { return m_windOut; }
    /// Name of the job that sets the wind: "direction:speed", six digits each at most.
    QString jobName() const { return windtexts::jobName(m_windOut); }
    /// Builds the three layers for X-Plane.
    void StepXPlane();
    /// Empty until StepXPlane() had a report of at least two levels.
    const std::vector<XPlaneWindLayer>& GetXPlaneLayers() const { return m_xpLayers; }
    /// The layers for people, "(metres):degrees/knots" of each; empty without layers.
    QString layersText() const { return windtexts::layersText(m_xpLayers); }

    /// The real wind at the aircraft's altitude as of the last step.
    const aviation::weather::Wind& windTarget() const { return m_windTarget; }
    /// The offset that was drawn last.
    const aviation::weather::Wind& windGust() const { return m_gusts.windGust(); }
    /// The gust wind that the last step added to the target; zero without gusts.
    const aviation::weather::Wind& gustInForce() const { return m_gusts.inForce(); }

private:
    struct LastStep
    {
        std::int64_t atMs = 0; ///< Clock::MonotonicMs
        aviation::Position place;
    };

    void updateTarget();
    bool isAfterGap() const;
    void takeWindAtAircraft();
    void steer();
    double takeStepMs();

    const Settings& m_settings;
    GustModel m_gusts;

    bool m_hasReports = false;
    aviation::weather::Metar m_metar; ///< or what the SYNOP says, once the METAR was too old
    aviation::weather::Synop m_synop;
    std::vector<aviation::weather::GribLevel> m_levels; ///< lowest first
    aviation::structs::AircraftData m_aircraft;

    std::optional<std::int64_t> m_stepTimer; ///< Clock::MonotonicMs; none before the first start
    std::optional<LastStep> m_lastStep;      ///< none: the next one starts anew
    aviation::weather::Wind m_windOut;
    aviation::weather::Wind m_windCurrent; ///< of the step before
    aviation::weather::Wind m_windTarget;
    std::vector<XPlaneWindLayer> m_xpLayers;
};

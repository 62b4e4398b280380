#pragma once

#include "app/base/Settings.h"
#include "dwc/ModelDirectWindControl.h"
#include "tests/dwc/DwcTesting.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRandom.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <vector>

/// A model with a clock that stands still, a list of random numbers, and settings without gusts.
class ModelFixture : public ::testing::Test
{
public:
    ModelFixture() { m_settings.setGustySurfaceWind(false); }
    ~ModelFixture() override { qInstallMessageHandler(m_before); }

protected:
    /// One wind at every altitude.
    void setWeather(float direction, float speed)
    {
        m_model.setReports(aviation::weather::Metar(), aviation::weather::Synop(),
                           {dwctesting::levelAt(-1000, direction, speed)});
    }

    void setAircraft(int altitude, int heightAgl, float magneticVariation = 0.0F)
    {
        aviation::structs::AircraftData data;
        data.altitude = altitude;
        data.heightAgl = heightAgl;
        data.magneticVariation = magneticVariation;
        m_model.SetAircraftData(data);
    }

    /// On the eighth meridian east, where the simulator reports this wind.
    void flyAt(double latitude, const aviation::weather::Wind& wind)
    {
        aviation::structs::AircraftData data;
        data.position = aviation::Position(latitude, 8.0);
        data.wind = wind;
        m_model.SetAircraftData(data);
    }

    aviation::weather::Wind step(int afterMs = 1000)
    {
        m_clock.advance(std::chrono::milliseconds(afterMs));
        m_model.Step();
        return m_model.GetWind();
    }

    /// Steps until the simulator has this wind.
    void reach(float direction, float speed)
    {
        m_settings.setDwcDegreesPerSecond(360);
        m_settings.setDwcKnotsPerSecond(400);
        setWeather(direction, speed);
        step();
        m_settings.setDwcDegreesPerSecond(1);
        m_settings.setDwcKnotsPerSecond(1);
        ASSERT_EQ(m_model.GetWind().Dir, direction);
        ASSERT_EQ(m_model.GetWind().Speed, speed);
    }

    static inline QStringList debugLines;
    QtMessageHandler m_before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& text) { debugLines << text; });
    FakeClock m_clock{2019, 7, 1, 12, 40};
    FakeRandom m_random{{812345, 23456, 1999, 77, 1234567}};
    Settings m_settings{QString(), m_random};
    ModelDirectWindControl m_model{m_settings, m_random};
};

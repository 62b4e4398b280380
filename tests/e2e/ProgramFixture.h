#pragma once

#include "app/Controller.h"
#include "app/base/StopFlag.h"
#include "app/jobs/WeatherWorker.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "sim/SimulatorInterfaces.h"
#include "standins/simulator/Messages.h"
#include "standins/simulator/SimulatorClientsInMemory.h"
#include "standins/simulator/SimulatorThread.h"
#include "standins/wxserver/WeatherServerThread.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/e2e/SteppedClock.h"
#include "tests/support/ControllerTesting.h"
#include "tests/support/FakeMainView.h"
#include "tests/support/FakeProcessRunner.h"
#include "tests/support/FakeUserDialogs.h"
#include "weather/output/WeatherWrapper.h"

#include <QTest>

#include <functional>
#include <map>
#include <memory>

/// The real controller, workers, interfaces and sockets between a stand-in simulator and a weather
/// server. The bridge and the server are on loopback, SimConnect and FSUIPC in memory. The window
/// is a double and the clock is advanced by hand.
class ProgramFixture : public SettingsFixture
{
protected:
    static constexpr int kNeverMs = 3600000;

    void SetUp() override
    {
        SettingsFixture::SetUp();
        ASSERT_TRUE(server.start());
        simulator =
            std::make_unique<simulator::SimulatorThread>(simulatorOptions(), clients.model());
        m_port = simulator->startServer();
        ASSERT_NE(m_port, 0);
        clients.model().withFlight(
            [](simulator::SimulatedFlight& flight) { flight.jumpTo(simulator::Phase::Cruise); });
        write(mainFile(), QStringLiteral("[url]\nwxdata1=%1\nwxdata2=%1/second\nfileinfo=%1/\n")
                              .arg(server.url())
                              .toUtf8());
        settings = std::make_unique<Settings>(mainFile(), m_random);
        settings->setWeatherServer(settings->serverOne());
        settings->setWorkFolder(path("work/"));
        settings->setInterfaceType(aviation::interfaceid::kBridge);
        settings->setServerPort(m_port);
        settings->setCheckNewVersion(false);
        settings->setFsWindDwc(false);
    }
    void TearDown() override
    {
        controller.reset();
        simulator.reset();
        server.stop();
        settings.reset();
        SettingsFixture::TearDown();
    }
    virtual simulator::SimulatorOptions simulatorOptions() const
    {
        simulator::SimulatorOptions options;
        options.udpIntervalMs = 50;
        return options;
    }

    void make()
    {
        interfaces = std::make_unique<SimulatorInterfaces>(*settings, stop, clients, timeouts);
        controller = std::make_unique<Controller>(
            ControllerParts{*settings, view, dialogs, m_random, hostNetwork(), processes,
                            *interfaces, limits, 0, link});
        timer("timerOneSecond").stop();
        timer("timerWeather").setInterval(kNeverMs); // the tests tick
        QObject::connect(&controller->connectWorker(), &ConnectWorker::sigJobFinish,
                         controller.get(), [this](int job, const QString&, int error) {
                             ++jobs[job];
                             lastError[job] = error;
                         });
        bool started = false;
        QObject::connect(controller.get(), &Controller::sigStarted, [&started] { started = true; });
        ASSERT_TRUE(wait([&started] { return started; }));
    }

    QTimer& timer(const char* name) const { return controllertesting::timer(*controller, name); }
    bool watching() const { return timer("timerWeather").isActive(); }
    static bool wait(const std::function<bool()>& condition)
    {
        return controllertesting::waitFor(condition);
    }
    /// Lets all jobs end, and those that follow from their signals.
    void settle() { ASSERT_TRUE(controllertesting::settle(*controller)); }
    /// Connects and waits for the first position of the aircraft.
    void connectSimulator()
    {
        controller->OnConnectClicked();
        settle();
        ASSERT_TRUE(controller->IsConnected());
        controller->OnTimerOneSecond();
        ASSERT_TRUE(wait([this] { return controller->aircraft().position.latitude() != 0.0; }));
        settle();
    }
    void download()
    {
        controller->OnDownloadWeather();
        ASSERT_TRUE(wait([this] { return watching() && controller->weather().metarCount() > 0; }));
        settle();
    }
    /// Lets the weather clock tick once after so much time.
    void tick(std::chrono::milliseconds after = std::chrono::seconds(1))
    {
        clock.advance(after);
        controller->OnTimerWeather();
    }
    /// Ticks once and waits until that has led to a set job that ended; its error, -1 if none came.
    int setWeather(int job, std::chrono::milliseconds after = std::chrono::seconds(1))
    {
        const int before = jobs[job];
        tick(after);
        if (!wait([this, job, before] { return jobs[job] > before; })) {
            return -1;
        }
        settle();
        return lastError[job];
    }
    int asked(int command, int message) const { return simulator->receivedCount(command, message); }

    SteppedClock clock;
    wxserver::WeatherServerThread server;
    simulator::SimulatorClientsInMemory clients; ///< the simulator; the bridge stands before it
    std::unique_ptr<simulator::SimulatorThread> simulator;
    FakeMainView view;
    FakeUserDialogs dialogs;
    FakeProcessRunner processes;
    StopFlag stop;
    BridgeTimeouts timeouts{2000, 2000, 400, 400, 1};
    DownloadLimits limits{64LL * 1024 * 1024,
                          3000,
                          900000, // slow builds prepare a list in a second
                          {0, 0, 0, 0, 0, 0}};
    LinkTimes link{50, {1000, 10000}};
    std::unique_ptr<Settings> settings;
    std::unique_ptr<SimulatorInterfaces> interfaces;
    std::unique_ptr<Controller> controller;
    std::map<int, int> jobs;      ///< finished jobs of the simulator worker, by id
    std::map<int, int> lastError; ///< of these

private:
    quint16 m_port = 0;
};

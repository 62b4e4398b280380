#pragma once

#include "app/Controller.h"
#include "app/base/Settings.h"
#include "app/base/UserDialogs.h"
#include "aviation/support/RandomSource.h"
#include "sim/SimulatorInterfaces.h"
#include "sim/clients/SimulatorClients.h"
#include "standins/simulator/SimulatorThread.h"
#include "standins/wxserver/WeatherServerThread.h"
#include "tests/soak/FastClock.h"
#include "tests/support/FakeMainView.h"
#include "tests/support/FakeProcessRunner.h"

#include <atomic>
#include <functional>
#include <memory>

struct SoakOptions
{
    int cycles = 1000;
    std::uint32_t seed = 1;
    bool faults = true; ///< false: nothing misbehaves
    QString folder;     ///< work folder, empty at the start
};

/// Counts boxes and answers nothing.
class SilentDialogs final : public UserDialogs
{
public:
    void warning(const QString&, const QString&) override { ++boxes; }
    void critical(const QString&, const QString&) override { ++boxes; }
    void farewell(const QString&, const QString&) override { ++boxes; }
    bool question(const QString&, const QString&) override { return false; }
    QString offerUpdate(const UpdateOffer&) override { return {}; }

    std::atomic<int> boxes{0};
};

/// Many cycles of the program (download, decode, prepare, set) against both servers, which
/// misbehave at random. Main thread.
class SoakRun
{
public:
    explicit SoakRun(const SoakOptions& options);
    ~SoakRun();

    /// Returns the number of broken rules, each of which was printed.
    int run();

private:
    struct Cycle
    {
        int number = 0;
        bool faulty = false;
        bool harmfulDownload = false; ///< the weather can't come in whole
        QString faults;               ///< for people
    };

    void writeSettings();
    bool wait(const std::function<bool()>& condition, int limitMs);
    bool idle() const;
    void settle();
    void disturb(Cycle& cycle);
    void calm();
    void connectSimulator();
    void download(Cycle& cycle);
    void setWeather(Cycle& cycle);
    void checkDownload(const Cycle& cycle);
    void measure(int number);
    void forget(int number);
    int listRequests();
    int loud() const;
    void complain(const Cycle& cycle, const QString& what);
    int draw(int below) { return m_random.next() % below; }

    SoakOptions m_options;
    FastClock m_clock;
    aviation::SeededRandom m_random;
    aviation::SeededRandom m_programRandom;
    wxserver::WeatherServerThread m_weatherServer;
    std::unique_ptr<simulator::SimulatorThread> m_simulator;
    std::unique_ptr<Settings> m_settings;
    FakeMainView m_view;
    SilentDialogs m_dialogs;
    FakeProcessRunner m_processes;
    StopFlag m_stop;
    HostSimulatorClients m_clients;
    std::unique_ptr<SimulatorInterfaces> m_interfaces;
    std::unique_ptr<Controller> m_controller;
    int m_weatherSets = 0; ///< jobs that set weather and ended well
    int m_decodes = 0;     ///< of reports
    int m_failedJobs = 0;  ///< connect jobs with an error in this cycle
    int m_broken = 0;
    int m_warmThreads = -1;
    qint64 m_warmPages = -1; ///< least of the measures of the warm-up
    qint64 m_latePages = -1; ///< least of the last measures
};

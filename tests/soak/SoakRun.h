#pragma once

#include "app/Controller.h"
#include "app/base/Settings.h"
#include "aviation/support/RandomSource.h"
#include "sim/SimulatorInterfaces.h"
#include "standins/simulator/SimulatorClientsInMemory.h"
#include "standins/simulator/SimulatorThread.h"
#include "standins/wxserver/WeatherServerThread.h"
#include "tests/soak/FastClock.h"
#include "tests/support/FakeMainView.h"
#include "tests/support/FakeProcessRunner.h"
#include "tests/support/FakeUserDialogs.h"

#include <QSet>

#include <functional>
#include <memory>

struct SoakOptions
{
    int cycles = 1000;
    std::uint32_t seed = 1;
    bool faults = true; ///< false: nothing misbehaves
    QString folder;     ///< work folder, empty at the start
};

/// Many download intervals of one flight against both servers, which misbehave at random, and
/// simulators that end and come back, by every way in. Nobody presses a button: the weather clock
/// ticks, and after each interval the rules are looked at. Main thread.
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
        bool simulatorFaulty = false;
        QString faults; ///< for people
    };

    void writeSettings();
    void makeProgram();
    static bool wait(const std::function<bool()>& condition, int limitMs);
    bool idle() const;
    void settle();
    void disturb(Cycle& cycle);
    void calm();
    void chooseWay(int number);
    void comeBack(const Cycle& cycle);
    void flyOn(const Cycle& cycle);
    void tick(const Cycle& cycle);
    void endSimulator(Cycle& cycle);
    void startSimulator();
    void hurryTimer(const char* name);
    bool watching() const;

    void checkAges(const Cycle& cycle);
    void checkReports(const Cycle& cycle);
    void checkWindow(const Cycle& cycle);
    void learnStations();

    void measure(int number);
    void forget(int number);
    int loud() const;
    void complain(const Cycle& cycle, const QString& what);
    int draw(int below) { return m_random.next() % below; }
    std::int64_t nowMs() const { return m_clock.MonotonicMs(); }

    SoakOptions m_options;
    FastClock m_clock;
    aviation::SeededRandom m_random;
    aviation::SeededRandom m_programRandom;
    wxserver::WeatherServerThread m_weatherServer;
    simulator::SimulatorClientsInMemory m_clients;
    std::unique_ptr<simulator::SimulatorThread> m_simulator; ///< the bridge before it
    std::unique_ptr<Settings> m_settings;
    FakeMainView m_view;
    FakeUserDialogs m_dialogs;
    FakeProcessRunner m_processes;
    StopFlag m_stop;
    std::unique_ptr<SimulatorInterfaces> m_interfaces;
    std::unique_ptr<Controller> m_controller;

    int m_way = 0;
    QSet<QString> m_stations;     ///< those that the server has reports of
    std::size_t m_heldMetars = 0; ///< of the best list so far
    std::int64_t m_lastSetMs = 0;
    std::int64_t m_lastListMs = 0;
    bool m_wasSimulatorFaulty = false; ///< in the cycle before
    bool m_wasLost = false;            ///< the connection, in this cycle
    int m_weatherSets = 0;             ///< jobs that set weather and ended well
    int m_losses = 0;
    int m_boxes = 0;
    int m_failedJobs = 0; ///< connect jobs with an error in this cycle
    int m_broken = 0;
    int m_warmThreads = -1;
    qint64 m_warmPages = -1; ///< least of the measures of the warm-up
    qint64 m_latePages = -1; ///< least of the last measures
};

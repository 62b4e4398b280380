#include "tests/soak/SoakRun.h"

#include "app/base/LogLevel.h"
#include "sim/ConnectJobs.h"
#include "tests/soak/ProcessSize.h"
#include "tests/support/ControllerTesting.h"
#include "weather/output/WeatherWrapper.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr int kClockFactor = 20;
constexpr int kStallMs = 400;
constexpr int kLimitMs = 60000;
constexpr int kStreamMs = 4;
/// Every so many cycles nothing misbehaves.
constexpr int kCleanEvery = 5;
constexpr int kMeasureEvery = 20;
/// Growth is compared with this many cycles at the start.
constexpr double kWarmUpShare = 0.25;
constexpr double kLateShare = 0.75;
constexpr double kMaxGrowth = 1.05;

/// The lists of the sources differ by a few reports.
constexpr double kLeastShare = 0.99;
/// A cycle is a little longer than the download interval, in steps of a minute.
constexpr int kUpdateSeconds = 300;
constexpr int kDownloadSeconds = 900;
constexpr int kStepSeconds = 60;
constexpr int kSteps = 16;
constexpr std::int64_t kMsPerSecond = 1000;

constexpr std::array kWeatherFaults{
    "status:503", "status:404", "stall", "stall-body", "trickle:40000",
    "truncate",   "damage",     "empty", "short",      "html",
    "error",      "length",     "cut",   "redirect",   "redirect:ftp://127.0.0.1/weather.gz",
    "bomb",       "endless:70", "name",
};

constexpr std::array kSimulatorFaults{
    "silent*2",          "slow:50",           "wrongid*2",  "refuse:no*2", "cut:10*1",
    "cut:10,5*2",        "garbage:30*2",      "close*1",    "drop*1",      "huge*1",
    "result:C000014B*2", "result:C00000B0*1", "udpgarbage", "udpforeign",  "udpsilent",
};

/// Faults of single polls and writes are the same on every way in.
struct Way
{
    const char* name;
    int interfaceType;
    int bridgedInterface = 0;
    int bridgedFsId = 0;
    int weatherMode = 0;
};
constexpr std::array kWays{
    Way{"bridge, X-Plane files", aviation::interfaceid::kBridge, aviation::interfaceid::kBridge, 9,
        1},
    Way{"bridge, X-Plane", aviation::interfaceid::kBridge, aviation::interfaceid::kBridge, 9},
    Way{"SimConnect", aviation::interfaceid::kSimConnect},
    Way{"bridge, texts", aviation::interfaceid::kBridge, 3, 3},
    Way{"FSUIPC", aviation::interfaceid::kFsuipc},
    Way{"bridge, records", aviation::interfaceid::kBridge, aviation::interfaceid::kFsuipc, 3},
    Way{"FSUIPC and SimConnect", aviation::interfaceid::kFsuipcSimConnect},
};

constexpr int kIcaoLength = 4;

bool setsWeather(int job)
{
    return job >= connectjob::kSetWeather && job <= connectjob::kSetXPlaneFiles;
}

QString text(const char* letters)
{
    return QString::fromLatin1(letters);
}

void print(const QString& line)
{
    std::fprintf(stdout, "%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

qint64 least(qint64 a, qint64 b)
{
    return a < 0 ? b : std::min(a, b);
}

} // namespace

SoakRun::SoakRun(const SoakOptions& options)
    : m_options(options)
    , m_clock(kClockFactor)
    , m_random(options.seed)
    , m_programRandom(options.seed)
{
    simulator::SimulatorOptions simulatorOptions;
    simulatorOptions.udpIntervalMs = kStreamMs;
    m_simulator = std::make_unique<simulator::SimulatorThread>(simulatorOptions, m_clients.model());
    m_clients.model().withFlight(
        [](simulator::SimulatedFlight& flight) { flight.jumpTo(simulator::Phase::Cruise); });
    if (!m_weatherServer.start() || m_simulator->startServer() == 0) {
        print(text("the servers don't start"));
        ++m_broken;
    }
    writeSettings();
    makeProgram();
}

SoakRun::~SoakRun()
{
    m_stop.raise();
    m_controller.reset();
}

void SoakRun::writeSettings()
{
    const QString server = m_weatherServer.url();
    QFile file(m_options.folder + text("/cirrilon.ini"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(text("[url]\nwxdata1=%1\nwxdata2=%1\nfileinfo=%1/\n").arg(server).toUtf8());
        file.close();
    }
    m_settings =
        std::make_unique<Settings>(m_options.folder + text("/cirrilon.ini"), m_programRandom);
    m_settings->setWorkFolder(m_options.folder + text("/work/"));
    m_settings->setExportMetarFile(m_options.folder);
    m_settings->setServerPort(m_simulator->port());
    m_settings->setUpdateTime(kUpdateSeconds);
    m_settings->setDownloadUpdateTime(kDownloadSeconds);
    m_settings->setDownloadWxAtStart(true);
    m_settings->setAutoConnect(true);
    m_settings->setCheckNewVersion(false);
    chooseWay(0);
}

void SoakRun::makeProgram()
{
    DownloadLimits limits;
    limits.stallMs = kStallMs;
    limits.retryPausesMs.assign(limits.retryPausesMs.size(), 0);
    const BridgeTimeouts timeouts{2000, 2000, kStallMs, kStallMs, 1};
    m_interfaces = std::make_unique<SimulatorInterfaces>(*m_settings, m_stop, m_clients, timeouts);
    m_controller = std::make_unique<Controller>(
        ControllerParts{*m_settings, m_view, m_dialogs, m_programRandom, hostNetwork(), m_processes,
                        *m_interfaces, limits, 0});
    QObject::connect(&m_controller->connectWorker(), &ConnectWorker::sigJobFinish,
                     m_controller.get(), [this](int job, const QString&, int jobError) {
                         m_failedJobs += jobError != 0 ? 1 : 0;
                         if (setsWeather(job) && jobError == 0) {
                             ++m_weatherSets;
                             m_lastSetMs = nowMs();
                         }
                     });
    QObject::connect(&m_controller->weatherWorker(), &WeatherWorker::sigFinishedDecodeWeatherData,
                     m_controller.get(), [this] {
                         if (m_controller->weatherWorker().decodeOutcome().taken) {
                             m_lastListMs = nowMs();
                         }
                     });
}

bool SoakRun::wait(const std::function<bool()>& condition, int limitMs)
{
    return QTest::qWaitFor(condition, limitMs);
}

bool SoakRun::idle() const
{
    return controllertesting::isIdle(*m_controller);
}

/// Lets all jobs end; for three looks in a row, since a finished one posts the next.
void SoakRun::settle()
{
    for (int calmLooks = 0; calmLooks < 3; ++calmLooks) {
        if (!wait([this] { return idle(); }, kLimitMs)) {
            complain({}, text("jobs don't end"));
            return;
        }
        QCoreApplication::processEvents();
        calmLooks = idle() ? calmLooks : -1;
    }
}

bool SoakRun::watching() const
{
    return controllertesting::timer(*m_controller, "timerWeather").isActive();
}

/// What the program waits for by a timer of its own comes at once.
void SoakRun::hurryTimer(const char* name)
{
    auto* timer = m_controller->findChild<QTimer*>(text(name));
    if (timer != nullptr && timer->isActive() && timer->remainingTime() > 1) {
        timer->start(1);
    }
}

int SoakRun::run()
{
    wait([this] { return m_view.splashClosed; }, kLimitMs);
    controllertesting::timer(*m_controller, "timerOneSecond").stop(); // the steps ask
    if (!wait([this] { return m_controller->weather().metarCount() > 0; }, kLimitMs)) {
        complain({}, text("no reports come at the start"));
    }
    learnStations();
    m_lastSetMs = m_lastListMs = nowMs();
    // The warm-up goes all the ways in, since they don't need the same memory.
    const int wayCycles =
        std::max(1, int(m_options.cycles * kWarmUpShare / 2.0 / double(kWays.size())));
    for (int number = 1; number <= m_options.cycles; ++number) {
        Cycle cycle;
        cycle.number = number;
        m_failedJobs = 0;
        m_wasLost = false;
        if (number % wayCycles == 0) {
            chooseWay(number / wayCycles);
        }
        comeBack(cycle);
        if (number % kCleanEvery != 0 && m_options.faults) {
            disturb(cycle);
        }
        flyOn(cycle);
        calm();
        comeBack(cycle);
        settle();
        checkReports(cycle);
        checkAges(cycle);
        checkWindow(cycle);
        m_wasSimulatorFaulty = cycle.simulatorFaulty;
        forget(number);
        if (number % kMeasureEvery == 0) {
            measure(number);
        }
    }
    print(text("cycles: %1, weather set: %2 times, connections lost: %3, reports held: %4")
              .arg(m_options.cycles)
              .arg(m_weatherSets)
              .arg(m_losses)
              .arg(m_controller->weather().metarCount()));
    if (m_warmPages > 0 && m_latePages > 0) {
        const double growth = double(m_latePages) / double(m_warmPages);
        print(text("memory: %1 pages, then %2").arg(m_warmPages).arg(m_latePages));
        if (growth > kMaxGrowth) {
            complain({}, text("memory grew to %1 of what it was").arg(growth));
        }
    }
    return m_broken;
}

/// Takes effect at the next connect, so the old simulator ends.
void SoakRun::chooseWay(int number)
{
    const Way& way = kWays[std::size_t(number) % kWays.size()];
    print(text("way: ") + text(way.name));
    m_settings->setInterfaceType(way.interfaceType);
    m_settings->setWeatherMode(way.weatherMode);
    if (way.bridgedInterface != 0) {
        m_simulator->invoke([&way](simulator::SimulatorServer& running) {
            running.setSimulator(way.bridgedFsId, way.bridgedInterface);
        });
    }
    if (m_controller && m_controller->IsConnected()) {
        m_controller->OnConnectClicked(); // the pilot changes the simulator
        settle();
        m_controller->OnConnectClicked();
        settle();
    }
}

void SoakRun::disturb(Cycle& cycle)
{
    const int kind = draw(4);
    if (kind != 0) {
        const char* const fault = kWeatherFaults[std::size_t(draw(int(kWeatherFaults.size())))];
        // The redirect leads to a path where nothing is.
        const QString order =
            text(draw(3) != 0 ? "/weather_*=" : "/get*=") + text(fault) + text("x1");
        if (!m_weatherServer.addFault(order)) {
            complain(cycle, text("not a fault: ") + order);
        }
        cycle.faults = order;
    }
    if (kind == 2) {
        const QString fault =
            text(kSimulatorFaults[std::size_t(draw(int(kSimulatorFaults.size())))]);
        cycle.simulatorFaulty = true;
        if (!m_simulator->setFault(fault) || !m_clients.faults().set(fault)) {
            complain(cycle, text("not a fault: ") + fault);
        }
        cycle.faults += QLatin1Char(' ') + fault;
    } else if (kind == 3) {
        endSimulator(cycle);
    }
}

void SoakRun::calm()
{
    m_weatherServer.clearFaults();
    m_simulator->setFault(text("none"));
    m_clients.faults().set(text("none"));
}

/// Some come back at once, some after the program has noticed and tried in vain.
void SoakRun::endSimulator(Cycle& cycle)
{
    cycle.simulatorFaulty = true;
    const bool isLong = draw(2) != 0;
    cycle.faults += text(isLong ? " ends for minutes" : " ends for a moment");
    m_simulator->stopServer();
    m_clients.setRunning(false);
    if (isLong) {
        for (int i = 0; i < 6; ++i) {
            tick(cycle);
        }
        if (m_controller->IsConnected()) {
            complain(cycle, text("the end of the simulator isn't noticed"));
        }
    }
    startSimulator();
}

void SoakRun::startSimulator()
{
    m_clients.setRunning(true);
    if (m_simulator->startServer() == 0) {
        complain({}, text("the bridge doesn't start again"));
    }
}

/// Without a click.
void SoakRun::comeBack(const Cycle& cycle)
{
    const auto isBack = [this] {
        hurryTimer("timerReconnect");
        return m_controller->IsConnected();
    };
    if (!wait(isBack, kLimitMs)) {
        complain(cycle, text("the program doesn't come back to the simulator"));
        m_controller->OnConnectClicked();
    }
    settle();
}

void SoakRun::flyOn(const Cycle& cycle)
{
    for (int i = 0; i < kSteps; ++i) {
        tick(cycle);
    }
}

/// A minute: a poll and a tick of the weather clock, once no download and no set job is under way.
/// They must not be for ever.
void SoakRun::tick(const Cycle& cycle)
{
    m_clock.advance(std::chrono::seconds(kStepSeconds));
    const bool wasConnected = m_controller->IsConnected();
    m_controller->OnTimerOneSecond();
    QTest::qWait(2 * kStreamMs); // or the aircraft comes by the stream
    settle();
    hurryTimer("timerReconnect");
    const auto mayTick = [this] {
        return watching() && idle() && m_view.weatherPage.searchEnabled;
    };
    if (!wait(mayTick, kLimitMs)) {
        complain(cycle, text("the weather clock stands still"));
        controllertesting::timer(*m_controller, "timerWeather").start();
    }
    m_controller->OnTimerWeather();
    settle();
    if (wasConnected && !m_controller->IsConnected()) {
        m_wasLost = true;
        ++m_losses;
    }
}

/// Each fault of a server comes once, so there is always one that answers.
void SoakRun::checkAges(const Cycle& cycle)
{
    const bool wasThere = !cycle.simulatorFaulty && !m_wasSimulatorFaulty;
    if (!wasThere) {
        m_lastSetMs = std::max(m_lastSetMs, nowMs() - kUpdateSeconds * kMsPerSecond);
        m_lastListMs = std::max(m_lastListMs, nowMs() - kDownloadSeconds * kMsPerSecond);
        return;
    }
    const std::int64_t setAge = (nowMs() - m_lastSetMs) / kMsPerSecond;
    if (setAge > 2 * kUpdateSeconds) {
        complain(cycle, text("the simulator's weather is %1 s old").arg(setAge));
    }
    const std::int64_t listAge = (nowMs() - m_lastListMs) / kMsPerSecond;
    if (listAge > 2 * kDownloadSeconds) {
        complain(cycle, text("the reports are %1 s old").arg(listAge));
    }
}

/// Nothing is lost by a bad list, and what the simulator has was reported by somebody.
void SoakRun::checkReports(const Cycle& cycle)
{
    const std::size_t held = m_controller->weather().metarCount();
    if (double(held) < kLeastShare * double(m_heldMetars)) {
        complain(cycle, text("%1 reports of %2 are held").arg(held).arg(m_heldMetars));
    }
    m_heldMetars = std::max(m_heldMetars, held);
    for (const aviation::weather::Metar& metar : m_view.weatherPage.metars) {
        const QString station = QString::fromStdWString(metar.icao());
        if (!m_stations.contains(station)) {
            complain(cycle, text("a report of nobody is shown: ") + station);
        }
    }
    if (m_settings->weatherMode() == 0) {
        return; // composed weather stands at the simulator's own stations
    }
    for (const QString& each : m_simulator->state().weatherTexts) {
        const bool isReport = each.mid(kIcaoLength).startsWith(QLatin1Char(' '));
        if (isReport && !m_stations.contains(each.left(kIcaoLength))) {
            complain(cycle, text("weather of nobody: ") + each.left(60));
        }
    }
}

/// Stations of all lists that the server could have sent; the reports' times change, they don't.
void SoakRun::learnStations()
{
    QFile file(m_settings->tmpFolder() + text("weather.txt"));
    if (!file.open(QIODevice::ReadOnly)) {
        complain({}, text("no list to learn the stations from"));
        return;
    }
    for (const QByteArray& line : file.readAll().split('\n')) {
        m_stations.insert(QString::fromLatin1(line.left(kIcaoLength)));
    }
}

/// What stands at the top of the window is still true.
void SoakRun::checkWindow(const Cycle& cycle)
{
    if (m_failedJobs > 0 && loud() == 0) {
        complain(cycle, text("a job failed without a line in the log"));
    }
    const QStringList boxes = m_dialogs.warnings() + m_dialogs.criticals();
    if (boxes.size() > m_boxes) {
        complain(cycle, text("a box stands in the way: ") + boxes.last());
        m_boxes = boxes.size();
    }
    if (cycle.faults.isEmpty() && !m_view.notices.empty()) {
        complain(cycle, text("a notice stands that is settled: ") + m_view.notices.begin()->second);
    }
}

void SoakRun::measure(int number)
{
    const qint64 pages = processsize::residentPages();
    if (number <= m_options.cycles * kWarmUpShare || m_warmThreads < 0) {
        // What the warm-up reaches at its end counts, not what there was at the start.
        m_warmPages =
            number > m_options.cycles * kWarmUpShare / 2 ? least(m_warmPages, pages) : m_warmPages;
        m_warmThreads = processsize::threads();
        print(text("cycle %1: %2 pages, %3 threads").arg(number).arg(pages).arg(m_warmThreads));
        return;
    }
    wait([this] { return processsize::threads() <= m_warmThreads; }, 2000);
    const int threads = processsize::threads();
    if (threads > m_warmThreads) {
        complain({}, text("%1 threads instead of %2").arg(threads).arg(m_warmThreads));
    }
    if (number >= m_options.cycles * kLateShare) {
        m_latePages = least(m_latePages, pages);
    }
    print(text("cycle %1: %2 pages, %3 threads").arg(number).arg(pages).arg(threads));
}

/// The doubles and the temporary folder keep all they get, which isn't what is looked at.
void SoakRun::forget(int number)
{
    m_view.log.clear();
    m_view.status.clear();
    m_view.aircraftNames.clear();
    m_view.weatherPage.metars.clear();
    m_view.weatherPage.gribs.clear();
    m_view.weatherPage.backgrounds.clear();
    m_view.dataPage.info1.clear();
    m_simulator->clearReceived();
    m_clients.model().withState([](simulator::SimulatorState& state) {
        state.weatherTexts.clear();
        state.weatherRecords.clear();
    });
    m_weatherServer.invoke([](wxserver::WeatherServer& server) { server.clearRequests(); });
    // Downloads never overwrite each other, so a run of this length would fill the disk.
    QDir folder(m_settings->tmpFolder());
    for (const QString& name : folder.entryList(QDir::Files)) {
        if (number % kMeasureEvery == 0 && name.contains(text(".gz"))) {
            folder.remove(name);
        }
    }
}

/// Warnings and errors in the log of this cycle.
int SoakRun::loud() const
{
    return static_cast<int>(
        std::count_if(m_view.log.begin(), m_view.log.end(), [](const FakeMainView::Line& line) {
            return line.level >= loglevel::kWarning;
        }));
}

void SoakRun::complain(const Cycle& cycle, const QString& what)
{
    ++m_broken;
    print(text("cycle %1: %2 [%3]").arg(cycle.number).arg(what, cycle.faults));
    for (const FakeMainView::Line& line : m_view.log) {
        print(text("    %1 %2").arg(line.level).arg(line.text.left(200)));
    }
}

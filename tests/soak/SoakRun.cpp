#include "tests/soak/SoakRun.h"

#include "app/base/LogLevel.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/FsId.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "tests/soak/ProcessSize.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

constexpr int kClockFactor = 20;
constexpr int kStallMs = 400;
constexpr int kLimitMs = 60000;
/// Every so many cycles nothing misbehaves and everything has to work.
constexpr int kCleanEvery = 5;
constexpr int kMeasureEvery = 20;
/// Growth is compared with this many cycles at the start.
constexpr double kWarmUpShare = 0.25;
constexpr double kLateShare = 0.75;
constexpr double kMaxGrowth = 1.05;

struct WeatherFault
{
    const char* text;
    bool harmful; ///< no weather can come of it, so it has to be reported
};

constexpr std::array kWeatherFaults{
    WeatherFault{"status:503", true},
    WeatherFault{"status:404", true},
    WeatherFault{"stall", true},
    WeatherFault{"stall-body", true},
    WeatherFault{"trickle:40000", false},
    WeatherFault{"truncate", true},
    WeatherFault{"damage", true},
    WeatherFault{"empty", true},
    WeatherFault{"short", true},
    WeatherFault{"html", true},
    WeatherFault{"error", true},
    WeatherFault{"length", true},
    WeatherFault{"cut", true},
    WeatherFault{"redirect", true},
    WeatherFault{"redirect:ftp://127.0.0.1/weather.gz", true},
    WeatherFault{"bomb", true},
    WeatherFault{"endless:70", true},
    WeatherFault{"name", false},
};

constexpr std::array kSimulatorFaults{
    "silent*2", "slow:50", "wrongid*2", "refuse:no*2", "cut:10*1",   "cut:10,5*2", "garbage:30*2",
    "close*1",  "drop*1",  "huge*1",    "udpgarbage",  "udpforeign", "udpsilent",
};

QString text(const char* letters)
{
    return QString::fromLatin1(letters);
}

void print(const QString& line)
{
    std::fprintf(stdout, "%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

simulator::SimulatorOptions cruising()
{
    simulator::SimulatorOptions options;
    options.fsId = aviation::fsid::kXPlaneId9;
    options.start = text("cruise");
    return options;
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
    QString error;
    const simulator::SimulatorOptions simulatorOptions = cruising();
    std::optional<simulator::SimulatedFlight> flight =
        simulator::makeFlight(simulatorOptions, &error);
    m_simulator = std::make_unique<simulator::SimulatorThread>(
        simulatorOptions, flight ? std::move(*flight) : simulator::SimulatedFlight());
    if (!m_weatherServer.start() || m_simulator->startServer() == 0) {
        print(text("the servers don't start ") + error);
        ++m_broken;
    }
    writeSettings();
    DownloadLimits limits;
    limits.stallMs = kStallMs;
    limits.retryPausesMs.assign(limits.retryPausesMs.size(), 0);
    m_interfaces = std::make_unique<SimulatorInterfaces>(*m_settings, m_stop, m_clients);
    m_controller = std::make_unique<Controller>(
        ControllerParts{*m_settings, m_view, m_dialogs, m_programRandom, hostNetwork(), m_processes,
                        *m_interfaces, limits, 0});
    QObject::connect(&m_controller->connectWorker(), &ConnectWorker::sigJobFinish,
                     m_controller.get(), [this](int job, const QString&, int jobError) {
                         m_failedJobs += jobError != 0 ? 1 : 0;
                         m_weatherSets +=
                             job == connectjob::kSetXPlaneFiles && jobError == 0 ? 1 : 0;
                     });
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
    m_settings->setInterfaceType(aviation::interfaceid::kBridge);
    m_settings->setServerPort(m_simulator->port());
    m_settings->setWeatherMode(1);
    m_settings->setDownloadWxAtStart(false);
    m_settings->setAutoConnect(false);
    m_settings->setCheckNewVersion(false);
}

bool SoakRun::wait(const std::function<bool()>& condition, int limitMs)
{
    return QTest::qWaitFor(condition, limitMs);
}

bool SoakRun::idle() const
{
    ConnectWorker& connecting = m_controller->connectWorker();
    WeatherWorker& weather = m_controller->weatherWorker();
    return !connecting.isRunning() && connecting.queuedJobs() == 0 && !weather.isRunning()
           && weather.queuedJobs() == 0;
}

/// Lets all jobs end; for three looks in a row, since a finished one posts the next.
void SoakRun::settle()
{
    for (int calmLooks = 0; calmLooks < 3; ++calmLooks) {
        if (!wait([this] { return idle(); }, kLimitMs)) {
            complain({}, text("jobs don't end"));
            return;
        }
        QTest::qWait(5);
        calmLooks = idle() ? calmLooks : -1;
    }
}

int SoakRun::run()
{
    wait([this] { return m_view.splashClosed; }, kLimitMs);
    for (int number = 1; number <= m_options.cycles; ++number) {
        Cycle cycle;
        cycle.number = number;
        m_failedJobs = 0;
        m_view.log.clear();
        connectSimulator();
        if (number % kCleanEvery != 0 && m_options.faults) {
            disturb(cycle);
        }
        download(cycle);
        setWeather(cycle);
        calm();
        settle();
        if (m_failedJobs > 0 && loud() == 0) {
            complain(cycle, text("a job failed without a line in the log"));
        }
        forget(number);
        if (number % kMeasureEvery == 0) {
            measure(number);
        }
    }
    print(text("cycles: %1, weather set: %2 times, downloads decoded: %3, boxes: %4")
              .arg(m_options.cycles)
              .arg(m_weatherSets)
              .arg(m_decodes)
              .arg(m_dialogs.boxes.load()));
    if (m_warmPages > 0 && m_latePages > 0) {
        const double growth = double(m_latePages) / double(m_warmPages);
        print(text("memory: %1 pages, then %2").arg(m_warmPages).arg(m_latePages));
        if (growth > kMaxGrowth) {
            complain({}, text("memory grew to %1 of what it was").arg(growth));
        }
    }
    return m_broken;
}

void SoakRun::disturb(Cycle& cycle)
{
    cycle.faulty = true;
    const int kind = draw(3);
    if (kind != 0) {
        const WeatherFault& fault = kWeatherFaults[std::size_t(draw(int(kWeatherFaults.size())))];
        const bool isList = draw(3) != 0;
        // The redirect leads to a path where nothing is.
        const QString order =
            text(isList ? "/weather_*=" : "/get*=") + text(fault.text) + text("x1");
        if (!m_weatherServer.addFault(order)) {
            complain(cycle, text("not a fault: ") + order);
        }
        cycle.harmfulDownload = isList && fault.harmful;
        cycle.faults = order;
    }
    if (kind != 1) {
        const char* const fault = kSimulatorFaults[std::size_t(draw(int(kSimulatorFaults.size())))];
        m_simulator->setFault(text(fault));
        cycle.faults += QLatin1Char(' ') + text(fault);
    }
}

void SoakRun::calm()
{
    m_weatherServer.clearFaults();
    m_simulator->setFault(text("none"));
}

void SoakRun::connectSimulator()
{
    if (!m_controller->IsConnected()) {
        m_controller->OnConnectClicked();
        settle();
    }
    if (!m_controller->IsConnected()) {
        complain({}, text("no connection although nothing misbehaves"));
    }
}

void SoakRun::download(Cycle& cycle)
{
    m_controller->DownloadWeather(1 + draw(3));
    // A failed download or an empty list starts another one.
    const auto isOver = [this] {
        const int ended = m_view.linesWith(text("finished initialization of weather data"))
                          + m_view.linesWith(text("the new list has too few reports"))
                          + m_view.linesWith(text("Download Network error"))
                          + m_view.linesWith(text("The weather file can't be used"));
        return ended == m_view.linesWith(text("- Download weather from")) && idle();
    };
    do {
        if (!wait(isOver, kLimitMs)) {
            complain(cycle, text("the download doesn't end"));
            return;
        }
        settle();
    } while (!isOver());
    const QString decoded = text("finished initialization of weather data");
    m_decodes += m_view.linesWith(decoded) > 0 ? 1 : 0;
    checkDownload(cycle);
}

/// A fault is reported; without one the report file is there, whole, in both places.
void SoakRun::checkDownload(const Cycle& cycle)
{
    if (cycle.harmfulDownload) {
        // A connection that ends early may be asked again below the program, which then gets all.
        if (loud() == 0 && listRequests() <= m_view.linesWith(text("- Download weather from"))) {
            complain(cycle, text("a fault of the weather server isn't told"));
        }
        return;
    }
    for (const QString& name :
         {m_settings->tmpFolder() + text("weather.txt"), m_options.folder + text("/weather.wx")})
    {
        if (QFileInfo(name).size() < 400000) {
            complain(cycle, text("the weather file is lost: ") + name);
        }
    }
}

void SoakRun::setWeather(Cycle& cycle)
{
    const int before = m_weatherSets;
    m_controller->OnTimerOneSecond();
    settle();
    m_controller->OnClickedSetWX();
    m_controller->OnTimerWeather();
    settle();
    if (!cycle.faulty && m_weatherSets == before) {
        // The clean cycle may have begun while the program still waited for something.
        wait([&] { return m_weatherSets > before; }, kLimitMs);
        if (m_weatherSets == before) {
            complain(cycle, text("no weather was set although nothing misbehaves"));
        }
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
    m_weatherServer.invoke([](wxserver::WeatherServer& server) { server.clearRequests(); });
    // Downloads never overwrite each other, so a run of this length would fill the disk.
    QDir folder(m_settings->tmpFolder());
    for (const QString& name : folder.entryList(QDir::Files)) {
        if (number % kMeasureEvery == 0 && name.contains(text(".gz"))) {
            folder.remove(name);
        }
    }
}

/// Requests for report lists in this cycle.
int SoakRun::listRequests()
{
    const std::vector<wxserver::RequestRecord> requests = m_weatherServer.requests();
    return static_cast<int>(
        std::count_if(requests.begin(), requests.end(), [](const wxserver::RequestRecord& one) {
            return one.path.startsWith(QLatin1String("/weather_"));
        }));
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

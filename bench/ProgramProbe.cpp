// Measures the whole program: time from process start to a usable window, memory with the weather
// of the world loaded, and the longest time for which the event loop stood still while that weather
// was downloaded, decoded and set in a simulator. Starts itself as the program, with a folder, a
// weather server and a simulator of its own; QT_QPA_PLATFORM says where the window goes.
// Usage: ProgramProbe [runs]
// PROBE_LEVEL is the lowest level that the log window shows, 1 unless set. The simulator takes one
// record a station; with PROBE_XPLANE set it is an X-Plane, for which the program waits a second on
// its main thread. With PROBE_LOG set it shows the program's log and each time above 10 ms for
// which it stood still.
#include "app/Controller.h"
#include "app/base/DownloadManager.h"
#include "app/base/HostProcessRunner.h"
#include "app/gui/CirrilonView.h"
#include "aviation/FsId.h"
#include "aviation/support/Clock.h"
#include "aviation/support/RandomSource.h"
#include "bench/HeartBeat.h"
#include "sim/ConnectJobs.h"
#include "sim/SimulatorInterfaces.h"
#include "sim/clients/SimulatorClients.h"
#include "standins/simulator/SimulatorClientsInMemory.h"
#include "standins/simulator/SimulatorThread.h"
#include "standins/wxserver/Compress.h"
#include "standins/wxserver/WeatherServerThread.h"
#include "weather/output/WeatherWrapper.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int kSynops = 20000;
constexpr int kSource = 3; // NOAA
constexpr int kChildLimitMs = 120000;
constexpr int kSettleMs = 2000;
constexpr double kStartGoalMs = 1500;
constexpr double kMemoryGoalMb = 150;
constexpr double kBlockGoalMs = 50;

std::int64_t nowMs()
{
    return aviation::Clock::current().MonotonicMs();
}

void tell(const char* key, double value)
{
    std::printf("%s %s\n", key, QByteArray::number(value, 'f', 1).constData());
    std::fflush(stdout);
}

/// Megabytes of a line of the process's status; -1 where the system has no such file.
double statusMb(const QByteArray& name)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly)) {
        return -1;
    }
    const QByteArrayList lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        if (line.startsWith(name + ':')) {
            return line.mid(name.size() + 1).simplified().split(' ').first().toDouble() / 1024;
        }
    }
    return -1;
}

/// Calls `then` once, when the event loop has nothing left to do.
void whenIdle(QObject& owner, const std::function<void()>& then)
{
    auto* once = new QObject(&owner);
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     once, [once, then] {
                         delete once;
                         then();
                     });
}

void tellResults(CirrilonView& view, HeartBeat& beat)
{
    tell("blocked", static_cast<double>(beat.longestMs()));
    tell("blocked_over_10ms", beat.countOver10Ms());
    tell("metars", static_cast<double>(view.controller().weather().metarCount()));
    tell("resident", statusMb("VmRSS"));
    tell("resident_peak", statusMb("VmHWM"));
    view.close();
    QApplication::quit();
}

bool isSetJob(int jobId)
{
    return jobId >= connectjob::kSetWeather && jobId <= connectjob::kSetXPlaneFiles;
}

/// The program itself, in the current folder.
int runProgram(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Cirrilon"));
    QApplication::setQuitOnLastWindowClosed(false);
    aviation::SeededRandom random(1);
    HostProcessRunner processes;
    HostSimulatorClients clients;
    const auto interfaces = [&clients](const Settings& settings, const StopFlag& stop) {
        return std::make_unique<SimulatorInterfaces>(settings, stop, clients);
    };
    WindowParts parts{random, processes, interfaces, hostNetwork(), {}};
    if (qEnvironmentVariableIsSet("PROBE_LOG")) {
        parts.logMirror = [](const QString& line) {
            qInfo("%s", qUtf8Printable(line));
        };
    }
    CirrilonView view(parts);
    HeartBeat beat;
    Controller& controller = view.controller();
    QObject::connect(&controller, &Controller::sigStarted, &view, [&] {
        whenIdle(view, [&] {
            tell("usable", 0);
            tell("resident_at_start", statusMb("VmRSS"));
            controller.OnConnectClicked(); // waits for the simulator
            beat.start();
            controller.DownloadWeather(kSource);
        });
    });
    bool set = false;
    QObject::connect(&controller, &Controller::sigFinishJobForAircraftEditor, &view,
                     [&](int jobId, const QString&, int error) {
                         if (isSetJob(jobId) && error == 0 && !set) {
                             set = true;
                             QTimer::singleShot(kSettleMs, &view, [&] { tellResults(view, beat); });
                         }
                     });
    QTimer::singleShot(kChildLimitMs, &view, [] { QApplication::exit(1); });
    view.show();
    return QApplication::exec();
}

/// The weather of all stations, with as many SYNOPs as the world has in an hour.
QByteArray worldList(QByteArray text)
{
    const int begin = text.indexOf("[SYNOP]") + 7;
    const QByteArray some = text.mid(begin, text.indexOf("[/SYNOP]") - begin);
    QByteArray many;
    const int each = std::max(1, some.count('='));
    for (int count = 0; count < kSynops; count += each) {
        many += some;
    }
    return wxserver::gzipped(text.replace(begin, some.size(), many));
}

bool serveTheWorld(wxserver::WeatherServerThread& server)
{
    if (!server.start()) {
        return false;
    }
    const QString all = QStringLiteral("/metar_fs2020.txt");
    QByteArray data;
    DownloadContext context;
    context.network = hostNetwork();
    if (DownloadManager(context).getToBytes(server.url() + all, data) != 0) {
        return false;
    }
    const QByteArray world = worldList(data);
    server.invoke([&](wxserver::WeatherServer& running) {
        running.setDocument(QStringLiteral("/weather_noaa.gz"), world);
    });
    return true;
}

/// Where a run of the program finds what it needs.
struct Servers
{
    QString weather;
    quint16 simulator = 0;
};

bool isXPlane()
{
    return qEnvironmentVariableIsSet("PROBE_XPLANE");
}

int levelOfWindow()
{
    return qEnvironmentVariable("PROBE_LEVEL", QStringLiteral("1")).toInt();
}

bool writeSettings(const QString& folder, const Servers& servers)
{
    const QString text =
        QStringLiteral("[main]\nloggerlevel=%4\n[paths]\nworkfolder=\"%1/\"\n"
                       "[weather]\nsource=%6\nwxservertype=1\nmode=%5\n"
                       "[interface]\ninterfacetype=4\nip=127.0.0.1\nport=%3\nmyip=127.0.0.1\n"
                       "[startup]\ndownloadwx=false\nautoconnect=false\n"
                       "[url]\nwxdata1=%2\nwxdata2=%2\nfileinfo=%2/\n")
            .arg(folder, servers.weather)
            .arg(servers.simulator)
            .arg(levelOfWindow())
            .arg(isXPlane() ? 1 : 0)
            .arg(kSource);
    QFile file(folder + QStringLiteral("/cirrilon.ini"));
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0;
}

/// What one run of the program printed, by key; "usable" in milliseconds since the process's start.
QMap<QByteArray, double> runOnce(const Servers& servers)
{
    QMap<QByteArray, double> results;
    const QTemporaryDir folder;
    if (!writeSettings(folder.path(), servers)) {
        return results;
    }
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), folder.path());
    program.setProcessEnvironment(environment);
    program.setWorkingDirectory(folder.path());
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const std::int64_t started = nowMs();
    program.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--program")});
    while (program.waitForReadyRead(kChildLimitMs)) {
        while (program.canReadLine()) {
            const QByteArrayList words = program.readLine().simplified().split(' ');
            results[words.first()] = words.last().toDouble();
            if (words.first() == "usable") {
                results["usable"] = static_cast<double>(nowMs() - started);
            }
        }
    }
    program.waitForFinished(kChildLimitMs);
    return results;
}

/// Best, median and worst of a key over all runs, against its goal.
bool report(const char* name, const char* key, const char* unit, double goal,
            const std::vector<QMap<QByteArray, double>>& runs)
{
    std::vector<double> values;
    values.reserve(runs.size());
    for (const auto& run : runs) {
        values.push_back(run.value(key, -1));
    }
    std::sort(values.begin(), values.end());
    const bool met = values.front() >= 0 && values.back() < goal;
    std::printf("%-44s %7.0f %7.0f %7.0f %-3s", name, values.front(), values[values.size() / 2],
                values.back(), unit);
    if (goal > 0) {
        std::printf(" goal %5.0f: %s", goal, met ? "met" : "MISSED");
    }
    std::printf("\n");
    return met || goal <= 0;
}

int measure(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const int count = argc > 1 ? std::max(1, QByteArray(argv[1]).toInt()) : 5;
    wxserver::WeatherServerThread server;
    if (!serveTheWorld(server)) {
        std::fprintf(stderr, "the weather server didn't start\n");
        return 2;
    }
    std::vector<QMap<QByteArray, double>> runs;
    for (int i = 0; i < count; ++i) {
        simulator::SimulatorOptions options;
        if (!isXPlane()) {
            options.fsId = aviation::fsid::kFsx;
            options.interfaceId = aviation::interfaceid::kFsuipc;
        }
        simulator::SimulatorClientsInMemory clients;
        clients.model().withFlight(
            [](simulator::SimulatedFlight& flight) { flight.jumpTo(simulator::Phase::Cruise); });
        simulator::SimulatorThread bridge(options, clients.model());
        runs.push_back(runOnce({server.url(), bridge.startServer()}));
    }
    std::printf("%-44s %7s %7s %7s\n", "", "best", "median", "worst");
    bool met = report("process start to usable window", "usable", "ms", kStartGoalMs, runs);
    met &= report("resident memory, world's weather loaded", "resident", "MB", kMemoryGoalMb, runs);
    met &= report("event loop blocked at most", "blocked", "ms", kBlockGoalMs, runs);
    report("  times above 10 ms", "blocked_over_10ms", "", 0, runs);
    report("  resident memory before the weather", "resident_at_start", "MB", 0, runs);
    report("  resident memory at its peak", "resident_peak", "MB", 0, runs);
    report("  METARs loaded", "metars", "", 0, runs);
    return met ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const bool program = argc > 1 && QByteArray(argv[1]) == "--program";
    return program ? runProgram(argc, argv) : measure(argc, argv);
}

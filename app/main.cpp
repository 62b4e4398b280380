#include "app/base/HostProcessRunner.h"
#include "app/base/Platform.h"
#include "app/gui/CirrilonView.h"
#include "app/gui/UnattendedRun.h"
#include "aviation/support/Clock.h"
#include "aviation/support/RandomSource.h"
#include "sim/SimulatorInterfaces.h"
#include "sim/clients/SimulatorClients.h"

#include <QApplication>
#include <QDesktopServices>
#include <QUrl>

#include <memory>

namespace {

/// Names the PNG file of a run without a person at the screen.
constexpr const char* kUnattended = "CIRRILON_UNATTENDED";

bool openOnDesktop(const QString& path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

std::uint32_t seedOfNow()
{
    return static_cast<std::uint32_t>(
        aviation::Clock::current().NowUtc().time_since_epoch().count());
}

[[noreturn]] void runProgram(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Cirrilon"));
    // The window may be in the tray while a box is closed; its own close ends the program.
    QApplication::setQuitOnLastWindowClosed(false);

    aviation::SeededRandom random(seedOfNow());
    HostProcessRunner processes(openOnDesktop);
    HostSimulatorClients clients;
    const auto interfaces = [&clients](const Settings& settings, const StopFlag& stop) {
        return std::make_unique<SimulatorInterfaces>(settings, stop, clients);
    };
    WindowParts parts{random, processes, interfaces, hostNetwork(), {}};
    const QString picture = qEnvironmentVariable(kUnattended);
    UnattendedRun unattended(picture);
    if (!picture.isEmpty()) {
        parts.logMirror = [&unattended](const QString& line) {
            unattended.printLog(line);
        };
    }
    int result = 0;
    {
        CirrilonView view(parts);
        if (!picture.isEmpty()) {
            unattended.watch(view, view.controller());
        }
        QObject::connect(&view, &CirrilonView::sigClosed, &application, &QCoreApplication::quit,
                         Qt::QueuedConnection);
        view.show();
        result = QApplication::exec();
    }
    // The window has saved and closed everything by now.
    platform::endProcess(result);
}

} // namespace

int main(int argc, char** argv)
{
    platform::keepLargeBuffersApart();
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    runProgram(argc, argv);
}

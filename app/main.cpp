#include "app/base/HostProcessRunner.h"
#include "app/base/Platform.h"
#include "app/base/ProgramArguments.h"
#include "app/base/SettingsPlace.h"
#include "app/gui/CirrilonView.h"
#include "app/gui/LanguageMenu.h"
#include "app/gui/SingleStart.h"
#include "app/gui/UnattendedRun.h"
#include "aviation/support/Clock.h"
#include "aviation/support/RandomSource.h"
#include "sim/SimulatorInterfaces.h"
#include "sim/clients/SimulatorClients.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QUrl>

#include <cstdio>
#include <memory>
#include <optional>

namespace {

/// Names the PNG file of a run without a person at the screen.
constexpr const char* kUnattended = "CIRRILON_UNATTENDED";

constexpr int kWrongArguments = 2; ///< exit status, as that of the headless program

bool openOnDesktop(const QString& path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

std::uint32_t seedOfNow()
{
    return static_cast<std::uint32_t>(
        aviation::Clock::current().NowUtc().time_since_epoch().count());
}

void print(std::FILE* to, const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), to);
}

QStringList argumentsOf(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments << QString::fromLocal8Bit(argv[i]);
    }
    return arguments;
}

/// What needs no window, and so no display: the exit status if that was all.
std::optional<int> answerAtOnce(const ProgramArguments& arguments)
{
    if (arguments.help) {
        print(stdout, ProgramArguments::helpText());
        return 0;
    }
    if (arguments.version) {
        print(stdout, QStringLiteral("Cirrilon %1\n").arg(Settings::version()));
        return 0;
    }
    return std::nullopt;
}

/// Whether the window is there already; then it has come up.
bool isSecondStart(SingleStart& start)
{
    const SingleStart::Found found = start.begin();
    if (found == SingleStart::Found::NoAnswer) {
        QMenu menu;
        LanguageMenu languages(menu, LanguageMenu::defaultFolder());
        languages.useSystemLocale();
        QMessageBox::warning(nullptr, QStringLiteral("Cirrilon"),
                             QCoreApplication::translate(
                                 "main", "Cirrilon is running already, but its window doesn't "
                                         "answer. End it before you start it anew."));
    }
    return found != SingleStart::Found::Nobody;
}

int runWindow(const WindowParts& parts, UnattendedRun* unattended, SingleStart& start)
{
    int status = 0;
    int result = 0;
    {
        CirrilonView view(parts);
        if (unattended != nullptr) {
            unattended->watch(view, view.controller());
        }
        QObject::connect(&view, &CirrilonView::sigClosed, qApp, &QCoreApplication::quit,
                         Qt::QueuedConnection);
        QObject::connect(&start, &SingleStart::sigRaise, &view, &CirrilonView::comeUp);
        platform::onEndRequest(view, [&view, &status](int usual) {
            status = usual;
            view.closeWithoutBoxes();
        });
        view.show();
        result = QApplication::exec();
    }
    return status != 0 ? status : result;
}

int runProgram(const ProgramArguments& arguments)
{
    // The window may be in the tray while a box is closed; its own close ends the program.
    QApplication::setQuitOnLastWindowClosed(false);
    // The desktop asks the window to save when the session ends. Closing it then would end the
    // program even if the session goes on.
    QGuiApplication::setFallbackSessionManagementEnabled(false);
    const QString pictureName = qEnvironmentVariable(kUnattended);
    const QString picture =
        pictureName.isEmpty() ? QString() : QFileInfo(pictureName).absoluteFilePath();
    const bool hasFolder = settingsplace::enterFolder(arguments.portable);
    SingleStart start(SingleStart::keyOf(QDir::currentPath()));
    if (picture.isEmpty() && isSecondStart(start)) {
        return 0;
    }

    aviation::SeededRandom random(seedOfNow());
    HostProcessRunner processes(openOnDesktop);
    HostSimulatorClients clients;
    const auto interfaces = [&clients](const Settings& settings, const StopFlag& stop) {
        return std::make_unique<SimulatorInterfaces>(settings, stop, clients);
    };
    WindowParts parts{random, processes, interfaces, hostNetwork(), {}};
    parts.settingsFolderFailed = !hasFolder;
    UnattendedRun unattended(picture);
    if (!picture.isEmpty()) {
        parts.logMirror = [&unattended](const QString& line) {
            unattended.printLog(line);
        };
    }
    return runWindow(parts, picture.isEmpty() ? nullptr : &unattended, start);
}

} // namespace

int main(int argc, char** argv)
{
    platform::keepLargeBuffersApart();
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setApplicationName(QStringLiteral("Cirrilon"));
    if (const auto status = answerAtOnce(ProgramArguments::read(argumentsOf(argc, argv)))) {
        return *status;
    }
    const QApplication application(argc, argv);
    // Without those that were for Qt.
    const auto arguments = ProgramArguments::read(QApplication::arguments().mid(1));
    if (!arguments.unknown.isEmpty()) {
        print(stderr, QStringLiteral("cirrilon: unknown argument \"%1\"; see --help\n")
                          .arg(arguments.unknown));
        platform::endProcess(kWrongArguments);
    }
    // The window has saved and closed everything at the end.
    platform::endProcess(runProgram(arguments));
}

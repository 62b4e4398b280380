#include "app/download/UpdateCheck.h"

#include "app/base/IniFile.h"
#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/ProcessRunner.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "app/base/UserDialogs.h"
#include "app/download/InfoFile.h"
#include "app/download/ServerAnswer.h"

#include <QFile>
#include <QTimer>
#include <QUrl>

#include <utility>

namespace {

const char kInfoFile[] = "cirrilon_v3_info.php";

QString boxTitle()
{
    return QStringLiteral("Cirrilon - New version");
}

UpdateOffer offerFor(const InfoFile& info, VersionState state)
{
    UpdateOffer offer;
    offer.beta = state == VersionState::BetaAvailable;
    offer.mandatory = state == VersionState::Unsupported;
    offer.currentVersion = Settings::version();
    offer.newVersion = offer.beta ? info.betaVersion : info.version;
    offer.info = info.info;
    offer.manualUrl = offer.beta ? info.betaPage : info.stablePage;
    offer.automaticUrl = offer.beta ? info.betaInstaller : info.stableInstaller;
    return offer;
}

} // namespace

UpdateCheck::UpdateCheck(Settings& settings, DownloadContext context, ProcessRunner& processes,
                         Reporting reporting, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_context(std::move(context))
    , m_processes(processes)
    , m_reporting(std::move(reporting))
{}

void UpdateCheck::download()
{
    m_reporting.log(QStringLiteral("(Controller) - download info file"), loglevel::kNotification);
    auto* manager = new DownloadManager(m_context, this);
    connect(manager, &DownloadManager::finished, this, &UpdateCheck::takeFile);
    connect(manager, &DownloadManager::sigDownloadError, this, &UpdateCheck::logFailure);
    manager->append(QUrl(m_settings.fileInfoUrl() + QLatin1String(kInfoFile)),
                    QStringLiteral("Cirrilon - Download info file"));
}

void UpdateCheck::logFailure(int error, const QString& reason)
{
    if (!m_context.stop->raised()) {
        m_reporting.log(QStringLiteral("(Controller) - can not download fileinfo, Net-Error: %1")
                            .arg(QString::number(error) + QStringLiteral(", ")
                                 + outsidetext::forLog(reason.trimmed())),
                        loglevel::kError);
    }
}

/// A failed download was logged by logFailure.
void UpdateCheck::takeFile(const QString& fileName, int error)
{
    if (error != 0 || m_context.stop->raised()) {
        return;
    }
    const std::optional<QByteArray> text = readFile(fileName, QString());
    if (!text) {
        return;
    }
    const InfoFile info = InfoFile::parse(*text);
    if (!info.isValid()) {
        logNoVersion();
    } else if (m_settings.checkNewVersion()) {
        judge(info);
    }
    leaveBusyServer(info);
}

/// An info file above the limit is none: its text is empty.
std::optional<QByteArray> UpdateCheck::readFile(const QString& fileName, const QString& advice)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_reporting.log(QStringLiteral("(Controller) - ") + file.errorString().toHtmlEscaped()
                            + advice,
                        loglevel::kError);
        return std::nullopt;
    }
    return file.size() > kMaxIniBytes ? QByteArray() : file.readAll();
}

void UpdateCheck::leaveBusyServer(const InfoFile& info)
{
    if (!info.firstServerBusy() || m_context.stop->raised()) {
        return;
    }
    m_reporting.log(
        QStringLiteral("(Controller) - Server load wxdata1: %1").arg(info.firstServerLoad),
        loglevel::kDebug);
    m_settings.setWeatherServer(m_settings.serverTwo());
    m_reporting.log(QStringLiteral("(Controller) - Switch to Weather server: wxdata2"),
                    loglevel::kNotification);
}

void UpdateCheck::judge(const InfoFile& info)
{
    const VersionState state =
        judgeVersion(Settings::version(), info, m_settings.checkNewVersionBeta());
    switch (state) {
    case VersionState::Unsupported:
        logNewVersion(info);
        warnUnsupported(info);
        offer(info, state);
        closeSoon();
        return;
    case VersionState::Outdated:
        logNewVersion(info);
        offer(info, state);
        return;
    case VersionState::BetaAvailable:
        m_reporting.log(QStringLiteral("(Controller) - new BETA-Version %1 available")
                            .arg(info.betaVersion.toHtmlEscaped()),
                        loglevel::kNotification);
        offer(info, state);
        return;
    case VersionState::Current:
        logUpToDate();
        return;
    }
}

void UpdateCheck::logNewVersion(const InfoFile& info)
{
    m_reporting.log(
        QStringLiteral("(Controller) - new Version %1 available").arg(info.version.toHtmlEscaped()),
        loglevel::kNotification);
}

void UpdateCheck::logUpToDate()
{
    m_reporting.log(QStringLiteral("(Controller) - Cirrilonv3 is up to date"),
                    loglevel::kNotification);
}

void UpdateCheck::logNoVersion()
{
    m_reporting.log(
        QStringLiteral("(Controller) - The info server's answer tells no version, so there is no "
                       "check for a new one. Look at the address url/fileinfo if it stays so."),
        loglevel::kWarning);
}

void UpdateCheck::warnUnsupported(const InfoFile& info)
{
    const QString wanted = QStringLiteral("Please download new version ");
    m_context.dialogs->warning(boxTitle(),
                               wanted + info.minimumVersion
                                   + QStringLiteral("\nThis version is no longer supported.\n"
                                                    "Cirrilon 3.0 is closed."));
    // Boxes show plain text, so the line ends stand for the tags of the rich form.
    m_context.dialogs->farewell(boxTitle(),
                                wanted + info.version
                                    + QStringLiteral(".\nThis version is no longer supported.\n"));
}

void UpdateCheck::offer(const InfoFile& info, VersionState state)
{
    const QString installer = m_context.dialogs->offerUpdate(offerFor(info, state));
    if (!installer.isEmpty() && !m_context.stop->raised()) {
        startInstaller(installer);
    }
}

void UpdateCheck::closeSoon()
{
    constexpr int kDelayMs = 100;
    QTimer::singleShot(kDelayMs, this, &UpdateCheck::sigCloseProgram);
}

void UpdateCheck::startInstaller(const QString& installer)
{
    QString error;
    if (m_processes.startDetached(installer, error)) {
        closeSoon();
        return;
    }
    const QString folder = m_settings.tmpFolder();
    m_reporting.log(QStringLiteral("(Controller) - can not start installer. ProcessError: %1, ")
                            .arg(error.toHtmlEscaped())
                        + installer.toHtmlEscaped(),
                    loglevel::kError);
    m_reporting.log(QStringLiteral("Please start cirrilon_installer.exe manually."),
                    loglevel::kNotification);
    m_reporting.log(QStringLiteral("(Controller) - Open file browser. ") + folder.toHtmlEscaped(),
                    loglevel::kNotification);
    m_processes.open(folder);
}

void UpdateCheck::checkKeptFile()
{
    const std::optional<QByteArray> text = readFile(
        m_settings.tmpFolder() + QLatin1String(kInfoFile),
        QStringLiteral(". The info file is downloaded at the start of the program: check the "
                       "internet connection and start again."));
    if (!text) {
        return;
    }
    const InfoFile info = InfoFile::parse(*text);
    if (!info.isValid()) {
        logNoVersion();
        return;
    }
    const bool betaWanted = false;
    switch (judgeVersion(Settings::version(), info, betaWanted)) {
    case VersionState::Unsupported:
        logNewVersion(info);
        warnUnsupported(info);
        closeSoon();
        return;
    case VersionState::Outdated:
        logNewVersion(info);
        m_context.dialogs->warning(boxTitle(), QStringLiteral("Please download new version ")
                                                   + info.version + QStringLiteral(".\n"));
        return;
    default:
        logUpToDate();
    }
}

#include "app/Controller.h"
#include "app/base/IniFile.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/ProcessRunner.h"
#include "app/base/Settings.h"
#include "app/base/UserDialogs.h"
#include "app/download/InfoFile.h"
#include "app/download/ServerAnswer.h"

#include <QFile>
#include <QUrl>

namespace {

constexpr int kCloseDelayMs = 100;

const char kInfoFile[] = "cirrilon_v3_info.php";

QString BoxTitle()
{
    return QStringLiteral("Cirrilon - New version");
}

/// An info file of more than that is none.
QByteArray ReadInfo(QFile& file)
{
    return file.size() > kMaxIniBytes ? QByteArray() : file.readAll();
}

UpdateOffer OfferFor(const InfoFile& info, VersionState state)
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

QString Controller::infoFileName() const
{
    return m_settings.tmpFolder() + QLatin1String(kInfoFile);
}

void Controller::onDownloadFileInfo()
{
    log(QStringLiteral("(Controller) - download info file"), loglevel::kNotification);
    auto* manager = new DownloadManager(downloadContext(), this);
    connect(manager, &DownloadManager::finished, this, &Controller::OnDownloadFileInfoFinished);
    connect(manager, &DownloadManager::sigDownloadError, this,
            &Controller::OnDownloadFileInfoError);
    manager->append(QUrl(m_settings.fileInfoUrl() + QLatin1String(kInfoFile)),
                    QStringLiteral("Cirrilon - Download info file"));
}

void Controller::OnDownloadFileInfoError(int errNum, QString errStr)
{
    if (!m_stop.raised()) {
        log(QStringLiteral("(Controller) - can not download fileinfo, Net-Error: %1")
                .arg(QString::number(errNum) + QStringLiteral(", ") + serveranswer::forLog(errStr)),
            loglevel::kError);
    }
}

/// A failed download was told by OnDownloadFileInfoError.
void Controller::OnDownloadFileInfoFinished(QString filename, int error)
{
    QFile file(filename);
    if (error != 0 || m_stop.raised()) {
        return;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        log(QStringLiteral("(Controller) - ") + file.errorString().toHtmlEscaped(),
            loglevel::kError);
        return;
    }
    const InfoFile info = InfoFile::Parse(ReadInfo(file));
    if (!info.IsValid()) {
        logNoVersion();
    } else if (m_settings.checkNewVersion()) {
        checkVersion(info);
    }
    if (info.FirstServerBusy() && !m_stop.raised()) {
        log(QStringLiteral("(Controller) - Server load wxdata1: %1").arg(info.firstServerLoad),
            loglevel::kDebug);
        m_settings.setWeatherServer(m_settings.serverTwo());
        log(QStringLiteral("(Controller) - Switch to Weather server: wxdata2"),
            loglevel::kNotification);
    }
}

void Controller::checkVersion(const InfoFile& info)
{
    const VersionState state =
        JudgeVersion(Settings::version(), info, m_settings.checkNewVersionBeta());
    switch (state) {
    case VersionState::Unsupported:
        logNewVersion(info);
        warnUnsupported(info);
        offerUpdate(info, state);
        QTimer::singleShot(kCloseDelayMs, this, [this] { m_view.closeProgram(); });
        return;
    case VersionState::Outdated:
        logNewVersion(info);
        offerUpdate(info, state);
        return;
    case VersionState::BetaAvailable:
        log(QStringLiteral("(Controller) - new BETA-Version %1 available")
                .arg(info.betaVersion.toHtmlEscaped()),
            loglevel::kNotification);
        offerUpdate(info, state);
        return;
    case VersionState::Current:
        log(QStringLiteral("(Controller) - Cirrilonv3 is up to date"), loglevel::kNotification);
        return;
    }
}

void Controller::logNewVersion(const InfoFile& info)
{
    log(QStringLiteral("(Controller) - new Version %1 available").arg(info.version.toHtmlEscaped()),
        loglevel::kNotification);
}

void Controller::logNoVersion()
{
    log(QStringLiteral("(Controller) - The info server's answer tells no version, so there is no "
                       "check for a new one. Look at the address url/fileinfo if it stays so."),
        loglevel::kWarning);
}

void Controller::warnUnsupported(const InfoFile& info)
{
    const QString wanted = QStringLiteral("Please download new version ");
    m_dialogs.warning(BoxTitle(),
                      wanted + info.minimumVersion
                          + QStringLiteral("\nThis version is no longer supported.\nCirrilon 3.0 "
                                           "is closed."));
    // Boxes show plain text, so the line ends stand for the tags of the rich form.
    m_dialogs.farewell(BoxTitle(),
                       wanted + info.version
                           + QStringLiteral(".\nThis version is no longer supported.\n"));
}

void Controller::offerUpdate(const InfoFile& info, VersionState state)
{
    const QString installer = m_dialogs.offerUpdate(OfferFor(info, state));
    if (!installer.isEmpty() && !m_stop.raised()) {
        startInstaller(installer);
    }
}

void Controller::startInstaller(const QString& installer)
{
    QString error;
    if (m_processes.startDetached(installer, error)) {
        QTimer::singleShot(kCloseDelayMs, this, [this] { m_view.closeProgram(); });
        return;
    }
    const QString folder = m_settings.tmpFolder();
    log(QStringLiteral("(Controller) - can not start installer. ProcessError: %1, ")
                .arg(error.toHtmlEscaped())
            + installer.toHtmlEscaped(),
        loglevel::kError);
    log(QStringLiteral("Please start cirrilon_installer.exe manually."), loglevel::kNotification);
    log(QStringLiteral("(Controller) - Open file browser. ") + folder.toHtmlEscaped(),
        loglevel::kNotification);
    m_processes.open(folder);
}

void Controller::onCheckNewVersion()
{
    QFile file(infoFileName());
    if (!file.open(QIODevice::ReadOnly)) {
        log(QStringLiteral("(Controller) - ") + file.errorString().toHtmlEscaped()
                + QStringLiteral(". The info file is downloaded at the start of the program: check "
                                 "the internet connection and start again."),
            loglevel::kError);
        return;
    }
    const InfoFile info = InfoFile::Parse(ReadInfo(file));
    if (!info.IsValid()) {
        logNoVersion();
        return;
    }
    const bool betaWanted = false;
    switch (JudgeVersion(Settings::version(), info, betaWanted)) {
    case VersionState::Unsupported:
        logNewVersion(info);
        warnUnsupported(info);
        QTimer::singleShot(kCloseDelayMs, this, [this] { m_view.closeProgram(); });
        return;
    case VersionState::Outdated:
        logNewVersion(info);
        m_dialogs.warning(BoxTitle(), QStringLiteral("Please download new version ") + info.version
                                          + QStringLiteral(".\n"));
        return;
    default:
        log(QStringLiteral("(Controller) - Cirrilonv3 is up to date"), loglevel::kNotification);
    }
}

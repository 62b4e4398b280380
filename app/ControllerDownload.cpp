#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/base/UrlTemplate.h"
#include "app/base/UserDialogs.h"
#include "app/download/GlobalWindDownload.h"
#include "app/download/GribDownload.h"
#include "app/download/ServerAnswer.h"
#include "app/download/UpdateCheck.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/FsId.h"
#include "sim/ConnectWorker.h"

#include <QUrl>

namespace {

// Values of weather/source.
constexpr int kVatsim = 1;
constexpr int kIvao = 2;
constexpr int kNoaa = 3;
constexpr int kServerExternal = 3; ///< of weather/wxservertype
constexpr int kMostNetworkErrors = 6;

const char kErrorTitle[] = "Cirrilon - Download error";

} // namespace

DownloadContext Controller::downloadContext()
{
    return {&m_settings, m_network, &m_dialogs, &m_stop, m_limits};
}

/// The manager may live on the weather worker's thread.
void Controller::showDownloadProgress(DownloadManager& manager)
{
    connect(&manager, &DownloadManager::sigDownloadProgress, &manager,
            [this](qlonglong value, qlonglong total, const QString& text) {
                Q_EMIT sigProgress(value, total, text);
            });
}

void Controller::OnDownloadWeather()
{
    DownloadWeather(m_settings.weatherSource());
}

void Controller::DownloadWeather(int source)
{
    if (m_stop.raised()) {
        return;
    }
    if (weatherDownloading) {
        log(QStringLiteral("(Controller Weather) - weather is being downloaded already"),
            loglevel::kDebug);
        return;
    }
    m_view.pageWeather().OnEnableGetMetarButton(false);
    timerWeather.stop();
    weatherDownloading = true;
    m_view.setSetWxAction(true, tr("Set WX"), QString());
    m_view.setSystrayMessage(tr("Download weather"));
    log(QStringLiteral("(Controller Weather) - timer weather stopped"), loglevel::kDebug);
    if (m_settings.wxServerType() == kServerExternal) {
        DownloadExternalWeather();
        return;
    }
    const QUrl url(weatherAddress(source));
    m_view.pageWeather().setWeatherTime(QString());
    auto* manager = new DownloadManager(downloadContext(), this);
    connect(manager, &DownloadManager::finished, this, &Controller::OnDownloadWeatherFinished);
    connect(manager, &DownloadManager::sigDownloadError, this, &Controller::OnDownloadError);
    showDownloadProgress(*manager);
    manager->append(url, QStringLiteral("Cirrilon - Downloading Weather"));
    m_weatherWorker->setHistoryMode(false);
}

QString Controller::weatherAddress(int source)
{
    const QString from = QStringLiteral("(Controller Weather) - Download weather from ");
    m_plainWeatherList = m_connectWorker->fsVersion() == aviation::fsid::kFs2020;
    if (m_plainWeatherList) {
        log(from + QStringLiteral("MSFS2020"), loglevel::kNotification);
        return m_settings.fs2020Url(true);
    }
    if (source == kVatsim) {
        log(from + QStringLiteral("VATSIM"), loglevel::kNotification);
        return m_settings.vatsimUrl(true);
    }
    if (source == kIvao) {
        log(from + QStringLiteral("IVAO"), loglevel::kNotification);
        return m_settings.ivaoUrl(true);
    }
    if (source != kNoaa) {
        log(QStringLiteral("(Controller Weather) - There is no weather source %1, NOAA is used. "
                           "Choose a source in the settings.")
                .arg(source),
            loglevel::kWarning);
    }
    log(from + QStringLiteral("NOAA"), loglevel::kNotification);
    return m_settings.noaaUrl(true);
}

/// The event loop runs on while the texts are fetched; weatherDownloading keeps others out.
void Controller::DownloadExternalWeather()
{
    constexpr int kShortestMetarUrl = 6;
    constexpr int kShortestSynopUrl = 4;
    QString text;
    const auto metars =
        fetchExternal(QStringLiteral("Metar"), m_settings.urlExternMetar(), kShortestMetarUrl);
    if (metars) {
        text = QStringLiteral("[METAR]") + *metars + QStringLiteral("[/METAR]\n");
    }
    const auto synops =
        fetchExternal(QStringLiteral("Synop"), m_settings.urlExternSynop(), kShortestSynopUrl);
    if (synops) {
        // Deliberately instead of the METARs, not behind them.
        text = QStringLiteral("[SYNOP]") + *synops + QStringLiteral("[/SYNOP]\n");
    }
    weatherDownloading = false;
    decodeWeatherText(text);
}

std::optional<QString> Controller::fetchExternal(const QString& kind, const QString& urlTemplate,
                                                 int shortest)
{
    const QString title = QStringLiteral("(Controller) - Download %1").arg(kind);
    const QString url = expandUrlTemplate(urlTemplate);
    if (url.size() < shortest) {
        log(title + QStringLiteral(" - Url-Error") + url.toHtmlEscaped(), loglevel::kError);
        return std::nullopt;
    }
    log(title + QStringLiteral(" - ") + url.toHtmlEscaped(), loglevel::kDebug);
    DownloadManager manager(downloadContext());
    showDownloadProgress(manager);
    QString text;
    const int error = manager.getToString(url, text);
    const QString reason = error != 0
                               ? manager.lastErrorText()
                               : serveranswer::fault(text.left(serveranswer::kHeadSize).toUtf8());
    if (!reason.isEmpty() && !m_stop.raised()) {
        log(title + QStringLiteral(" Error: ") + serveranswer::forLog(reason) + QLatin1Char(' ')
                + serveranswer::advice(error),
            loglevel::kError);
        text.clear();
    }
    return text;
}

void Controller::OnDownloadError(int errNum, QString errStr)
{
    const QString prefix = QStringLiteral("(Downloader) - ");
    // A folder that can't be made has a number that means something else in the network.
    const bool isFolder = errStr.startsWith(prefix);
    if (!m_stop.raised()) {
        log((isFolder ? QString() : prefix) + serveranswer::forLog(errStr)
                + QStringLiteral(" (error %1). ").arg(errNum)
                + serveranswer::advice(isFolder ? serveranswer::kFileError : errNum),
            loglevel::kError);
    }
}

void Controller::OnDownloadWeatherFinished(QString filename, int error)
{
    weatherDownloading = false;
    if (m_stop.raised()) {
        return;
    }
    timerWeather.stop();
    log(QStringLiteral("(Downloader) - filename: ") + filename.toHtmlEscaped(), loglevel::kDebug);
    log(QStringLiteral("(Downloader) - Weather download finished"), loglevel::kNotification);
    Q_EMIT sigProgress(0, 0, tr("Weather downloaded"));
    if (error != 0) {
        weatherDownloadFailed(filename, error);
    } else {
        readWeatherFile(filename);
    }
}

void Controller::weatherDownloadFailed(const QString& filename, int error)
{
    log(QStringLiteral("Cirrilon - Download Network error: %1 \n%2")
            .arg(error)
            .arg(filename.toHtmlEscaped()),
        loglevel::kError);
    m_dialogs.warning(QLatin1String(kErrorTitle),
                      QStringLiteral("Network error: %1 \n%2").arg(error).arg(filename));
    if (downloadRetries < kMostNetworkErrors) {
        SwitchWeatherServer();
        DownloadWeather(m_settings.weatherSource());
        ++downloadRetries;
        return;
    }
    m_dialogs.warning(QLatin1String(kErrorTitle),
                      QStringLiteral("Automatic weather download stopped.\nPlease contact the "
                                     "developers of Cirrilon."));
    timerWeather.stop();
    Q_EMIT sigProgress(0, 0, QString());
    log(QStringLiteral("(Controller) - Automatic weather download stopped. Check the internet "
                       "connection, then choose \"Download WX\"."),
        loglevel::kError);
}

void Controller::readWeatherFile(const QString& downloaded)
{
    const QString exportFolder = m_settings.exportMetarFile();
    WeatherFileRequest request;
    request.downloaded = downloaded;
    if (!m_plainWeatherList) {
        request.inflated = m_settings.tmpFolder() + QStringLiteral("weather.txt");
    }
    request.copy = (exportFolder.isEmpty() ? QStringLiteral(".") : exportFolder)
                   + QStringLiteral("/weather.wx");
    connect(&m_weatherFileReader, &QThread::finished, this, &Controller::weatherFileRead,
            Qt::UniqueConnection);
    m_weatherFileReader.read(request);
}

void Controller::weatherFileRead()
{
    const std::optional<WeatherFileResult> result = m_weatherFileReader.takeResult();
    if (m_stop.raised() || !result) {
        return;
    }
    const WeatherFileResult& read = *result;
    if (!read.fault.isEmpty()) {
        log(QStringLiteral("(Controller Weather) - The weather file can't be used: %1. If other "
                           "sources fail as well, choose another weather server in the settings.")
                .arg(serveranswer::forLog(read.fault)),
            loglevel::kError);
    }
    if (!read.opened) {
        log(m_plainWeatherList
                ? QStringLiteral("(WeatherManager) Can not open file: ") + read.file.toHtmlEscaped()
                : QStringLiteral("(WeatherManager) Could not open weather.txt"),
            loglevel::kError);
        return;
    }
    log(QStringLiteral("(WeatherManager) Initialize weather data"), loglevel::kNotification);
    decodeWeatherText(read.text);
}

void Controller::decodeWeatherText(const QString& text)
{
    m_weatherWorker->setWeatherText(text);
    postWeatherJob(Job(weatherjob::kDecodeWeather, QStringLiteral("decode weather data")));
}

void Controller::SwitchWeatherServer()
{
    const QString first = m_settings.serverOne();
    const bool toSecond = m_settings.weatherServer() == first;
    m_settings.setWeatherServer(toSecond ? m_settings.serverTwo() : first);
    log(QStringLiteral("(Controller) - Switch to Weather server: ")
            + (toSecond ? QStringLiteral("wxdata2") : QStringLiteral("wxdata1")),
        loglevel::kNotification);
}

int Controller::DownloadGrib(const aviation::Position& position, bool single)
{
    return m_gribDownload->DownloadGrib(position, single);
}

void Controller::DownloadXPlaneGlobalWind()
{
    m_globalWindDownload->download();
}

void Controller::onDownloadFileInfo()
{
    m_updateCheck->download();
}

void Controller::OnDownloadFileInfoFinished(QString filename, int error)
{
    m_updateCheck->takeFile(filename, error);
}

void Controller::OnDownloadFileInfoError(int errNum, QString errStr)
{
    m_updateCheck->logFailure(errNum, errStr);
}

void Controller::onCheckNewVersion()
{
    m_updateCheck->checkKeptFile();
}

#include "app/download/WeatherDownload.h"

#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "app/base/SettingsValues.h"
#include "app/base/StopFlag.h"
#include "app/base/UserDialogs.h"
#include "app/cycle/CycleRules.h"
#include "app/download/DownloadReport.h"
#include "app/download/KeptWeather.h"
#include "app/download/ServerAnswer.h"

#include <QFileInfo>
#include <QUrl>

#include <utility>

WeatherDownload::WeatherDownload(Settings& settings, MainView& view, DownloadContext context,
                                 std::function<aviation::FsId()> simulator, Reporting reporting,
                                 QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_view(view)
    , m_context(std::move(context))
    , m_simulator(std::move(simulator))
    , m_reporting(std::move(reporting))
    , m_external(m_settings, m_context, m_reporting)
    , m_reader(*m_context.stop)
    , m_currentSource(settings.weatherSource())
{
    connect(&m_reader, &QThread::finished, this, &WeatherDownload::takeRead);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] { begin(m_settings.weatherSource()); });
}

void WeatherDownload::useSourceOfSettings()
{
    m_currentSource = m_settings.weatherSource();
}

void WeatherDownload::download(int source, Asked asked)
{
    if (m_context.stop->raised()) {
        return;
    }
    m_asked = m_asked || asked == Asked::ByPilot;
    if (m_underWay) {
        m_reporting.log(
            QStringLiteral("(Controller Weather) - weather is being downloaded already"),
            loglevel::kDebug);
    } else if (asked == Asked::ByPilot || !m_pause.isActive()) {
        m_poorLists = 0;
        m_currentSource = source;
        begin(source);
    }
}

void WeatherDownload::begin(int source)
{
    m_pause.stop();
    if (m_context.stop->raised() || m_underWay) {
        return;
    }
    m_underWay = true;
    m_view.clearNotice(Notice::Download);
    Q_EMIT sigBegun();
    if (m_settings.wxServerType() == wxservertype::kExternal) {
        fetchExternal();
    } else {
        fetchList(source);
    }
}

void WeatherDownload::fetchList(int source)
{
    const QUrl url(addressOf(source));
    auto* manager = new DownloadManager(m_context, this);
    connect(manager, &DownloadManager::finished, this, &WeatherDownload::takeFile);
    connect(manager, &DownloadManager::sigDownloadError, this, &WeatherDownload::logFailure);
    downloadreport::showProgress(*manager, m_reporting.progress);
    manager->append(url, QStringLiteral("Cirrilon - Downloading Weather"));
    Q_EMIT sigPresentRequested();
}

void WeatherDownload::fetchExternal()
{
    const WeatherList list = m_external.fetch();
    if (m_context.stop->raised()) {
        return;
    }
    if (list.text.isEmpty()) {
        m_reporting.log(QStringLiteral("(Controller) - There is no external weather. Check its "
                                       "addresses in the settings."),
                        loglevel::kError);
        fail(tr("The external weather couldn't be fetched. Check its addresses in the settings."));
    } else {
        Q_EMIT sigList(list);
    }
}

void WeatherDownload::logFailure(int error, const QString& reason)
{
    const QString prefix = QStringLiteral("(Downloader) - ");
    // A folder that can't be made has a number that means something else in the network.
    const bool isFolder = reason.startsWith(prefix);
    if (!m_context.stop->raised()) {
        m_reporting.log((isFolder ? QString() : prefix) + outsidetext::forLog(reason.trimmed())
                            + QStringLiteral(" (error %1). ").arg(error)
                            + serveranswer::advice(isFolder ? serveranswer::kFileError : error),
                        loglevel::kError);
    }
}

void WeatherDownload::takeFile(const QString& fileName, int error)
{
    if (m_context.stop->raised()) {
        return;
    }
    Q_EMIT sigEnded();
    m_reporting.log(QStringLiteral("(Downloader) - filename: ") + fileName.toHtmlEscaped(),
                    loglevel::kDebug);
    m_reporting.log(QStringLiteral("(Downloader) - Weather download finished"),
                    loglevel::kNotification);
    if (error != 0) {
        failNetwork(fileName, error);
    } else {
        m_reporting.progress(0, 0, tr("Weather downloaded"));
        read(fileName);
    }
}

void WeatherDownload::failNetwork(const QString& fileName, int error)
{
    m_reporting.log(QStringLiteral("Cirrilon - Download Network error: %1 \n%2")
                        .arg(error)
                        .arg(fileName.toHtmlEscaped()),
                    loglevel::kError);
    tryAgain(tr("Network error: %1 \n%2").arg(error).arg(fileName));
}

/// From the other server, after a pause that grows from try to try. The last failure says that no
/// more follow, until the next download is due: that one asks the other server as well.
void WeatherDownload::tryAgain(const QString& failure)
{
    const std::vector<int>& pauses = m_context.limits.retryPausesMs;
    switchServer();
    if (m_retries < static_cast<int>(pauses.size())) {
        m_pause.start(pauses[static_cast<std::size_t>(m_retries)]);
        ++m_retries;
        fail(failure);
        return;
    }
    m_reporting.log(
        QStringLiteral("(Controller) - Automatic weather download stopped. Check the internet "
                       "connection, then choose \"Download WX\"."),
        loglevel::kError);
    fail(failure + QLatin1Char('\n')
         + tr("Automatic weather download stopped.\nPlease contact the developers of Cirrilon."));
}

/// The pilot who asked reads it in a box, once; what is tried later is tried by itself.
void WeatherDownload::fail(const QString& text)
{
    m_underWay = false;
    m_reporting.progress(0, 0, QString());
    m_failure = text;
    showNotice();
    if (std::exchange(m_asked, false)) {
        m_context.dialogs->warning(tr("Cirrilon - Download error"), text);
    }
    Q_EMIT sigFailed();
}

void WeatherDownload::showNotice()
{
    QStringList lines{m_failure, m_keptText};
    lines.removeAll(QString());
    if (lines.isEmpty()) {
        m_view.clearNotice(Notice::Download);
    } else {
        m_view.showNotice(Notice::Download, lines.join(QLatin1Char('\n')));
    }
}

void WeatherDownload::read(const QString& downloaded)
{
    WeatherFileRequest request;
    request.downloaded = downloaded;
    if (!m_plainList) {
        request.inflated = m_settings.tmpFolder() + QStringLiteral("weather.txt");
    }
    m_reader.read(request);
}

void WeatherDownload::exportList()
{
    const QString folder = m_settings.exportMetarFile();
    m_reader.copy(m_listFile, (folder.isEmpty() ? QStringLiteral(".") : folder)
                                  + QStringLiteral("/weather.wx"));
}

void WeatherDownload::readKept()
{
    const QString file = keptweather::fileName(m_settings.workFolder());
    if (!m_underWay && !std::exchange(m_keptRead, true) && QFileInfo::exists(file)) {
        WeatherFileRequest request;
        request.downloaded = file;
        request.origin = WeatherList::Origin::Kept;
        m_reader.read(request);
    }
}

void WeatherDownload::takeRead()
{
    const std::optional<WeatherFileResult> result = m_reader.takeResult();
    if (m_context.stop->raised() || !result) {
        return;
    }
    if (result->list.origin == WeatherList::Origin::Kept) {
        takeKept(*result);
        return;
    }
    if (!result->fault.isEmpty()) {
        m_reporting.log(
            QStringLiteral("(Controller Weather) - The weather file can't be used: %1. If other "
                           "sources fail as well, choose another weather server in the settings.")
                .arg(outsidetext::forLog(result->fault.trimmed())),
            loglevel::kError);
    }
    if (!result->unwritten.isEmpty()) {
        m_reporting.log(QStringLiteral("(Controller Weather) - %1. The reports are used all the "
                                       "same. Make room on the disk.")
                            .arg(outsidetext::forLog(result->unwritten.trimmed())),
                        loglevel::kWarning);
    }
    if (!result->opened) {
        m_reporting.log(m_plainList ? QStringLiteral("(WeatherManager) Can not open file: ")
                                          + result->file.toHtmlEscaped()
                                    : QStringLiteral("(WeatherManager) Could not open weather.txt"),
                        loglevel::kError);
    }
    if (!result->opened || result->damaged) {
        tryAgain(tr("The weather list is damaged and can't be used."));
        return;
    }
    m_reporting.log(QStringLiteral("(WeatherManager) Initialize weather data"),
                    loglevel::kNotification);
    m_listFile = result->file;
    Q_EMIT sigList(result->list);
}

void WeatherDownload::takeKept(const WeatherFileResult& result)
{
    if (result.opened && !result.damaged && keptweather::fetchedMs(result.list.text)) {
        Q_EMIT sigList(result.list);
    } else {
        m_reporting.log(QStringLiteral("(Controller Weather) - The weather that was kept from the "
                                       "last run can't be used: ")
                            + result.file.toHtmlEscaped(),
                        loglevel::kWarning);
    }
}

void WeatherDownload::takeOutcome(const DecodeOutcome& outcome)
{
    using Origin = WeatherList::Origin;
    const Origin origin = outcome.list.origin;
    if (origin == Origin::Kept || origin == Origin::File) {
        const auto fetched = keptweather::fetchedMs(outcome.list.text);
        if (outcome.good && fetched) {
            sayKept(*fetched);
        }
        return;
    }
    // A kept list that is decoded meanwhile may have had this outcome taken already.
    if (!std::exchange(m_underWay, false)) {
        return;
    }
    if (outcome.taken) {
        m_keptText.clear();
    }
    if (outcome.good && origin == Origin::Live) {
        exportList();
    }
    if (outcome.good) {
        m_retries = 0;
        m_asked = false;
        m_failure.clear();
        showNotice();
    } else if (origin == Origin::Live) {
        tryAnotherSource();
    } else {
        fail(tr("There are no reports in the external weather."));
    }
}

void WeatherDownload::takeDecodeFailure()
{
    if (!m_underWay) {
        Q_EMIT sigFailed();
    } else if (m_settings.wxServerType() == wxservertype::kExternal) {
        fail(tr("The weather list is damaged and can't be used."));
    } else {
        tryAgain(tr("The weather list is damaged and can't be used."));
    }
}

void WeatherDownload::sayKept(std::int64_t fetchedMs)
{
    const keptweather::Age age = keptweather::ageOf(fetchedMs);
    m_keptText = tr("Weather of %1Z, %2 old, kept from the last run").arg(age.time, age.age);
    m_reporting.log(QStringLiteral("(Controller Weather) - Weather of %1Z, %2 old, kept from the "
                                   "last run")
                        .arg(age.time, age.age),
                    loglevel::kNotification);
    showNotice();
}

void WeatherDownload::tryAnotherSource()
{
    constexpr int kMostRetries = 4;
    ++m_poorLists;
    m_reporting.log(
        QStringLiteral("(WeatherManager) - no metars founded, switch to another source"),
        loglevel::kError);
    m_currentSource = cycle::nextSource(m_currentSource);
    if (m_poorLists >= kMostRetries) {
        m_reporting.log(QStringLiteral("(WeatherManager) - no metars founded. Download stopped"),
                        loglevel::kError);
        fail(tr("No source has enough METARs. Download stopped."));
    } else {
        begin(m_currentSource);
    }
}

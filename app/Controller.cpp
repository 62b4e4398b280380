#include "app/Controller.h"

#include "app/PlaceTables.h"
#include "app/WorkingFolders.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/cycle/DirectWind.h"
#include "app/download/GlobalWindDownload.h"
#include "app/download/GribDownload.h"
#include "app/download/UpdateCheck.h"
#include "app/download/WeatherDownload.h"
#include "app/jobs/ConnectJobLog.h"
#include "app/jobs/PreparedWeather.h"
#include "app/jobs/ReportDisplay.h"
#include "app/jobs/SimulatorLink.h"
#include "app/jobs/UpperAirWait.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/Clock.h"
#include "aviation/support/RandomSource.h"
#include "nav/records/NavdataBase.h"
#include "sim/AircraftDatagrams.h"
#include "sim/ConnectWorker.h"
#include "weather/output/WeatherWrapper.h"

#include <QDateTime>

#include <utility>

using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Synop;

namespace {

void registerSignalTypes()
{
    registerJobType();
    qRegisterMetaType<qlonglong>("qlonglong");
}

/// A source of its own for direct wind control, since the store draws from the common one on the
/// weather worker's thread.
std::unique_ptr<aviation::RandomSource> ownSource(aviation::RandomSource& common)
{
    return std::make_unique<aviation::SeededRandom>(static_cast<std::uint32_t>(common.next()));
}

} // namespace

Controller::Controller(const ControllerParts& parts, QObject* parent)
    : QObject(parent)
    , m_settings(parts.settings)
    , m_view(parts.view)
    , m_dialogs(parts.dialogs)
    , m_reporting(makeReporting())
    , m_posts(makePosts())
    , m_directWind(
          std::make_unique<DirectWind>(m_settings, m_view, m_posts, ownSource(parts.random)))
{
    registerSignalTypes();
    connect(this, &Controller::sigDebugString, this, &Controller::OnDebugString,
            Qt::QueuedConnection);
    connect(this, &Controller::sigProgress, this, &Controller::OnProgressBar, Qt::QueuedConnection);
    const DownloadContext context{&m_settings, parts.network, &m_dialogs, &m_stop, parts.limits};
    makeWorkers(parts, context);
    makeDownloads(parts, context);
    makeStream(parts.link.stream);
    makeJobParts(parts);
    makeTimers();
    if (workingfolders::create(m_settings, m_reporting.log)) {
        workingfolders::sweepTemporary(m_settings, m_reporting.log);
    }
}

Controller::~Controller()
{
    m_stop.raise();
    m_timerOneSecond.stop();
    m_timerWeather.stop();
    m_link->endReconnecting();
    // Both are asked to stop before either is waited for.
    m_weatherWorker->stop();
    m_connectWorker.reset();
    m_weatherWorker.reset();
}

/// Both only emit a signal that is delivered by the event loop, so every thread may call them.
Reporting Controller::makeReporting()
{
    return {[this](const QString& text, int level) { Q_EMIT sigDebugString(text, level); },
            [this](qlonglong value, qlonglong total, const QString& text) {
                Q_EMIT sigProgress(value, total, text);
            }};
}

JobPosts Controller::makePosts()
{
    return {[this](const Job& job) {
                if (!m_stop.raised() && m_connectWorker->AddJob(job)) {
                    m_connectWorker->start();
                }
            },
            [this](const Job& job) {
                if (!m_stop.raised()) {
                    m_preparedWeather->jobPosted(job.id);
                    m_weatherWorker->addJob(job);
                    m_weatherWorker->start();
                }
            }};
}

void Controller::makeWorkers(const ControllerParts& parts, const DownloadContext& context)
{
    m_connectWorker =
        std::make_unique<ConnectWorker>(parts.settings, parts.interfaces, m_stop, nullptr);
    connect(m_connectWorker.get(), &ConnectWorker::sigJobFinish, this,
            &Controller::OnJobConnectWorkerFinished, Qt::QueuedConnection);
    connect(m_connectWorker.get(), &ConnectWorker::sigOutputDebugString, this,
            &Controller::OnDebugString, Qt::QueuedConnection);
    connect(m_connectWorker.get(), &ConnectWorker::sigProgressBar, this, &Controller::OnProgressBar,
            Qt::QueuedConnection);

    // The lines of the weather side are plain text with reports in it.
    const auto plainLine = [this](const QString& text, int level) {
        OnDebugString(text.toHtmlEscaped(), level);
    };
    m_weather = std::make_unique<WeatherWrapper>(parts.settings, parts.random);
    connect(m_weather.get(), &WeatherWrapper::sigDebugString, this, plainLine,
            Qt::QueuedConnection);
    connect(m_weather.get(), &WeatherWrapper::sigProgress, this, &Controller::OnProgressBar,
            Qt::QueuedConnection);

    DownloadContext boxless = context; // upper air is fetched by itself: the log says its faults
    boxless.dialogs = nullptr;
    m_gribDownload =
        std::make_unique<GribDownload>(boxless, m_stop, parts.processes, *m_weather, m_reporting);
    m_weatherWorker = std::make_unique<WeatherWorker>(*m_weather, parts.settings,
                                                      m_gribDownload.get(), parts.upperAirRoundMs);
    connect(m_weatherWorker.get(), &WeatherWorker::sigFinishedDecodeWeatherData, this,
            &Controller::OnJobWeatherWorkerFinishedDecodeWeatherdata, Qt::QueuedConnection);
    connect(m_weatherWorker.get(), &WeatherWorker::sigFinishedJob, this,
            &Controller::OnJobWeatherWorkerFinished, Qt::QueuedConnection);
    connect(m_weatherWorker.get(), &WeatherWorker::sigDebugString, this, plainLine,
            Qt::QueuedConnection);
    connect(m_weatherWorker.get(), &WeatherWorker::sigProgress, this, &Controller::OnProgressBar,
            Qt::QueuedConnection);
}

void Controller::makeDownloads(const ControllerParts& parts, const DownloadContext& context)
{
    m_weatherDownload = std::make_unique<WeatherDownload>(
        m_settings, m_view, context, [this] { return m_connectWorker->fsVersion(); }, m_reporting);
    connect(m_weatherDownload.get(), &WeatherDownload::sigBegun, this, &Controller::beginDownload);
    connect(m_weatherDownload.get(), &WeatherDownload::sigPresentRequested, this, [this] {
        m_view.pageWeather().setWeatherTime(QString());
        m_weatherWorker->setHistoryMode(false);
    });
    connect(m_weatherDownload.get(), &WeatherDownload::sigEnded, &m_timerWeather, &QTimer::stop);
    connect(m_weatherDownload.get(), &WeatherDownload::sigList, this,
            &Controller::decodeWeatherList);
    connect(m_weatherDownload.get(), &WeatherDownload::sigFailed, this,
            &Controller::goOnWithoutDownload);
    m_globalWindDownload =
        std::make_unique<GlobalWindDownload>(context, m_reporting, m_posts.toSimulator);
    m_updateCheck =
        std::make_unique<UpdateCheck>(m_settings, context, parts.processes, m_reporting);
    connect(m_updateCheck.get(), &UpdateCheck::sigCloseProgram, this,
            [this] { m_view.closeProgram(); });
}

void Controller::makeStream(const StreamTimes& times)
{
    m_datagrams = std::make_unique<AircraftDatagrams>(m_settings, m_stop, m_reporting.log, times);
    connect(m_datagrams.get(), &AircraftDatagrams::sigAircraft, this, &Controller::takeDatagram);
    connect(m_datagrams.get(), &AircraftDatagrams::sigSilent, this, &Controller::streamFellSilent);
    connect(m_datagrams.get(), &AircraftDatagrams::sigStreaming, this,
            [this] { m_view.clearNotice(Notice::Connection); });
}

void Controller::makeJobParts(const ControllerParts& parts)
{
    m_connectJobLog = std::make_unique<ConnectJobLog>(m_reporting.log);
    m_link = std::make_unique<SimulatorLink>(
        SimulatorLink::Parts{m_settings, *m_connectWorker, m_view, m_dialogs, m_stop,
                             m_reporting.log, m_posts.toSimulator, parts.link.watch},
        this);
    connect(m_link.get(), &SimulatorLink::sigConnected, this, &Controller::connected);
    connect(m_link.get(), &SimulatorLink::sigDisconnecting, m_datagrams.get(),
            &AircraftDatagrams::close);
    connect(m_link.get(), &SimulatorLink::sigSwitched, this, &Controller::showConnection);
    connect(m_link.get(), &SimulatorLink::sigLost, this, &Controller::showDisconnected);
    m_preparedWeather = std::make_unique<PreparedWeather>(PreparedWeather::Parts{
        m_settings, m_view, *m_weatherWorker, *m_connectWorker, m_stop, m_reporting.log,
        m_posts.toSimulator, [this] { return m_directWind->sends(); }, parts.settleMs});
    connect(m_preparedWeather.get(), &PreparedWeather::sigFilesSet, this,
            &Controller::DownloadXPlaneGlobalWind);
    connect(m_preparedWeather.get(), &PreparedWeather::sigEnded, &m_timerWeather,
            QOverload<>::of(&QTimer::start));
    connect(m_preparedWeather.get(), &PreparedWeather::sigGaveWay, this,
            &Controller::updateGaveWay);
    connect(m_preparedWeather.get(), &PreparedWeather::sigSet, this,
            [this] { m_clearedOnConnect = false; });
    // Made later than the connection to OnJobWeatherWorkerFinished, so it comes after its take.
    connect(m_weatherWorker.get(), &WeatherWorker::sigFinishedJob, m_preparedWeather.get(),
            &PreparedWeather::jobEnded, Qt::QueuedConnection);
    connect(m_link.get(), &SimulatorLink::sigDisconnecting, this, &Controller::dropPrepared);
    m_upperAirWait = std::make_unique<UpperAirWait>(m_view, m_reporting.log);
    connect(m_weatherWorker.get(), &WeatherWorker::sigWaitsForUpperAir, this,
            &Controller::waitsForUpperAir, Qt::QueuedConnection);
    connect(
        m_weatherWorker.get(), &WeatherWorker::sigUpperAirWaitEnded, this,
        [this] { m_upperAirWait->ended(); }, Qt::QueuedConnection);
    m_reportDisplay = std::make_unique<ReportDisplay>(
        ReportDisplay::Parts{m_settings, m_view, *m_weather, *m_weatherWorker, *m_gribDownload,
                             m_stop, m_reporting.log, m_posts, [this] {
                                 return IsConnected();
                             }});
    m_placeTables = std::make_unique<PlaceTables>(m_settings, *m_weather, m_view, m_reporting.log);
}

void Controller::makeTimers()
{
    constexpr int kWeatherClockMs = 1000;
    constexpr int kStartDelayMs = 200;
    m_timerOneSecond.setObjectName(QStringLiteral("timerOneSecond"));
    m_timerWeather.setObjectName(QStringLiteral("timerWeather"));
    connect(&m_timerOneSecond, &QTimer::timeout, this, &Controller::OnTimerOneSecond);
    m_timerOneSecond.start(cycle::pollTime(m_settings.serverUpdateTimeMax()));
    connect(&m_timerWeather, &QTimer::timeout, this, &Controller::OnTimerWeather);
    m_timerWeather.setInterval(kWeatherClockMs);
    QTimer::singleShot(kStartDelayMs, this, &Controller::OnStart);
}

bool Controller::IsConnected() const
{
    return m_connectWorker->IsConnected();
}

NavdataBase* Controller::navdata()
{
    return m_placeTables->navdata();
}

int Controller::GetWeather(const aviation::Position& position, Metar& metar, Synop& synop,
                           Grib& grib)
{
    // Fresh ones: a search that finds nothing leaves the status of the object that it is given.
    Metar nearestMetar;
    Synop nearestSynop;
    Grib nearestGrib;
    if (!m_weather->SearchMetar(position, nearestMetar)) {
        return placeweather::kNoMetar;
    }
    m_weather->SearchSynop(position, nearestSynop);
    if (!m_weather->SearchGrib(position, nearestGrib)) {
        DownloadGrib(position, false);
        nearestGrib = Grib();
        m_weather->SearchGrib(position, nearestGrib);
    }
    metar = nearestMetar;
    synop = nearestSynop;
    grib = nearestGrib;
    return placeweather::kFound;
}

void Controller::setNavdata(std::unique_ptr<NavdataBase> navdata)
{
    m_placeTables->setNavdata(std::move(navdata));
}

void Controller::OnDebugString(QString item, int level)
{
    const qint64 now = aviation::Clock::current().NowUtc().time_since_epoch().count();
    const QString time =
        QDateTime::fromMSecsSinceEpoch(now, Qt::UTC).toString(QStringLiteral("hh:mm:ss:zzz"));
    m_view.OnOutputDebugstring(time + QStringLiteral(" - ") + item, level);
}

void Controller::OnProgressBar(qlonglong value, qlonglong total, QString text)
{
    m_view.OnProgressBar(value, total, text);
}

#include "app/Controller.h"

#include "app/PlaceTables.h"
#include "app/WorkingFolders.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/base/UserDialogs.h"
#include "app/cycle/CycleRules.h"
#include "app/cycle/DirectWind.h"
#include "app/download/GlobalWindDownload.h"
#include "app/download/GribDownload.h"
#include "app/download/UpdateCheck.h"
#include "app/download/WeatherDownload.h"
#include "app/jobs/ConnectJobLog.h"
#include "app/jobs/PreparedWeather.h"
#include "app/jobs/ReportDisplay.h"
#include "app/jobs/SimulatorLink.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/support/Clock.h"
#include "aviation/support/RandomSource.h"
#include "nav/records/NavdataBase.h"
#include "sim/AircraftDatagrams.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "weather/output/WeatherWrapper.h"

#include <QDateTime>

#include <utility>

namespace {

void registerSignalTypes()
{
    registerJobType();
    qRegisterMetaType<qlonglong>("qlonglong");
}

} // namespace

Controller::Controller(const ControllerParts& parts, QObject* parent)
    : QObject(parent)
    , m_settings(parts.settings)
    , m_view(parts.view)
    , m_dialogs(parts.dialogs)
    , m_network(parts.network)
    , m_processes(parts.processes)
    , m_limits(parts.limits)
    , m_directWind(makeDirectWind(parts.random))
{
    registerSignalTypes();
    connect(this, &Controller::sigDebugString, this, &Controller::OnDebugString,
            Qt::QueuedConnection);
    connect(this, &Controller::sigProgress, this, &Controller::OnProgressBar, Qt::QueuedConnection);
    makeWorkers(parts);
    makeDownloads();
    makeLink();
    makeReportDisplay();
    makePreparedWeather(parts.settleMs);
    makeTimers();
    if (workingfolders::create(m_settings, reporting().log)) {
        workingfolders::sweepTemporary(m_settings, reporting().log);
    }
}

Controller::~Controller()
{
    m_stop.raise();
    timerOneSecond.stop();
    timerWeather.stop();
    m_link->endReconnecting();
    // Both are told before either is waited for.
    m_weatherWorker->stop();
    m_connectWorker.reset();
    m_weatherWorker.reset();
}

JobPosts Controller::jobPosts()
{
    return {[this](const Job& job) { postConnectJob(job); },
            [this](const Job& job) {
                postWeatherJob(job);
            }};
}

std::unique_ptr<DirectWind> Controller::makeDirectWind(aviation::RandomSource& random)
{
    const auto seed = static_cast<std::uint32_t>(random.Next());
    return std::make_unique<DirectWind>(m_settings, m_view, jobPosts(),
                                        std::make_unique<aviation::SeededRandom>(seed));
}

void Controller::makeWorkers(const ControllerParts& parts)
{
    m_connectWorker =
        std::make_unique<ConnectWorker>(parts.settings, parts.interfaces, m_stop, nullptr);
    connect(m_connectWorker.get(), &ConnectWorker::sigJobFinish, this,
            &Controller::OnJobConnectWorkerFinished, Qt::QueuedConnection);
    connect(m_connectWorker.get(), &ConnectWorker::sigOutputDebugString, this,
            &Controller::OnDebugString, Qt::QueuedConnection);
    connect(m_connectWorker.get(), &ConnectWorker::sigProgressBar, this, &Controller::OnProgressBar,
            Qt::QueuedConnection);

    m_datagrams = std::make_unique<AircraftDatagrams>(m_settings, m_stop, reporting().log);
    connect(m_datagrams.get(), &AircraftDatagrams::sigAircraft, this, &Controller::takeDatagram);

    // The lines of the weather side are plain text with reports in it.
    const auto plainLine = [this](const QString& text, int level) {
        OnDebugString(text.toHtmlEscaped(), level);
    };
    m_weather = std::make_unique<WeatherWrapper>(parts.settings, parts.random);
    connect(m_weather.get(), &WeatherWrapper::sigDebugString, this, plainLine,
            Qt::QueuedConnection);
    connect(m_weather.get(), &WeatherWrapper::sigProgress, this, &Controller::OnProgressBar,
            Qt::QueuedConnection);

    m_placeTables = std::make_unique<PlaceTables>(m_settings, *m_weather, m_view, reporting().log);
    m_gribDownload = std::make_unique<GribDownload>(downloadContext(), m_stop, m_processes,
                                                    *m_weather, reporting());
    m_weatherWorker =
        std::make_unique<WeatherWorker>(*m_weather, parts.settings, m_gribDownload.get());
    connect(m_weatherWorker.get(), &WeatherWorker::sigFinishedDecodeWeatherData, this,
            &Controller::OnJobWeatherWorkerFinishedDecodeWeatherdata, Qt::QueuedConnection);
    connect(m_weatherWorker.get(), &WeatherWorker::sigFinishedJob, this,
            &Controller::OnJobWeatherWorkerFinished, Qt::QueuedConnection);
    connect(m_weatherWorker.get(), &WeatherWorker::sigDebugString, this, plainLine,
            Qt::QueuedConnection);
    connect(m_weatherWorker.get(), &WeatherWorker::sigProgress, this, &Controller::OnProgressBar,
            Qt::QueuedConnection);
}

void Controller::makeDownloads()
{
    m_weatherDownload = std::make_unique<WeatherDownload>(
        m_settings, downloadContext(), [this] { return m_connectWorker->fsVersion(); },
        reporting());
    connect(m_weatherDownload.get(), &WeatherDownload::sigBegun, this, &Controller::beginDownload);
    connect(m_weatherDownload.get(), &WeatherDownload::sigPresentRequested, this, [this] {
        m_view.pageWeather().setWeatherTime(QString());
        m_weatherWorker->setHistoryMode(false);
    });
    connect(m_weatherDownload.get(), &WeatherDownload::sigEnded, &timerWeather, &QTimer::stop);
    connect(m_weatherDownload.get(), &WeatherDownload::sigText, this,
            &Controller::decodeWeatherText);
    m_globalWindDownload = std::make_unique<GlobalWindDownload>(downloadContext(), reporting(),
                                                                jobPosts().toSimulator);
    m_updateCheck =
        std::make_unique<UpdateCheck>(m_settings, downloadContext(), m_processes, reporting());
    connect(m_updateCheck.get(), &UpdateCheck::sigCloseProgram, this,
            [this] { m_view.closeProgram(); });
}

void Controller::makeLink()
{
    m_connectJobLog = std::make_unique<ConnectJobLog>(reporting().log);
    m_link = std::make_unique<SimulatorLink>(
        SimulatorLink::Parts{m_settings, *m_connectWorker, m_dialogs, m_stop, reporting().log,
                             jobPosts().toSimulator},
        this);
    connect(m_link.get(), &SimulatorLink::sigConnected, this, &Controller::connected);
    connect(m_link.get(), &SimulatorLink::sigDisconnecting, m_datagrams.get(),
            &AircraftDatagrams::close);
    connect(m_link.get(), &SimulatorLink::sigSwitched, this, &Controller::showConnection);
    connect(m_link.get(), &SimulatorLink::sigLost, this, &Controller::showDisconnected);
}

void Controller::makeReportDisplay()
{
    m_reportDisplay = std::make_unique<ReportDisplay>(
        ReportDisplay::Parts{m_settings, m_view, *m_weather, *m_weatherWorker, *m_gribDownload,
                             m_stop, reporting().log, jobPosts(), [this] {
                                 return IsConnected();
                             }});
}

void Controller::makePreparedWeather(int settleMs)
{
    m_preparedWeather = std::make_unique<PreparedWeather>(
        PreparedWeather::Parts{m_settings, m_view, *m_weatherWorker, *m_connectWorker, m_stop,
                               reporting().log, jobPosts().toSimulator, settleMs});
    connect(m_preparedWeather.get(), &PreparedWeather::sigFilesSet, this,
            &Controller::DownloadXPlaneGlobalWind);
    connect(m_preparedWeather.get(), &PreparedWeather::sigWeatherSet, &timerWeather,
            QOverload<>::of(&QTimer::start));
}

void Controller::makeTimers()
{
    constexpr int kWeatherClockMs = 1000;
    constexpr int kStartDelayMs = 200;
    timerOneSecond.setObjectName(QStringLiteral("timerOneSecond"));
    timerWeather.setObjectName(QStringLiteral("timerWeather"));
    connect(&timerOneSecond, &QTimer::timeout, this, &Controller::OnTimerOneSecond);
    timerOneSecond.start(cycle::PollTime(m_settings.serverUpdateTimeMax()));
    connect(&timerWeather, &QTimer::timeout, this, &Controller::OnTimerWeather);
    timerWeather.setInterval(kWeatherClockMs);
    QTimer::singleShot(kStartDelayMs, this, &Controller::OnStart);
}

bool Controller::IsConnected() const
{
    return m_connectWorker->IsConnected();
}

void Controller::setFlightPhaseSource(std::function<FlightPhase()> source)
{
    m_flightPhase = std::move(source);
}

void Controller::setDestinationSource(std::function<QString()> source)
{
    m_destination = std::move(source);
}

void Controller::setNavdata(std::unique_ptr<NavdataBase> navdata)
{
    m_placeTables->setNavdata(std::move(navdata));
}

void Controller::log(const QString& text, int level)
{
    Q_EMIT sigDebugString(text, level);
}

/// Both only emit a signal that is delivered by the event loop, so every thread may call them.
Reporting Controller::reporting()
{
    return {[this](const QString& text, int level) { Q_EMIT sigDebugString(text, level); },
            [this](qlonglong value, qlonglong total, const QString& text) {
                Q_EMIT sigProgress(value, total, text);
            }};
}

void Controller::OnDebugString(QString item, int level)
{
    const qint64 now = aviation::Clock::Current().NowUtc().time_since_epoch().count();
    const QString time =
        QDateTime::fromMSecsSinceEpoch(now, Qt::UTC).toString(QStringLiteral("hh:mm:ss:zzz"));
    m_view.OnOutputDebugstring(time + QStringLiteral(" - ") + item, level);
}

void Controller::OnProgressBar(qlonglong value, qlonglong total, QString text)
{
    m_view.OnProgressBar(value, total, text);
}

void Controller::postConnectJob(const Job& job)
{
    if (!m_stop.raised() && m_connectWorker->AddJob(job)) {
        m_connectWorker->start();
    }
}

void Controller::postWeatherJob(const Job& job)
{
    if (!m_stop.raised()) {
        m_weatherWorker->addJob(job);
        m_weatherWorker->start();
    }
}

void Controller::OnConnectClicked()
{
    m_link->switchByUser();
}

void Controller::OnClickedSetWX()
{
    forceWeatherUpdate = true;
}

void Controller::OnClearWX()
{
    if (IsConnected()) {
        const QString name = QStringLiteral("Clear WX");
        postConnectJob(Job(connectjob::kClearWeather, name));
        m_connectWorker->AddJob(Job(connectjob::kSendText, name)); // deliberately without a start
    }
}

void Controller::OnNewJobConnectworker(Job job)
{
    if (job.id == connectjob::kSetFuel) {
        m_connectWorker->setFuel(aircraftFuel);
    } else if (job.id == connectjob::kSetPayload) {
        m_connectWorker->setPayload(aircraftPayload);
    }
    postConnectJob(job);
}

void Controller::OnRadioChangedByUser(aviation::structs::RadioFrequencys freqs)
{
    m_connectWorker->setRadios(freqs);
    postConnectJob(Job(connectjob::kSetRadios, QStringLiteral("Set frequency data")));
}

void Controller::OnSendFlightplan(QString filename)
{
    postConnectJob(Job(connectjob::kLoadFlightPlan, filename));
}

void Controller::OnRequestCloudsRGB(int range, int tilt)
{
    if (m_connectWorker->queuedJobs() < cycle::kMostWaitingJobs) {
        postConnectJob(Job(connectjob::kCloudMap, QStringLiteral("%1:%2").arg(range).arg(tilt)));
    }
}

void Controller::OnTableGribUpdate(aviation::weather::Grib grib)
{
    m_view.pageWeather().OnTableGribUpdate(grib);
}

void Controller::OnShowMetarStationsFailed()
{
    log(QStringLiteral("(WeatherManager) - Metar stations failed: ")
            + m_weather->failedMetarStations().join(QStringLiteral(", ")).toHtmlEscaped(),
        loglevel::kNotification);
}

void Controller::OnShowSynopStationsFailed()
{
    log(QStringLiteral("(WeatherManager) - Synop stations failed: ")
            + m_weather->failedSynopStations().join(QStringLiteral(", ")).toHtmlEscaped(),
        loglevel::kNotification);
}

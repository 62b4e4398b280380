#include "app/Controller.h"
#include "app/Resources.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/download/WeatherDownload.h"
#include "aviation/Station.h"
#include "nav/AirportTable.h"
#include "nav/NavdataIntern.h"
#include "weather/output/WeatherWrapper.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

namespace {

constexpr int kFewestAirports = 10;

QStringList workingFolders(const Settings& settings)
{
    return {settings.tmpFolder(),           settings.workFolder(),
            settings.aircraftFilesFolder(), settings.weatherFilesFolder(),
            settings.profilesFolder(),      settings.flightsFolder(),
            settings.resFolder(),           settings.chartsFolder(),
            settings.storedWxFolder(),      settings.backupsFolder()};
}

bool samePlace(const aviation::weather::Station& station, const QAirport& airport)
{
    return station.latitude() == airport.Lat && station.longitude() == airport.Lon
           && station.elevation() == airport.Elevation
           && station.name() == airport.Name.toStdWString();
}

} // namespace

bool Controller::createWorkingFolders()
{
    const QStringList folders = workingFolders(m_settings);
    for (const QString& folder : folders) {
        const QString path = folder.toHtmlEscaped();
        if (QFileInfo(folder).isDir()) {
            log(QStringLiteral("(Main) - Folder founded: <a href=\"") + path
                    + QStringLiteral("\"> ") + path + QStringLiteral(" </a>"),
                loglevel::kNotification);
        } else if (QDir().mkpath(folder)) {
            log(QStringLiteral("(Main) - Folder created: <b>") + path + QStringLiteral("</b>"),
                loglevel::kNotification);
        } else {
            log(QStringLiteral("(Main) -Cannot create folder: ") + path, loglevel::kError);
            return false;
        }
    }
    return true;
}

void Controller::sweepTemporaryFolder()
{
    const QDir folder(m_settings.tmpFolder());
    const QFileInfoList files = folder.entryInfoList({QStringLiteral("*.*")}, QDir::Files);
    for (const QFileInfo& entry : files) {
        QFile file(entry.filePath());
        const QString name = entry.filePath().toHtmlEscaped();
        if (file.remove()) {
            log(QStringLiteral("(Main) - file deleted: %1").arg(name), loglevel::kDebug);
        } else {
            log(QStringLiteral("(Main) -can not delete file: %1 , %2")
                    .arg(name, file.errorString().toHtmlEscaped()),
                loglevel::kError);
        }
    }
}

void Controller::OnStart()
{
    if (m_stop.raised()) {
        return;
    }
    LoadResources();
    m_view.pageWeather().OnEnableGetMetarButton(false);
    m_weatherDownload->useSourceOfSettings();
    m_view.closeSplash();
    onDownloadFileInfo();
    logWeatherServer();
    Q_EMIT sigStarted();
    if (m_settings.downloadWxAtStart()) {
        DownloadWeather(m_settings.weatherSource());
    }
    // The user may have connected, or closed the window, while an outside server was asked.
    if (m_settings.autoConnect() && !IsConnected() && !m_stop.raised()) {
        OnConnectClicked();
    }
}

void Controller::LoadResources()
{
    m_view.showSplashMessage(tr("Loading Airport resource"));
    if (m_settings.airacUse() || m_settings.airacUseDb()) {
        log(QStringLiteral("(NavData) - AIRAC data aren't read in this version. The built-in "
                           "airports are used."),
            loglevel::kWarning);
    }
    loadAirports();
    m_view.showSplashMessage(tr("Loading Weather station resource"));
    loadWeatherStations();
}

QVector<QAirport> Controller::readAirports()
{
    InitCirrilonResources();
    if (!m_navdata) {
        m_navdata = std::make_unique<NavdataIntern>();
    }
    QVector<QAirport> airports = m_navdata->ReadAirports();
    const QVector<QAirport> additional = readAdditionalAirports();
    log(additional.isEmpty() ? QStringLiteral("(NavData) - no additional airports")
                             : QStringLiteral("(NavData) - read additional airports"),
        loglevel::kNotification);
    if (airports.size() < kFewestAirports) {
        log(QStringLiteral("(NavData) - no airport founded. Use intern ressource"),
            loglevel::kError);
        m_navdata = std::make_unique<NavdataIntern>();
        airports = m_navdata->ReadAirports();
    }
    return airports + additional;
}

QVector<QAirport> Controller::readAdditionalAirports() const
{
    constexpr qint64 kLargestFile = 16 * 1024 * 1024;
    QFile file(m_settings.workFolder() + QStringLiteral("airportsadd.dat"));
    return file.open(QIODevice::ReadOnly) ? ReadAdditionalAirports(file.read(kLargestFile))
                                          : QVector<QAirport>();
}

void Controller::loadAirports()
{
    const QVector<QAirport> airports = readAirports();
    m_completion.reserve(airports.size());
    for (const QAirport& airport : airports) {
        m_completion << airport.Ident;
    }
    m_weather->addAirports(airports);
    m_view.pageWeather().setCompleterList(m_completion);
    if (airports.size() < kFewestAirports) {
        log(QStringLiteral("(Controller Weather) - Airport Resource not loaded"), loglevel::kError);
    } else {
        log(QStringLiteral("(Controller Weather) - Airport resource loaded"),
            loglevel::kNotification);
    }
    log(QStringLiteral("(Controller Weather) - Airports: %1").arg(m_weather->airportCount()),
        loglevel::kNotification);
}

void Controller::loadWeatherStations()
{
    constexpr int kFewestBytes = 10;
    const QByteArray table = BuiltInFile("wxstations");
    if (table.size() < kFewestBytes) {
        log(QStringLiteral("(Controller Weather) - WXstation Resource not loaded"),
            loglevel::kError);
    } else {
        log(QStringLiteral("(Controller Weather) - WXstation resource loaded"),
            loglevel::kNotification);
    }
    m_weather->setWeatherStations(QString::fromUtf8(table));
    log(QStringLiteral("(Controller Weather) - Weather stations: %1")
            .arg(m_weather->stationCount()),
        loglevel::kNotification);
}

void Controller::logWeatherServer()
{
    constexpr int kExtern = 3; // weather/wxservertype
    QString server = QStringLiteral("wxdata2");
    if (m_settings.wxServerType() == kExtern) {
        server = QStringLiteral("extern");
    } else if (m_settings.weatherServer() == m_settings.serverOne()) {
        server = QStringLiteral("wxdata1");
    }
    log(QStringLiteral("(Controller) - Weather server: ") + server, loglevel::kNotification);
}

void Controller::OnAirportListChanged()
{
    // The store only grows: an airport that was taken out stays until the next start.
    QVector<QAirport> changed;
    for (const QAirport& airport : readAdditionalAirports()) {
        aviation::weather::Station known;
        const bool isKnown = m_weather->getStation(airport.Ident, known);
        if (!isKnown) {
            m_completion << airport.Ident;
        }
        if (!isKnown || !samePlace(known, airport)) {
            changed.push_back(airport);
        }
    }
    m_weather->addAirports(changed);
    m_view.pageWeather().setCompleterList(m_completion);
    log(QStringLiteral("(NavData) - airports read again, new or changed: %1").arg(changed.size()),
        loglevel::kNotification);
}

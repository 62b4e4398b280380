#include "cli/CliSession.h"

#include "app/Resources.h"
#include "app/base/LogLevel.h"
#include "app/base/ReportFile.h"
#include "app/jobs/WeatherJobs.h"
#include "cli/InputChecks.h"
#include "nav/records/AirportTable.h"
#include "weather/store/WeatherFile.h"
#include "weather/store/WeatherManager.h"

#include <QDateTime>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <ostream>

namespace {

std::uint32_t seedFrom(const CliOptions& options)
{
    return options.seed.value_or(
        static_cast<std::uint32_t>(aviation::Clock::current().NowUtc().time_since_epoch().count()));
}

[[noreturn]] void badInput(const QString& file, const QString& reason)
{
    throw CliFailure{cliexit::kInput, file + QStringLiteral(": ") + reason};
}

QString reportText(const QString& file)
{
    const ReportFileResult result = readReportFile(file);
    if (!result.ok()) {
        throw CliFailure{cliexit::kInput, result.error};
    }
    return result.text;
}

/// The contents of a named file, or of the built-in one when no name is given.
QByteArray tableBytes(const QString& file, const char* builtIn)
{
    if (file.isEmpty()) {
        return builtInFile(builtIn);
    }
    return reportText(file).toUtf8();
}

/// Whether a table has more than comments; an empty table is one without stations.
bool hasRows(const QByteArray& table)
{
    const QList<QByteArray> lines = table.split('\n');
    return std::any_of(lines.begin(), lines.end(), [](const QByteArray& line) {
        return !line.trimmed().isEmpty() && !line.startsWith('#');
    });
}

/// Of a weather file, with its METARs as the store takes them.
QString withoutPrefixes(QString text)
{
    static const QRegularExpression kPrefix(
        QStringLiteral("^(METAR|SPECI) +(COR +)?(?=[A-Z0-9]{4} [0-9]{6}Z)"),
        QRegularExpression::MultilineOption);
    return text.replace(kPrefix, QString());
}

void requireNoFault(const QString& file, const QString& fault)
{
    if (!fault.isEmpty()) {
        badInput(file, fault);
    }
}

} // namespace

CliSession::CliSession(const CliOptions& options, std::ostream& err)
    : m_options(options)
    , m_err(err)
    , m_random(seedFrom(options))
    , m_settings(QString(), m_random)
    , m_store(m_settings, m_random)
    , m_worker(m_store, m_settings, nullptr)
{
    connectLog();
    loadSettings();
}

void CliSession::loadSettings()
{
    if (!m_options.settingsFile.isEmpty()) {
        const QFileInfo info(m_options.settingsFile);
        if (!info.isFile() || !info.isReadable()) {
            badInput(m_options.settingsFile, QStringLiteral("no readable settings file"));
        }
        requireNoFault(m_options.settingsFile, inputchecks::settingsFault(m_options.settingsFile));
        m_settings.load(m_options.settingsFile, Settings::FileRole::Main);
    }
    m_store.setSimulator(m_options.sim.value_or(aviation::fsid::kFsx));
    if (m_options.interfaceType) {
        m_settings.setInterfaceType(*m_options.interfaceType);
    }
}

void CliSession::connectLog()
{
    const auto print = [this](const QString& text, int level) {
        printLog(text, level);
    };
    QObject::connect(&m_settings, &Settings::sigDebugString, print);
    QObject::connect(&m_store, &WeatherWrapper::sigDebugString, print);
    m_store.setLeastLogLevel(m_options.logLevel.value_or(loglevel::kNothing));
    QObject::connect(&m_worker, &WeatherWorker::sigDebugString, print);
    QObject::connect(&m_worker, &WeatherWorker::sigUpperAirMissing,
                     [this](const QString& place) { noteMissingUpperAir(place); });
}

void CliSession::printLog(const QString& text, int level)
{
    static const char* const kNames[] = {"Debug", "Notification", "Warning", "Error"};
    if (!m_options.logLevel || level < *m_options.logLevel || level < 0 || level > 3) {
        return;
    }
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(
        aviation::Clock::current().NowUtc().time_since_epoch().count(), Qt::UTC);
    const QString line = QLatin1String(kNames[level]) + QStringLiteral(": ")
                         + now.toString(QStringLiteral("hh:mm:ss:zzz")) + QStringLiteral(" - ")
                         + text;
    const std::lock_guard lock(m_errMutex);
    m_err << line.toStdString() << '\n';
}

/// A place without a station has no name but its coordinates.
void CliSession::noteMissingUpperAir(const QString& station)
{
    const QString place =
        station.isEmpty() && m_options.at
            ? QStringLiteral("%1,%2").arg(m_options.at->latitude()).arg(m_options.at->longitude())
            : station;
    {
        const std::lock_guard lock(m_errMutex);
        if (!m_missingAir.insert(place).second) {
            return;
        }
    }
    printLog(QStringLiteral("no upper-air data for %1").arg(place), loglevel::kDebug);
}

/// One line however many stations there are; with the log's debug lines they are named as well.
CliSession::~CliSession()
{
    if (m_missingAir.size() == 1) {
        m_err << "no upper-air data for 1 station, " << m_missingAir.begin()->toStdString()
              << ", prepared without it\n";
    } else if (!m_missingAir.empty()) {
        m_err << "no upper-air data for " << m_missingAir.size()
              << " stations, prepared without it\n";
    }
}

void CliSession::fillStore()
{
    fillAirports();
    fillStations();
    fillUpperAir();
    fillWeather();
}

void CliSession::fillAirports()
{
    const QByteArray table = tableBytes(m_options.airportsFile, "airports");
    const QVector<QAirport> airports = readAirportTable(table);
    if (airports.isEmpty() && hasRows(table)) {
        badInput(m_options.airportsFile, QStringLiteral("no row of a table of airports"));
    }
    m_store.addAirports(airports);
}

void CliSession::fillStations()
{
    const QByteArray table = tableBytes(m_options.stationsFile, "wxstations");
    m_store.setWeatherStations(QString::fromUtf8(table));
    if (m_store.stationCount() == 0 && hasRows(table)) {
        badInput(m_options.stationsFile, QStringLiteral("no row of a table of weather stations"));
    }
}

void CliSession::fillWeather()
{
    if (m_options.weatherFile.isEmpty()) {
        return;
    }
    const QString text = reportText(m_options.weatherFile);
    requireNoFault(m_options.weatherFile, inputchecks::weatherFault(text));
    m_worker.setWeatherText(withoutPrefixes(text));
    requireSuccess(runJob(Job(weatherjob::kDecodeWeather, QStringLiteral("decode weather data"))));
}

void CliSession::fillUpperAir()
{
    if (m_options.gribFile.isEmpty()) {
        return;
    }
    const QString text = reportText(m_options.gribFile);
    if (!m_store.initializeWeather(text, aviation::weather::storekind::kUpperAir)) {
        badInput(m_options.gribFile, QStringLiteral("the server's error text, no upper-air data"));
    }
    requireNoFault(m_options.gribFile, inputchecks::upperAirFault(text));
}

int CliSession::runJob(const Job& job)
{
    int result = weathererror::kUnknownJob;
    const QMetaObject::Connection connection =
        QObject::connect(&m_worker, &WeatherWorker::sigFinishedJob,
                         [&result](int, const QString&, int error) { result = error; });
    if (m_options.at) {
        aviation::structs::AircraftData aircraft;
        aircraft.position = *m_options.at;
        m_worker.setAircraftData(aircraft);
    }
    m_worker.addJob(job);
    m_worker.start();
    m_worker.join();
    QObject::disconnect(connection);
    return result;
}

void CliSession::requireSuccess(int result)
{
    if (result != weathererror::kNone && result != weathererror::kThemeWritten) {
        throw CliFailure{cliexit::kFailed,
                         QStringLiteral("%1 %2").arg(result).arg(WeatherWorker::errorText(result))};
    }
}

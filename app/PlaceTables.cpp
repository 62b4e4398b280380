#include "app/PlaceTables.h"

#include "app/Resources.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "aviation/Station.h"
#include "nav/NavdataIntern.h"
#include "nav/records/AirportTable.h"
#include "weather/output/WeatherWrapper.h"

#include <QFile>

#include <utility>

namespace {

constexpr int kFewestAirports = 10;

bool samePlace(const aviation::weather::Station& station, const QAirport& airport)
{
    return station.latitude() == airport.Lat && station.longitude() == airport.Lon
           && station.elevation() == airport.Elevation
           && station.name() == airport.Name.toStdWString();
}

QVector<QAirport> airportsOf(NavdataBase& navdata)
{
    navdata.readAirports(QString());
    return navdata.airports();
}

} // namespace

PlaceTables::PlaceTables(const Settings& settings, WeatherWrapper& store, MainView& view,
                         LogFunction log)
    : m_settings(settings)
    , m_store(store)
    , m_view(view)
    , m_log(std::move(log))
{}

void PlaceTables::setNavdata(std::unique_ptr<NavdataBase> navdata)
{
    m_navdata = std::move(navdata);
}

void PlaceTables::load()
{
    m_view.showSplashMessage(tr("Loading Airport resource"));
    if (m_settings.airacUse() || m_settings.airacUseDb()) {
        m_log(QStringLiteral("(NavData) - AIRAC data aren't read in this version. The built-in "
                             "airports are used."),
              loglevel::kWarning);
    }
    loadAirports();
    m_view.showSplashMessage(tr("Loading Weather station resource"));
    loadWeatherStations();
}

QVector<QAirport> PlaceTables::readAirports()
{
    initCirrilonResources();
    if (!m_navdata) {
        m_navdata = std::make_unique<NavdataIntern>();
    }
    QVector<QAirport> airports = airportsOf(*m_navdata);
    const QVector<QAirport> additional = readAdditionalAirports();
    m_log(additional.isEmpty() ? QStringLiteral("(NavData) - no additional airports")
                               : QStringLiteral("(NavData) - read additional airports"),
          loglevel::kNotification);
    if (airports.size() < kFewestAirports) {
        m_log(QStringLiteral("(NavData) - no airport founded. Use intern ressource"),
              loglevel::kError);
        m_navdata = std::make_unique<NavdataIntern>();
        airports = airportsOf(*m_navdata);
    }
    return airports + additional;
}

QVector<QAirport> PlaceTables::readAdditionalAirports() const
{
    constexpr qint64 kLargestFile = 16LL * 1024 * 1024;
    QFile file(m_settings.workFolder() + QStringLiteral("airportsadd.dat"));
    return file.open(QIODevice::ReadOnly) ? parseAdditionalAirports(file.read(kLargestFile))
                                          : QVector<QAirport>();
}

void PlaceTables::loadAirports()
{
    const QVector<QAirport> airports = readAirports();
    m_completion.reserve(airports.size());
    for (const QAirport& airport : airports) {
        m_completion << airport.Ident;
    }
    m_store.addAirports(airports);
    m_view.pageWeather().setCompleterList(m_completion);
    if (airports.size() < kFewestAirports) {
        m_log(QStringLiteral("(Controller Weather) - Airport Resource not loaded"),
              loglevel::kError);
    } else {
        m_log(QStringLiteral("(Controller Weather) - Airport resource loaded"),
              loglevel::kNotification);
    }
    m_log(QStringLiteral("(Controller Weather) - Airports: %1").arg(m_store.airportCount()),
          loglevel::kNotification);
}

void PlaceTables::loadWeatherStations()
{
    constexpr int kFewestBytes = 10;
    const QByteArray table = builtInFile("wxstations");
    if (table.size() < kFewestBytes) {
        m_log(QStringLiteral("(Controller Weather) - WXstation Resource not loaded"),
              loglevel::kError);
    } else {
        m_log(QStringLiteral("(Controller Weather) - WXstation resource loaded"),
              loglevel::kNotification);
    }
    m_store.setWeatherStations(QString::fromUtf8(table));
    m_log(QStringLiteral("(Controller Weather) - Weather stations: %1").arg(m_store.stationCount()),
          loglevel::kNotification);
}

void PlaceTables::readUserAirportsAgain()
{
    // The store only grows: an airport that was taken out stays until the next start.
    QVector<QAirport> changed;
    for (const QAirport& airport : readAdditionalAirports()) {
        aviation::weather::Station known;
        const bool isKnown = m_store.getStation(airport.Ident, known);
        if (!isKnown) {
            m_completion << airport.Ident;
        }
        if (!isKnown || !samePlace(known, airport)) {
            changed.push_back(airport);
        }
    }
    m_store.addAirports(changed);
    m_view.pageWeather().setCompleterList(m_completion);
    m_log(QStringLiteral("(NavData) - airports read again, new or changed: %1").arg(changed.size()),
          loglevel::kNotification);
}

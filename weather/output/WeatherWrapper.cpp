#include "weather/output/WeatherWrapper.h"

#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/base/SettingsValues.h"
#include "weather/output/WeatherComposition.h"
#include "weather/output/records/NewWeatherText.h"
#include "weather/store/WeatherManager.h"

#include <QMetaMethod>

#include <utility>

using aviation::Position;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Station;
using aviation::weather::Synop;
using aviation::weather::WeatherManager;

namespace {

/// Looked for without a way out of the loop, so that the compiler takes many at once.
bool hasSurrogates(QStringView text)
{
    unsigned found = 0;
    for (const QChar unit : text) {
        found |= unit.isSurrogate() ? 1U : 0U;
    }
    return found != 0;
}

/// Surrogate pairs become one character where wchar_t has room for it.
std::wstring wide(QStringView text)
{
    std::wstring wide(static_cast<std::size_t>(text.size()), L'\0');
    if (hasSurrogates(text)) {
        wide.resize(static_cast<std::size_t>(text.toWCharArray(wide.data())));
        return wide;
    }
    const char16_t* from = text.utf16();
    for (wchar_t& to : wide) {
        to = static_cast<wchar_t>(*from++);
    }
    return wide;
}

QString narrow(const std::wstring& text)
{
    return QString::fromStdWString(text);
}

QStringList narrow(const std::vector<std::wstring>& texts)
{
    QStringList list;
    list.reserve(static_cast<int>(texts.size()));
    for (const std::wstring& text : texts) {
        list.append(narrow(text));
    }
    return list;
}

Station stationOf(const QAirport& airport)
{
    std::wstring icao = wide(airport.Ident);
    std::wstring name = wide(airport.Name);
    std::wstring country = wide(airport.Region);
    return {icao, name, country, airport.Elevation, Position(airport.Lat, airport.Lon)};
}

} // namespace

WeatherWrapper::WeatherWrapper(const Settings& settings, aviation::RandomSource& random,
                               QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_random(random)
    , m_store(std::make_unique<WeatherManager>(signalsAsListener()))
    , m_leastLogLevel(loglevel::kDebug)
{}

WeatherWrapper::~WeatherWrapper() = default;

aviation::weather::StoreListener WeatherWrapper::signalsAsListener()
{
    return {[this](int value, int total, const std::wstring& text) {
                Q_EMIT sigProgress(value, total, narrow(text));
            },
            [this](const std::wstring& text, int level) {
                Q_EMIT sigDebugString(narrow(text), level);
            }};
}

void WeatherWrapper::addAirport(const QAirport& airport)
{
    m_store->addAirport(stationOf(airport));
}

void WeatherWrapper::addAirports(const QVector<QAirport>& airports)
{
    std::vector<Station> stations;
    stations.reserve(static_cast<std::size_t>(airports.size()));
    for (const QAirport& airport : airports) {
        stations.push_back(stationOf(airport));
    }
    m_store->addAirports(std::move(stations));
}

void WeatherWrapper::setWeatherStations(QStringView text)
{
    m_store->setWeatherStations(wide(text));
}

bool WeatherWrapper::initializeWeather(const QString& text, int kind)
{
    return initializeWeather(QStringView(text), kind);
}

bool WeatherWrapper::initializeWeather(QStringView text, int kind, std::size_t fewest)
{
    const bool newestFirst = m_settings.weatherSource() == weathersource::kNoaa; // of a station
    return m_store->Initialize(wide(text), kind, newestFirst, fewest);
}

int WeatherWrapper::deleteOldSynops(int maxAgeSeconds)
{
    return m_store->deleteOldSynops(maxAgeSeconds);
}

bool WeatherWrapper::getStation(const QString& icao, Station& station) const
{
    return m_store->getStation(wide(icao), station);
}

std::size_t WeatherWrapper::airportCount() const
{
    return m_store->airportCount();
}

std::size_t WeatherWrapper::stationCount() const
{
    return m_store->stationCount();
}

std::size_t WeatherWrapper::metarCount() const
{
    return m_store->metarCount();
}

std::size_t WeatherWrapper::synopCount() const
{
    return m_store->synopCount();
}

std::size_t WeatherWrapper::tafCount() const
{
    return m_store->tafCount();
}

std::size_t WeatherWrapper::gribCount() const
{
    return m_store->gribCount();
}

std::vector<Metar> WeatherWrapper::getMetars() const
{
    return m_store->getMetars();
}

QString WeatherWrapper::GetTaf(const QString& icao) const
{
    return narrow(m_store->GetTaf(wide(icao)));
}

QStringList WeatherWrapper::failedMetarStations() const
{
    return narrow(m_store->failedMetarStations());
}

QStringList WeatherWrapper::failedSynopStations() const
{
    return narrow(m_store->failedSynopStations());
}

bool WeatherWrapper::SearchMetar(const Position& position, Metar& metar)
{
    return m_store->SearchMetar(position, metar);
}

bool WeatherWrapper::SearchSynop(const Position& position, Synop& synop)
{
    return m_store->SearchSynop(position, synop);
}

bool WeatherWrapper::SearchGrib(const Position& position, Grib& grib)
{
    return m_store->SearchGrib(position, grib);
}

void WeatherWrapper::StationsInRange(const Position& position, int rangeNm,
                                     std::vector<Station>& stations) const
{
    m_store->StationsInRange(position, rangeNm, stations);
}

void WeatherWrapper::NearestAirport(const Position& position, Station& station) const
{
    m_store->NearestAirport(position, station);
}

int WeatherWrapper::GenerateWeather(const Metar& metar, const Synop& synop, const Grib& grib,
                                    NewWeather& record, double magneticVariation,
                                    const Position& /*position*/)
{
    CompositionContext context = compositionContext();
    const int result =
        composition::GenerateWeather(metar, synop, grib, record, magneticVariation, context);
    if (isLineTaken(loglevel::kDebug)) { // the text costs more than the record
        Q_EMIT sigDebugString(QString::fromStdString(newWeatherText(record)), loglevel::kDebug);
    }
    return result;
}

void WeatherWrapper::setSimulator(aviation::FsId simulator)
{
    m_simulator.store(simulator, std::memory_order_relaxed);
}

aviation::FsId WeatherWrapper::simulator() const
{
    return m_simulator.load(std::memory_order_relaxed);
}

void WeatherWrapper::setLeastLogLevel(int level)
{
    m_leastLogLevel = level;
}

bool WeatherWrapper::isLineTaken(int level) const
{
    return level >= m_leastLogLevel
           && isSignalConnected(QMetaMethod::fromSignal(&WeatherWrapper::sigDebugString));
}

CompositionContext WeatherWrapper::compositionContext()
{
    CompositionOptions options = CompositionOptions::fromSettings(m_settings);
    options.simulator = simulator();
    options.drawRandomCavok(m_random);
    return {options, m_random, [this](const QString& text, int level) {
                Q_EMIT sigDebugString(text, level);
            }};
}

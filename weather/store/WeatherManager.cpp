#include "weather/store/WeatherManager.h"

#include "app/base/LogLevel.h"
#include "aviation/support/Clock.h"
#include "aviation/support/NumberText.h"
#include "aviation/support/ReportTime.h"
#include "aviation/support/ScopedLock.h"
#include "weather/store/StationRow.h"
#include "weather/store/TextPieces.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace aviation::weather {

namespace {

constexpr double kAirportLimitNm = 20.0;
constexpr std::size_t kStationStep = 500;

/// std::to_wstring looks at the locale and takes ten times as long.
std::wstring numberText(std::size_t value)
{
    return widen(std::to_string(value));
}

int clampedInt(std::size_t value)
{
    constexpr std::size_t kMax = std::numeric_limits<int>::max();
    return static_cast<int>(std::min(value, kMax));
}

} // namespace

WeatherManager::WeatherManager(StoreListener listener) : m_listener(std::move(listener)) {}

WeatherManager::~WeatherManager() = default;

void WeatherManager::progress(int value, int total, std::wstring text)
{
    if (m_listener.progress) {
        m_listener.progress(value, total, std::move(text));
    }
}

void WeatherManager::debug(std::wstring text, int level)
{
    if (m_listener.debug) {
        m_listener.debug(std::move(text), level);
    }
}

/// Without a listener the loops needn't build texts.
bool WeatherManager::isQuiet() const
{
    return !m_listener.progress && !m_listener.debug;
}

void WeatherManager::tell(std::size_t value, std::size_t total, std::wstring text)
{
    if (!isQuiet()) {
        progress(clampedInt(value), clampedInt(total), std::move(text));
    }
}

void WeatherManager::tellCount(const wchar_t* text, std::size_t value, std::size_t total)
{
    if (!isQuiet()) {
        tell(value, total, text + (L" " + numberText(value)) + L" from " + numberText(total));
    }
}

void WeatherManager::tellEnd(const wchar_t* what, std::size_t count)
{
    if (!isQuiet()) {
        tell(0, 0, what);
        debug(std::wstring(L"(WeatherManager) - ") + what + L": " + numberText(count),
              loglevel::kNotification);
    }
}

bool WeatherManager::tellReplaced(bool isKept, const wchar_t* what, std::size_t count)
{
    if (isKept) {
        tell(0, 0, {});
    } else {
        tellEnd(what, count);
    }
    return !isKept;
}

void WeatherManager::addAirport(Station airport)
{
    const ScopedLock lock(m_mutex);
    std::wstring icao = airport.icao();
    m_airports.add(std::move(icao), std::move(airport));
}

void WeatherManager::addAirports(std::vector<Station> airports)
{
    const ScopedLock lock(m_mutex);
    for (Station& airport : airports) {
        std::wstring icao = airport.icao();
        m_airports.add(std::move(icao), std::move(airport));
    }
}

void WeatherManager::setWeatherStations(std::wstring_view text)
{
    std::vector<StationRow> rows;
    TextPieces lines(text, L'\n');
    const std::size_t total = lines.count();
    for (std::size_t number = 1; const auto line = lines.next(); ++number) {
        if (auto row = parseStationRow(*line)) {
            rows.push_back(std::move(*row));
        }
        if (number % kStationStep == 0) {
            tell(number, total, L"Decoding Weather Station");
        }
    }
    {
        const ScopedLock lock(m_mutex);
        for (StationRow& row : rows) {
            m_stations.add(std::move(row.number), std::move(row.station));
        }
    }
    tell(0, 0, {});
}

int WeatherManager::deleteOldSynops(int maxAgeSeconds)
{
    const std::int64_t now = epochSeconds(Clock::current().NowUtc());
    std::vector<std::array<std::size_t, 3>> steps; // reported when the lock is free
    const auto note = [&steps](std::size_t walked, std::size_t total, std::size_t deleted) {
        steps.push_back({walked, total, deleted});
    };
    std::vector<Synop> old;
    {
        const ScopedLock lock(m_mutex);
        old = m_synops.takeOld(now, maxAgeSeconds, isQuiet() ? SynopManager::Progress() : note);
    }
    for (const auto& [walked, total, deleted] : steps) {
        tell(walked, total,
             L"check of additional weather data " + numberText(walked) + L" from "
                 + numberText(total) + L", deleted: " + numberText(deleted));
    }
    return static_cast<int>(old.size());
}

std::size_t WeatherManager::airportCount() const
{
    const ScopedLock lock(m_mutex);
    return m_airports.size();
}

std::size_t WeatherManager::stationCount() const
{
    const ScopedLock lock(m_mutex);
    return m_stations.size();
}

std::size_t WeatherManager::metarCount() const
{
    const ScopedLock lock(m_mutex);
    return m_metars.size();
}

std::size_t WeatherManager::synopCount() const
{
    const ScopedLock lock(m_mutex);
    return m_synops.size();
}

std::size_t WeatherManager::tafCount() const
{
    const ScopedLock lock(m_mutex);
    return m_tafs.size();
}

std::size_t WeatherManager::gribCount() const
{
    const ScopedLock lock(m_mutex);
    return m_gribs.size();
}

bool WeatherManager::getStation(std::wstring_view icao, Station& station) const
{
    const ScopedLock lock(m_mutex);
    const Station* entry = m_airports.entry(m_airports.indexOf(icao));
    if (entry == nullptr) {
        return false;
    }
    station = *entry;
    return true;
}

std::vector<Metar> WeatherManager::getMetars() const
{
    const ScopedLock lock(m_mutex);
    return m_metars.metars();
}

std::wstring WeatherManager::GetTaf(std::wstring_view icao) const
{
    const ScopedLock lock(m_mutex);
    return m_tafs.taf(icao);
}

std::vector<std::wstring> WeatherManager::failedMetarStations() const
{
    const ScopedLock lock(m_mutex);
    return m_failedMetars;
}

std::vector<std::wstring> WeatherManager::failedSynopStations() const
{
    const ScopedLock lock(m_mutex);
    return m_failedSynops;
}

bool WeatherManager::SearchMetar(const Position& position, Metar& metar)
{
    const Clock::UtcTime now = Clock::current().NowUtc();
    const ScopedLock lock(m_mutex);
    if (!m_metars.Nearest(position, metar)) {
        return false;
    }
    metar.setOutdated(false); // only the entry says so, also when an earlier search has flagged it
    if (isTimeGroupOld(metar.timeGroup(), now)) {
        m_metars.markOutdated(metar.icao());
    }
    return true;
}

bool WeatherManager::SearchSynop(const Position& position, Synop& synop)
{
    const ScopedLock lock(m_mutex);
    return m_synops.Nearest(position, synop);
}

bool WeatherManager::SearchGrib(const Position& position, Grib& grib)
{
    const ScopedLock lock(m_mutex);
    return m_gribs.Nearest(position, grib) == gribstatus::kDecoded;
}

void WeatherManager::StationsInRange(const Position& position, int rangeNm,
                                     std::vector<Station>& stations) const
{
    const ScopedLock lock(m_mutex);
    stations = m_airports.within(position, rangeNm);
}

void WeatherManager::NearestAirport(const Position& position, Station& station) const
{
    const ScopedLock lock(m_mutex);
    if (const Station* entry = m_airports.nearest(position, kAirportLimitNm)) {
        station = *entry;
    }
}

} // namespace aviation::weather

#include "app/base/LogLevel.h"
#include "aviation/support/ScopedLock.h"
#include "weather/store/TextPieces.h"
#include "weather/store/UpperAirText.h"
#include "weather/store/WeatherManager.h"

#include <algorithm>
#include <utility>

namespace aviation::weather {

namespace {

constexpr std::size_t kShortestReport = 10;
constexpr std::size_t kMetarStep = 10;
constexpr std::size_t kSynopStep = 100;
constexpr std::size_t kGribStep = 6;
constexpr std::size_t kTafStep = 11;

/// A line too short for a report, or the date line that the NOAA format writes above each one,
/// "2011/11/23 02:15".
bool isNoReportLine(std::wstring_view line)
{
    constexpr std::size_t kDateSlash = 4;
    return line.size() < kShortestReport || line[kDateSlash] == L'/';
}

/// How many reports to expect. Real ones are longer than the divisor, so a text of many empty
/// pieces can't ask for memory that it doesn't fill.
std::size_t likelyReports(std::wstring_view text, std::size_t pieces)
{
    constexpr std::size_t kLittleReport = 40;
    return std::min(pieces, text.size() / kLittleReport);
}

} // namespace

/// What Initialize builds aside from METARs.
struct WeatherManager::MetarRun
{
    MetarManager metars;
    std::vector<std::wstring> failed;
};

/// What Initialize builds aside from SYNOPs.
struct WeatherManager::SynopRun
{
    SynopManager synops;
    std::vector<std::wstring> failed;
    std::wstring key; ///< of the report under way; here so that its memory serves all
};

bool WeatherManager::Initialize(std::wstring_view text, int kind, bool noaaFormat,
                                std::size_t fewest)
{
    switch (kind) {
    case storekind::kMetar:
        return initializeMetars(text, noaaFormat, fewest);
    case storekind::kSynop:
        return initializeSynops(text, fewest);
    case storekind::kUpperAir:
        return initializeGribs(text);
    case storekind::kTaf:
        initializeTafs(text);
        return true;
    default:
        return false;
    }
}

bool WeatherManager::placeReport(const StationTable& table, std::wstring_view key,
                                 WeatherBase& report)
{
    bool isOutOfRange = false;
    {
        const ScopedLock lock(m_mutex);
        const std::size_t index = table.indexOf(key);
        if (const Station* entry = table.entry(index)) {
            report.setPlace(*entry);
            return true;
        }
        isOutOfRange = index != 0;
    }
    if (isOutOfRange) {
        debug(L"WeatherStation: vecAirport out of range\n", loglevel::kDebug);
    }
    return false;
}

bool WeatherManager::initializeMetars(std::wstring_view text, bool noaaFormat, std::size_t fewest)
{
    tell(0, 1, L"Initialize of metar data");
    MetarRun run;
    TextPieces lines(text, L'\n');
    const std::size_t total = lines.count();
    run.metars.reserve(likelyReports(text, total));
    for (std::size_t number = 1; const auto line = lines.next(); ++number) {
        addMetar(*line, noaaFormat, run);
        if (number % kMetarStep == 0) {
            tellCount(L"Initialize of metar data", number, total);
        }
    }
    const std::size_t count = run.metars.size();
    bool isKept = false;
    {
        const ScopedLock lock(m_mutex);
        isKept = count < fewest && count < m_metars.size();
        if (!isKept) {
            std::swap(m_metars, run.metars);
            m_failedMetars.swap(run.failed);
        }
    }
    return tellReplaced(isKept, L"metar initialization completed", count);
}

void WeatherManager::addMetar(std::wstring_view line, bool noaaFormat, MetarRun& run)
{
    if (isNoReportLine(line)) {
        return;
    }
    Metar& metar = run.metars.append(std::wstring(line));
    if (metar.DecodeHeader() != metarstatus::kDecoded) {
        debug(metar.GetMessage(), loglevel::kDebug); // no reason to drop it
    }
    // The list is ordered newest first, so an older report of the same station isn't wanted.
    if (noaaFormat && run.metars.contains(metar.icao())) {
        run.metars.dropLast();
    } else if (placeReport(m_airports, metar.icao(), metar)) {
        run.metars.nameLast();
    } else {
        run.failed.push_back(metar.icao());
        run.metars.dropLast();
    }
}

bool WeatherManager::initializeSynops(std::wstring_view text, std::size_t fewest)
{
    tell(0, 1, L"Initialize of additional weather data");
    SynopRun run;
    TextPieces pieces(text, L'=');
    const std::size_t total = pieces.count();
    run.synops.reserve(likelyReports(text, total));
    for (std::size_t number = 1; const auto piece = pieces.next(); ++number) {
        addSynop(*piece, run);
        if (number % kSynopStep == 0) {
            tellCount(L"Initialize of additional weather data", number, total);
        }
    }
    const std::size_t count = run.synops.size();
    bool isKept = false;
    {
        const ScopedLock lock(m_mutex);
        isKept = count < fewest && count < m_synops.size();
        if (!isKept) {
            std::swap(m_synops, run.synops);
            m_failedSynops.swap(run.failed);
        }
    }
    return tellReplaced(isKept, L"additional weather data initialization completed", count);
}

void WeatherManager::addSynop(std::wstring_view piece, SynopRun& run)
{
    std::wstring text = withoutLineEnds(piece);
    if (text.size() < kShortestReport) {
        return;
    }
    Synop& synop = run.synops.append(std::move(text));
    if (synop.DecodeHeader() != synopstatus::kDecoded) {
        debug(synop.GetMessage(), loglevel::kDebug);
        run.synops.dropLast();
        return;
    }
    // Reports give five digits of a number that has six in the table.
    run.key.assign(synop.icao()).push_back(L'0');
    if (!placeReport(m_stations, run.key, synop) && !synop.hasOwnPosition()) {
        run.failed.push_back(synop.icao());
        run.synops.dropLast();
    }
}

bool WeatherManager::initializeGribs(std::wstring_view text)
{
    tell(0, 1, L"Initalize wind data"); // the spelling is what people search the log for
    TextPieces lines(text, L'\n');
    const std::size_t total = lines.count();
    std::size_t number = 1;
    UpperAirHeader header;
    if (readUpperAirHeader(text, header)) {
        lines.next();
        ++number;
    }
    if (header.isError) {
        debug(std::move(header.text), loglevel::kDebug);
        return false;
    }
    std::vector<Grib> gribs;
    for (; const auto line = lines.next(); ++number) {
        if (!line->empty()) {
            Grib& grib = gribs.emplace_back(std::wstring(*line));
            grib.setTime(header.time);
            grib.DecodeHeader();
        }
        if (number % kGribStep == 0) {
            tellCount(L"Initialize of wind data", number, total);
        }
    }
    storeGribs(std::move(gribs));
    tell(0, 0, L"grib data initialization completed");
    return true;
}

void WeatherManager::storeGribs(std::vector<Grib> gribs)
{
    std::size_t failures = 0;
    {
        const ScopedLock lock(m_mutex);
        for (Grib& grib : gribs) {
            failures += m_gribs.add(std::move(grib)) ? 0 : 1;
        }
    }
    for (; failures > 0; --failures) {
        // Names another manager than the one concerned; people know the line like this.
        debug(L"MetarManager: GetMyMetar out of range", loglevel::kError);
    }
}

void WeatherManager::initializeTafs(std::wstring_view text)
{
    tell(0, 1, L"Initialize of TAF");
    const std::vector<std::wstring_view> reports = splitTafs(text);
    TafManager tafs;
    for (std::size_t number = 1; const std::wstring_view report : reports) {
        tafs.add(report);
        if (number % kTafStep == 0) {
            tellCount(L"Initialize of TAF", number, reports.size());
        }
        ++number;
    }
    const std::size_t count = tafs.size();
    {
        const ScopedLock lock(m_mutex);
        std::swap(m_tafs, tafs);
    }
    tellEnd(L"TAF initialization completed", count);
}

} // namespace aviation::weather

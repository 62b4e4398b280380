#include "app/jobs/WeatherJobs.h"
#include "cli/CliCommands.h"
#include "cli/CliOptions.h"
#include "cli/CliSession.h"
#include "cli/Json.h"

#include <QJsonArray>

#include <ostream>

using namespace aviation::weather;

namespace {

QJsonValue withDistance(QJsonObject object, const aviation::Position& at,
                        const aviation::Position& report)
{
    object[QStringLiteral("distance")] = report.DistanceTo(at);
    return object;
}

} // namespace

void runStore(const CliOptions& options, CliStreams& streams)
{
    CliSession session(options, streams.err);
    session.fillStore();
    const WeatherWrapper& store = session.store();
    const QJsonObject counts{{QStringLiteral("airports"), static_cast<int>(store.airportCount())},
                             {QStringLiteral("stations"), static_cast<int>(store.stationCount())},
                             {QStringLiteral("metars"), static_cast<int>(store.metarCount())},
                             {QStringLiteral("synops"), static_cast<int>(store.synopCount())},
                             {QStringLiteral("tafs"), static_cast<int>(store.tafCount())},
                             {QStringLiteral("gribs"), static_cast<int>(store.gribCount())},
                             {QStringLiteral("failedMetarStations"),
                              QJsonArray::fromStringList(store.failedMetarStations())},
                             {QStringLiteral("failedSynopStations"),
                              QJsonArray::fromStringList(store.failedSynopStations())}};
    streams.out << clijson::jsonLine(counts) << '\n';
}

void runNearest(const CliOptions& options, CliStreams& streams)
{
    CliSession session(options, streams.err);
    session.fillStore();
    const aviation::Position& at = *options.at;
    Metar metar;
    Synop synop;
    Grib grib;
    QJsonObject object{{QStringLiteral("metar"), QJsonValue()},
                       {QStringLiteral("synop"), QJsonValue()},
                       {QStringLiteral("grib"), QJsonValue()}};
    if (session.store().SearchMetar(at, metar)) {
        object[QStringLiteral("metar")] = withDistance(clijson::fromMetar(metar), at, metar);
    }
    if (session.store().SearchSynop(at, synop)) {
        object[QStringLiteral("synop")] = withDistance(clijson::fromSynop(synop), at, synop);
    }
    if (!session.settings().gribOff() && session.store().SearchGrib(at, grib)) {
        object[QStringLiteral("grib")] = withDistance(clijson::fromGrib(grib), at, grib);
    }
    streams.out << clijson::jsonLine(object) << '\n';
}

void runStations(const CliOptions& options, CliStreams& streams)
{
    CliSession session(options, streams.err);
    session.fillStore();
    std::vector<Station> stations;
    session.store().StationsInRange(*options.at, options.range.value_or(session.settings().range()),
                                    stations);
    for (Station& station : stations) {
        station.setDistance(station.DistanceTo(*options.at));
        streams.out << clijson::jsonLine(clijson::fromStation(station)) << '\n';
    }
}

void runSearch(const CliOptions& options, CliStreams& streams)
{
    CliSession session(options, streams.err);
    session.fillStore();
    QObject::connect(
        &session.worker(), &WeatherWorker::sigMetarFromWeatherSearch,
        [&streams](const QString& metar) { streams.out << metar.toStdString() << '\n'; });
    CliSession::requireSuccess(session.runJob(Job(weatherjob::kWeatherSearch, options.criteria)));
}

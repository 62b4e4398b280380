#include "app/jobs/WeatherJobs.h"
#include "app/jobs/XPlaneFiles.h"
#include "cli/CliCommands.h"
#include "cli/CliOptions.h"
#include "cli/CliSession.h"
#include "cli/Json.h"
#include "weather/output/records/XPlaneWeatherText.h"

#include <functional>
#include <map>
#include <ostream>

namespace {

using Step = std::function<void(CliSession&, const CliOptions&, std::ostream&)>;

void prepareRecord(CliSession& session, const CliOptions& options, std::ostream& out)
{
    aviation::weather::Station station;
    station.setPosition(*options.at);
    if (!options.icao.isEmpty() && !session.store().getStation(options.icao, station)) {
        throw CliFailure{
            cliexit::kFailed,
            QStringLiteral("no station %1 in the table of airports").arg(options.icao)};
    }
    if (!station.isKnown()) {
        CliSession::requireSuccess(weathererror::kNoPosition);
    }
    NewWeather record;
    session.worker().GenerateStationRecord(station, record, options.magneticVariation);
    out << clijson::jsonLine(clijson::fromRecord(record)) << '\n';
}

void prepareFsuipc(CliSession& session, const CliOptions& options, std::ostream& out)
{
    CliSession::requireSuccess(session.runJob(Job(weatherjob::kFsuipcAll, options.destination)));
    for (const NewWeather& record : session.worker().fsuipcRecords()) {
        out << clijson::jsonLine(clijson::fromRecord(record)) << '\n';
    }
}

void prepareObservations(CliSession& session, const CliOptions& options, std::ostream& out)
{
    CliSession::requireSuccess(
        session.runJob(Job(weatherjob::kSimConnectAll, options.destination)));
    for (const QString& text : session.worker().simConnectStrings()) {
        out << text.toStdString() << '\n';
    }
}

[[noreturn]] void cannotWrite(const QString& fault)
{
    throw CliFailure{cliexit::kFailed,
                     QStringLiteral("%1 %2: %3")
                         .arg(weathererror::kCannotCreateFile)
                         .arg(weatherErrorText(weathererror::kCannotCreateFile), fault)};
}

void prepareTheme(CliSession& session, const CliOptions& options, std::ostream& /*out*/)
{
    const int result = session.runJob(Job(weatherjob::kThemeFile, options.out));
    if (result == weathererror::kCannotCreateFile) {
        cannotWrite(session.worker().themeFault());
    }
    CliSession::requireSuccess(result);
}

void prepareXPlaneFiles(CliSession& session, const CliOptions& options, std::ostream& /*out*/)
{
    CliSession::requireSuccess(session.runJob(Job(weatherjob::kXPlaneFiles, QString())));
    const XPlaneFilesResult result = saveXPlaneFiles(
        options.out, session.worker().xplaneMetarLines(), session.worker().xplaneWindLines());
    if (!result.written) {
        cannotWrite(result.failedFile + QStringLiteral(", ") + result.error);
    }
}

void prepareXPlaneRecord(CliSession& session, const CliOptions& options, std::ostream& out)
{
    const bool twelve = options.generation == 12;
    CliSession::requireSuccess(session.runJob(
        Job(twelve ? weatherjob::kXPlane12Record : weatherjob::kXPlaneRecord, QString())));
    const XPlaneWeather record = session.worker().xplaneRecord();
    out << (twelve ? xPlaneWeatherWxText(record) : xPlaneWeatherText(record)) << '\n';
}

} // namespace

void runPrepare(const CliOptions& options, CliStreams& streams)
{
    static const std::map<QString, Step> kSteps{
        {QStringLiteral("record"), prepareRecord},
        {QStringLiteral("fsuipc"), prepareFsuipc},
        {QStringLiteral("observations"), prepareObservations},
        {QStringLiteral("theme"), prepareTheme},
        {QStringLiteral("xplane-files"), prepareXPlaneFiles},
        {QStringLiteral("xplane-record"), prepareXPlaneRecord},
    };
    CliSession session(options, streams.err);
    session.fillStore();
    kSteps.at(options.command.last())(session, options, streams.out);
}

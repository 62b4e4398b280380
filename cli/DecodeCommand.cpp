#include "cli/CliCommands.h"
#include "cli/CliOptions.h"
#include "cli/Json.h"
#include "cli/ReportPrefix.h"
#include "cli/StrictJson.h"

#include <istream>
#include <ostream>
#include <string>

using namespace aviation::weather;

namespace {

std::wstring wideLine(const std::string& line)
{
    const bool endsInReturn = !line.empty() && line.back() == '\r';
    const auto length = static_cast<int>(line.size()) - (endsInReturn ? 1 : 0);
    return QString::fromUtf8(line.data(), length).toStdWString();
}

template <typename Report>
Report decoded(const std::wstring& text, const CliOptions& options)
{
    Report report(text);
    report.setElevation(options.elevation);
    report.Decode();
    return report;
}

QJsonObject decodedObject(const std::wstring& text, const CliOptions& options)
{
    const QString& kind = options.command.last();
    if (kind == QLatin1String("metar")) {
        const auto metar = decoded<Metar>(std::wstring(withoutReportPrefix(text)), options);
        return options.strict ? clijson::strictMetar(metar) : clijson::fromMetar(metar);
    }
    if (kind == QLatin1String("synop")) {
        const auto synop = decoded<Synop>(text, options);
        return options.strict ? clijson::strictSynop(synop) : clijson::fromSynop(synop);
    }
    const auto grib = decoded<Grib>(text, options);
    return options.strict ? clijson::strictGrib(grib) : clijson::fromGrib(grib);
}

} // namespace

void runDecode(const CliOptions& options, CliStreams& streams)
{
    std::string line;
    while (std::getline(streams.in, line)) {
        streams.out << clijson::jsonLine(decodedObject(wideLine(line), options)) << '\n'
                    << std::flush;
        if (!streams.out) {
            return; // the reader is gone
        }
    }
}

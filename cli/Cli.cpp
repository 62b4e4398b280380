#include "cli/Cli.h"

#include "cli/CliCommands.h"
#include "cli/CliOptions.h"

#include <exception>
#include <functional>
#include <map>
#include <ostream>

namespace {

/// The clock of one call: stands still when a time was given. Nothing waits for files to settle
/// here, so sleeping is left out.
class CliClock final : public aviation::Clock
{
public:
    explicit CliClock(std::optional<UtcTime> now) : m_fixed(now) { install(this); }
    ~CliClock() override { install(nullptr); }

    UtcTime NowUtc() const override
    {
        using namespace std::chrono;
        return m_fixed.value_or(time_point_cast<milliseconds>(system_clock::now()));
    }

    std::int64_t MonotonicMs() const override
    {
        using namespace std::chrono;
        return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    }

    void SleepMs(int /*milliseconds*/) override {}

private:
    std::optional<UtcTime> m_fixed;
};

using Command = std::function<void(const CliOptions&, CliStreams&)>;

void runCommand(const CliOptions& options, CliStreams& streams)
{
    static const std::map<QString, Command> kCommands{
        {QStringLiteral("decode"), runDecode},   {QStringLiteral("store"), runStore},
        {QStringLiteral("nearest"), runNearest}, {QStringLiteral("stations"), runStations},
        {QStringLiteral("search"), runSearch},   {QStringLiteral("prepare"), runPrepare},
        {QStringLiteral("wind"), runWind},
    };
    kCommands.at(options.command.first())(options, streams);
}

} // namespace

int runCli(const QStringList& arguments, std::istream& in, std::ostream& out, std::ostream& err)
{
    CliStreams streams{in, out, err};
    try {
        const CliOptions options = parseCliOptions(arguments);
        if (options.help) {
            out << cliHelp().toStdString();
            return cliexit::kDone;
        }
        if (options.version) {
            out << cliVersion().toStdString();
            return cliexit::kDone;
        }
        const CliClock clock(options.now);
        runCommand(options, streams);
        out.flush();
        if (!out) {
            throw CliFailure{cliexit::kFailed, QStringLiteral("standard output can't be written")};
        }
        return cliexit::kDone;
    } catch (const CliFailure& failure) {
        out.flush();
        QString line = failure.line;
        line.replace(QLatin1Char('\n'), QLatin1Char(' '));
        err << line.toStdString() << '\n';
        return failure.exitStatus;
    } catch (const std::exception& failure) { // out of memory on an absurd input
        err << "the work failed: " << failure.what() << '\n';
        return cliexit::kFailed;
    }
}

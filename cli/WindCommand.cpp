#include "app/base/LogLevel.h"
#include "cli/CliCommands.h"
#include "cli/CliOptions.h"
#include "cli/CliSession.h"
#include "cli/Json.h"
#include "cli/WindCase.h"
#include "dwc/ModelDirectWindControl.h"

#include <QLocale>

#include <cmath>
#include <istream>
#include <ostream>

using aviation::Clock;
using aviation::weather::Wind;

namespace {

/// The clock of one case: moves only by what its events say.
class CaseClock final : public Clock
{
public:
    explicit CaseClock(std::int64_t startMs) : m_before(current()), m_nowMs(startMs)
    {
        install(this);
    }
    ~CaseClock() override { install(&m_before); }

    UtcTime NowUtc() const override { return UtcTime(std::chrono::milliseconds(m_nowMs)); }
    std::int64_t MonotonicMs() const override { return m_nowMs; }
    void SleepMs(int /*milliseconds*/) override {}

    void advance(std::int64_t byMs)
    {
        constexpr std::int64_t kEndMs = 900000000000000; // the calendar goes on a little longer
        m_nowMs += byMs;
        if (m_nowMs > kEndMs) {
            throw windcase::BadLine{QStringLiteral("the clock runs out of the calendar")};
        }
    }

private:
    Clock& m_before;
    std::int64_t m_nowMs;
};

/// The numbers of a list, over and over; an empty list gives 0.
class ListedRandom final : public aviation::RandomSource
{
public:
    explicit ListedRandom(const std::vector<std::int32_t>& numbers) : m_numbers(numbers) {}
    std::int32_t next() override
    {
        return m_numbers.empty() ? 0 : m_numbers[m_at++ % m_numbers.size()];
    }

private:
    const std::vector<std::int32_t>& m_numbers;
    std::size_t m_at = 0;
};

/// While it lives the debug stream goes into the log of the call, which is off unless asked for.
class DebugStreamIntoLog
{
public:
    explicit DebugStreamIntoLog(Settings& log) : m_before(qInstallMessageHandler(take))
    {
        s_log = &log;
    }
    DebugStreamIntoLog(const DebugStreamIntoLog&) = delete;
    DebugStreamIntoLog& operator=(const DebugStreamIntoLog&) = delete;
    ~DebugStreamIntoLog() { qInstallMessageHandler(m_before); }

private:
    static void take(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
    {
        const int level = type == QtDebugMsg ? loglevel::kDebug : loglevel::kWarning;
        Q_EMIT s_log->sigDebugString(text, level);
    }

    static inline Settings* s_log = nullptr;
    QtMessageHandler m_before;
};

// JSON by hand: the fields stand in the order in which they are written; QJsonObject sorts them.

QByteArray json(float value)
{
    const auto number = static_cast<double>(value);
    return std::isfinite(number) ? QByteArray::number(number, 'g', QLocale::FloatingPointShortest)
                                 : QByteArrayLiteral("null");
}

QByteArray json(const Wind& wind)
{
    return "{\"dir\":" + json(wind.Dir) + ",\"speed\":" + json(wind.Speed)
           + ",\"gust\":" + json(wind.Gust) + '}';
}

QByteArray json(const XPlaneWindLayer& layer)
{
    QByteArray text = '[' + json(layer.Alt);
    for (const float value :
         {layer.Dir, layer.Speed, layer.Turbulence, layer.ShearDir, layer.ShearSpeed,
          layer.Further[0], layer.Further[1], layer.Further[2], layer.Further[3], layer.Marker})
    {
        text += ',' + json(value);
    }
    return text + ']';
}

/// The texts of direct wind control consist of digits and signs that need no escape.
QByteArray json(const QString& text)
{
    return '"' + text.toUtf8() + '"';
}

QByteArray json(const std::vector<XPlaneWindLayer>& layers)
{
    QByteArray text;
    for (const XPlaneWindLayer& layer : layers) {
        text += (text.isEmpty() ? "" : ",") + json(layer);
    }
    return '[' + text + ']';
}

QByteArray stepOf(const ModelDirectWindControl& model)
{
    return ",\"out\":" + json(model.GetWind()) + ",\"target\":" + json(model.windTarget())
           + ",\"gust\":" + json(model.windGust()) + ",\"force\":" + json(model.gustInForce())
           + ",\"job\":" + json(model.jobName()) + '}';
}

QByteArray xplaneStepOf(const ModelDirectWindControl& model)
{
    return ",\"layers\":" + json(model.GetXPlaneLayers()) + ",\"text\":" + json(model.layersText())
           + '}';
}

/// Runs one case on a fresh model.
class CaseRun
{
public:
    CaseRun(const windcase::Case& wind, std::int64_t startMs, Settings& settings)
        : m_case(wind)
        , m_settings(settings)
        , m_clock(wind.startMs.value_or(startMs))
        , m_random(wind.random)
        , m_model(settings, m_random)
    {}

    QByteArray answer()
    {
        apply(m_case.settings);
        for (const windcase::Event& event : m_case.events) {
            run(event);
        }
        return "{\"steps\":[" + m_steps + "]}";
    }

private:
    void apply(const windcase::Steering& steering)
    {
        m_settings.setDwcDegreesPerSecond(steering.degreesPerSecond);
        m_settings.setDwcKnotsPerSecond(steering.knotsPerSecond);
        m_settings.setGustySurfaceWind(steering.gusty);
    }

    void run(const windcase::Event& event)
    {
        m_clock.advance(event.afterMs);
        if (event.weather) {
            m_model.setReports(event.weather->metar, event.weather->synop, event.weather->levels);
        }
        if (event.aircraft) {
            m_model.SetAircraftData(*event.aircraft);
        }
        if (event.settings) {
            apply(*event.settings);
        }
        for (int i = 0; i < event.steps; ++i) {
            startStep(event.everyMs);
            m_model.Step();
            m_steps += stepOf(m_model);
        }
        for (int i = 0; i < event.xplaneSteps; ++i) {
            startStep(event.everyMs);
            m_model.StepXPlane();
            m_steps += xplaneStepOf(m_model);
        }
    }

    void startStep(std::int64_t everyMs)
    {
        m_clock.advance(everyMs);
        m_steps += m_steps.isEmpty() ? "{\"at\":" : ",{\"at\":";
        m_steps += QByteArray::number(static_cast<qlonglong>(m_clock.MonotonicMs()));
    }

    const windcase::Case& m_case;
    Settings& m_settings;
    CaseClock m_clock;
    ListedRandom m_random;
    ModelDirectWindControl m_model;
    QByteArray m_steps;
};

windcase::Steering steeringOf(const Settings& settings)
{
    return {settings.dwcDegreesPerSecond(), settings.dwcKnotsPerSecond(),
            settings.gustySurfaceWind()};
}

/// Without a start of its own a case starts at the time of the call, if that was given, else at 0.
std::int64_t startOf(const CliOptions& options)
{
    return options.now ? options.now->time_since_epoch().count() : 0;
}

/// Answers all lines; a bad one costs only itself. Returns what is wrong with the first bad one.
QString answerLines(const CliOptions& options, Settings& settings, CliStreams& streams)
{
    const windcase::Steering defaults = steeringOf(settings);
    QString firstBad;
    std::string line;
    for (int number = 1; std::getline(streams.in, line) && streams.out; ++number) {
        try {
            const windcase::Case wind = windcase::readCase(line, defaults);
            const QByteArray answer = CaseRun(wind, startOf(options), settings).answer();
            streams.out << answer.constData() << '\n' << std::flush;
        } catch (const windcase::BadLine& bad) {
            const QString where = QStringLiteral("line %1: %2").arg(number).arg(bad.reason);
            firstBad = firstBad.isEmpty() ? where : firstBad;
            streams.out << clijson::jsonLine({{QStringLiteral("error"), bad.reason}}) << '\n'
                        << std::flush;
        }
    }
    return firstBad;
}

} // namespace

void runWind(const CliOptions& options, CliStreams& streams)
{
    CliSession session(options, streams.err);
    const DebugStreamIntoLog debugStream(session.settings());
    const QString firstBad = answerLines(options, session.settings(), streams);
    if (!firstBad.isEmpty()) {
        throw CliFailure{cliexit::kInput, QStringLiteral("standard input, ") + firstBad};
    }
}

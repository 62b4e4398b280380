#pragma once

#include "aviation/support/Clock.h"

#include <QFile>
#include <QString>

#include <TestPaths.h>
#include <chrono>

/// Stands at the hour of the demonstration weather and doesn't sleep.
class WorldHourClock final : public aviation::Clock
{
public:
    WorldHourClock() { install(this); }
    ~WorldHourClock() override { install(nullptr); }
    UtcTime NowUtc() const override
    {
        using namespace std::chrono;
        return UtcTime(sys_days(2019y / July / 1) + hours(12));
    }
    std::int64_t MonotonicMs() const override { return 0; }
    void SleepMs(int /*milliseconds*/) override {}
};

/// The demonstration weather with its SYNOPs repeated until there are at least as many.
inline QString worldHourText(int synops)
{
    QFile file(QStringLiteral(CIRRILON_SOURCE_DIR "/resources/demo/weather.wx"));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QString text = QString::fromUtf8(file.readAll());
    const QString opening = QStringLiteral("[SYNOP]");
    const int start = text.indexOf(opening) + opening.size();
    const QString block = text.mid(start, text.indexOf(QStringLiteral("[/SYNOP]")) - start);
    const int reports = block.count(QLatin1Char('='));
    if (reports > 0) {
        text.insert(start, block.repeated((synops + reports - 1) / reports - 1));
    }
    return text;
}

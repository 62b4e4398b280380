#include "app/download/GlobalWindFile.h"

#include "aviation/support/NumberText.h"

#include <chrono>

namespace {

constexpr int kHoursPerCycle = 6;
constexpr int kHoursPerDay = 24;
constexpr std::chrono::seconds kDelay(21600); // from the start of a run to its files

QString digits(int value, int width)
{
    return QString::fromStdString(aviation::integerText(value, width));
}

int hourOf(aviation::Clock::UtcTime time)
{
    const auto day = std::chrono::floor<std::chrono::days>(time);
    return static_cast<int>(std::chrono::floor<std::chrono::hours>(time - day).count());
}

} // namespace

GlobalWindFile GlobalWindFile::at(aviation::Clock::UtcTime now)
{
    const auto run = now - kDelay;
    const auto runDay = std::chrono::floor<std::chrono::days>(run);
    const bool otherDay = runDay != std::chrono::floor<std::chrono::days>(now);
    const std::chrono::year_month_day date(runDay);

    GlobalWindFile file;
    file.cycle = hourOf(run) / kHoursPerCycle * kHoursPerCycle;
    const int hours = (otherDay ? kHoursPerDay : 0) - file.cycle + hourOf(now);
    file.step = hours / kHoursPerCycle * kHoursPerCycle;
    file.date = digits(static_cast<int>(date.year()), 0)
                + digits(static_cast<int>(static_cast<unsigned>(date.month())), 2)
                + digits(static_cast<int>(static_cast<unsigned>(date.day())), 2);
    file.name = QStringLiteral("gfs.t%1z.wafs_grb45f%2.grib2")
                    .arg(digits(file.cycle, 2), digits(file.step, 2));
    return file;
}

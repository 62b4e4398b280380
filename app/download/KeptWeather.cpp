#include "app/download/KeptWeather.h"

#include "app/base/WriteFault.h"
#include "aviation/support/Clock.h"

#include <QDateTime>
#include <QSaveFile>

#include <algorithm>

namespace keptweather {

namespace {

const QString kHead = QStringLiteral("Cirrilon, weather fetched ");

} // namespace

QString fileName(const QString& workFolder)
{
    return workFolder + QStringLiteral("lastweather.txt");
}

QString write(const QString& file, const QString& text)
{
    const qint64 now = aviation::Clock::current().NowUtc().time_since_epoch().count();
    const QString time = QDateTime::fromMSecsSinceEpoch(now, Qt::UTC).toString(Qt::ISODate);
    const QByteArray bytes = (kHead + time + QLatin1Char('\n') + text).toUtf8();
    QSaveFile saved(file);
    const bool written = saved.open(QIODevice::WriteOnly) && saved.write(bytes) == bytes.size();
    if (!written) {
        return writeFault(saved);
    }
    return saved.commit() ? QString() : saved.errorString();
}

std::optional<std::int64_t> fetchedMs(const QString& text)
{
    if (!text.startsWith(kHead)) {
        return std::nullopt;
    }
    const int from = static_cast<int>(kHead.size());
    const QString time = text.mid(from, text.indexOf(QLatin1Char('\n')) - from);
    const QDateTime fetched = QDateTime::fromString(time, Qt::ISODate);
    return fetched.isValid() ? std::optional<std::int64_t>(fetched.toMSecsSinceEpoch())
                             : std::nullopt;
}

Age ageOf(std::int64_t fetchedMs)
{
    constexpr std::int64_t kMinuteMs = 60000;
    constexpr std::int64_t kMinutesPerHour = 60;
    constexpr std::int64_t kHoursPerDay = 24;
    constexpr std::int64_t kShownInHours = 48;
    const std::int64_t now = aviation::Clock::current().NowUtc().time_since_epoch().count();
    const std::int64_t minutes = std::max<std::int64_t>(now - fetchedMs, 0) / kMinuteMs;
    const std::int64_t hours = minutes / kMinutesPerHour;
    const QString form =
        hours < kHoursPerDay ? QStringLiteral("hh:mm") : QStringLiteral("yyyy-MM-dd hh:mm");
    const QString time = QDateTime::fromMSecsSinceEpoch(fetchedMs, Qt::UTC).toString(form);
    if (hours >= kShownInHours) {
        return {time, QStringLiteral("%1 d").arg(hours / kHoursPerDay)};
    }
    return {time,
            hours > 0 ? QStringLiteral("%1 h").arg(hours) : QStringLiteral("%1 min").arg(minutes)};
}

} // namespace keptweather

#include "app/gui/LogFile.h"

#include "app/base/LogLevel.h"
#include "aviation/support/Clock.h"

#include <QDateTime>
#include <QDir>

namespace {

constexpr int kMostHeldBack = 1000;

} // namespace

LogFile::LogFile(const QString& folder)
    : m_file(QDir::cleanPath(folder + QStringLiteral("/cirrilonv3.log")))
{
    open();
}

bool LogFile::open()
{
    if (m_file.isOpen()) {
        return true;
    }
    const bool kept = keepEarlier();
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return false;
    }
    begin(kept);
    return true;
}

void LogFile::begin(bool kept)
{
    const qint64 nowMs = aviation::Clock::current().NowUtc().time_since_epoch().count();
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(nowMs, Qt::UTC);
    const QString time = now.toString(QStringLiteral("hh:mm:ss:zzz"));
    const auto writeOwn = [this, &time](int level, const QString& text) {
        writeLine(levelName(level) + QStringLiteral(": ") + time + QStringLiteral(" - ") + text);
    };
    writeOwn(
        loglevel::kNotification,
        QStringLiteral("(Main) - Log of %1 (UTC)").arg(now.toString(QStringLiteral("yyyy-MM-dd"))));
    if (!kept) {
        writeOwn(loglevel::kWarning, QStringLiteral("(Main) - the log of the last run isn't kept"));
    }
    m_file.flush();
}

QString LogFile::earlierName(int run) const
{
    QString name = path();
    name.chop(int{sizeof("log")} - 1);
    return name + QString::number(run) + QStringLiteral(".log");
}

/// False if the log of the last run stands still where the new one is begun. Nothing is moved while
/// none stands there, as when the folder is still to be made.
bool LogFile::keepEarlier() const
{
    if (!QFile::exists(path())) {
        return true;
    }
    QFile::remove(earlierName(kEarlierRuns));
    for (int run = kEarlierRuns - 1; run > 0; --run) {
        QFile::rename(earlierName(run), earlierName(run + 1));
    }
    return QFile::rename(path(), earlierName(1));
}

QString LogFile::levelName(int level)
{
    switch (level) {
    case loglevel::kDebug:
        return QStringLiteral("Debug");
    case loglevel::kNotification:
        return QStringLiteral("Notification");
    case loglevel::kWarning:
        return QStringLiteral("Warning");
    case loglevel::kError:
        return QStringLiteral("Error");
    default:
        return QStringLiteral("Unknown");
    }
}

void LogFile::write(const QString& text, int level)
{
    const QString line = levelName(level) + QStringLiteral(": ") + text;
    if (m_mirror) {
        m_mirror(line);
    }
    if (!open()) {
        if (m_heldBack.size() < kMostHeldBack) {
            m_heldBack.append(line);
        }
        return;
    }
    for (const QString& earlier : std::as_const(m_heldBack)) {
        writeLine(earlier);
    }
    m_heldBack.clear();
    writeLine(line);
    m_file.flush();
}

void LogFile::writeLine(const QString& line)
{
    m_file.write(line.toUtf8() + '\n');
}

#include "app/gui/LogFile.h"

#include "app/base/LogLevel.h"

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
    return m_file.isOpen() || m_file.open(QIODevice::WriteOnly | QIODevice::Text);
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

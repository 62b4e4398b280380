#pragma once

#include "aviation/support/Clock.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <cstdint>

/// A timer of one millisecond that notes how late it comes: the time for which the event loop of
/// its thread stood still.
class HeartBeat : public QObject
{
public:
    void start()
    {
        m_last = aviation::Clock::current().MonotonicMs();
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, [this] { beat(); });
        m_timer.start(1);
    }
    std::int64_t longestMs() const { return m_longest; }
    int countOver10Ms() const { return m_over10; }

private:
    void beat()
    {
        const std::int64_t now = aviation::Clock::current().MonotonicMs();
        const std::int64_t late = now - m_last - 1;
        m_longest = std::max(m_longest, late);
        if (late > 10) {
            ++m_over10;
            if (qEnvironmentVariableIsSet("PROBE_LOG")) {
                qInfo("%s stood still for %d ms",
                      qUtf8Printable(
                          QDateTime::currentDateTimeUtc().toString(QStringLiteral("hh:mm:ss:zzz"))),
                      static_cast<int>(late));
            }
        }
        m_last = now;
    }

    QTimer m_timer;
    std::int64_t m_last = 0;
    std::int64_t m_longest = 0;
    int m_over10 = 0;
};

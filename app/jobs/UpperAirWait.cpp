#include "app/jobs/UpperAirWait.h"

#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "aviation/support/Clock.h"

#include <utility>

UpperAirWait::UpperAirWait(MainView& view, LogFunction log) : m_view(view), m_log(std::move(log)) {}

void UpperAirWait::goesOn(const QString& place)
{
    m_view.OnStatusbarStatus(tr("Waiting for upper-air data of %1. \"Leave out upper-air data\" in "
                                "the settings ends the wait.")
                                 .arg(place));
    constexpr std::int64_t kSaidAgainMs = 600000;
    const std::int64_t nowMs = aviation::Clock::current().MonotonicMs();
    const bool isRecent = m_saidAtMs && nowMs - *m_saidAtMs < kSaidAgainMs;
    if (!std::exchange(m_isSaid, true) && !isRecent) {
        m_saidAtMs = nowMs;
        m_log(QStringLiteral("(Controller) - The weather waits for upper-air data of %1, which the "
                             "server doesn't give. They are asked for again and again. To set the "
                             "weather without them, choose \"Leave out upper-air data\" in the "
                             "settings.")
                  .arg(place.toHtmlEscaped()),
              loglevel::kWarning);
    }
}

void UpperAirWait::ended()
{
    m_isSaid = false;
    m_view.OnStatusbarStatus(QString());
}

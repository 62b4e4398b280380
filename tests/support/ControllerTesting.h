#pragma once

#include "app/Controller.h"
#include "app/jobs/WeatherWorker.h"
#include "sim/ConnectWorker.h"

#include <QCoreApplication>
#include <QTest>
#include <QTimer>

#include <functional>

/// What every test over a controller needs. Main thread.
namespace controllertesting {

inline bool waitFor(const std::function<bool()>& condition)
{
    constexpr int kLimitMs = 20000;
    return QTest::qWaitFor(condition, kLimitMs);
}

inline QTimer& timer(const Controller& controller, const char* name)
{
    return *controller.findChild<QTimer*>(QString::fromLatin1(name));
}

/// No worker runs and no job waits.
inline bool isIdle(Controller& controller)
{
    ConnectWorker& connecting = controller.connectWorker();
    WeatherWorker& weather = controller.weatherWorker();
    return !connecting.isRunning() && connecting.queuedJobs() == 0 && !weather.isRunning()
           && weather.queuedJobs() == 0;
}

/// Lets all jobs end, and those that follow from their signals. False if they don't.
inline bool settle(Controller& controller)
{
    constexpr int kQuietRounds = 3;
    for (int quiet = 0; quiet < kQuietRounds; ++quiet) {
        quiet = isIdle(controller) ? quiet : 0;
        if (!waitFor([&controller] { return isIdle(controller); })) {
            return false;
        }
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    return true;
}

} // namespace controllertesting

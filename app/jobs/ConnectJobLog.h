#pragma once

#include "app/base/Reporting.h"

#include <QHash>
#include <QString>

/// Logs the ends of the simulator's jobs. Of those that come many times a minute the same fault is
/// said once, then as a detail. Main thread; owned by the controller.
class ConnectJobLog
{
public:
    explicit ConnectJobLog(LogFunction log);

    void jobEnded(int jobId, const QString& jobName, int error);
    /// The level at which a fault of a job that has just ended is logged.
    int levelOf(int jobId, int error) const;
    /// The next fault of the job counts as a new one.
    void forget(int jobId) { m_lastErrors.remove(jobId); }
    void forgetAll() { m_lastErrors.clear(); }

private:
    const LogFunction m_log;
    QHash<int, int> m_lastErrors; ///< by job
};

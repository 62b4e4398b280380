#include "app/jobs/ConnectJobLog.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "sim/ConnectJobs.h"
#include "sim/SimResult.h"

#include <utility>

ConnectJobLog::ConnectJobLog(LogFunction log) : m_log(std::move(log)) {}

void ConnectJobLog::jobEnded(int jobId, const QString& jobName, int error)
{
    const QString id = QString::number(jobId);
    const QString name = outsidetext::forLog(jobName);
    if (error == simresult::kNone) {
        m_log(QStringLiteral("(Controller) - JobID:%1 JobName:%2  Finished").arg(id, name),
              loglevel::kDebug);
    } else {
        m_log(QStringLiteral("(Controller) - JobID:%1 JobName:%2  Finished, Error: %3")
                  .arg(id, name, QString::number(error)),
              levelOf(jobId, error));
    }
    m_lastErrors.insert(jobId, error);
}

int ConnectJobLog::levelOf(int jobId, int error) const
{
    const bool repeats = jobId == connectjob::kAircraftData || jobId == connectjob::kWindAtAircraft
                         || jobId == connectjob::kSetWindLayers || jobId == connectjob::kCloudMap;
    return repeats && m_lastErrors.value(jobId) == error ? loglevel::kDebug : loglevel::kError;
}

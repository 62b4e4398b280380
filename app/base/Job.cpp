#include "app/base/Job.h"

Job::Job() : Job(kNoJob, QStringLiteral("no job")) {}

Job::Job(int jobId, const QString& jobName) : name(jobName), id(jobId) {}

Job::Job(int jobId, const QString& jobName, const QByteArray& contents)
    : name(jobName)
    , id(jobId)
    , data(contents)
{}

Job::Job(int jobId, const XPlaneWeather& record, const QString& jobName)
    : name(jobName)
    , id(jobId)
    , xplaneWeather(record)
{}

Job::Job(int jobId, const std::vector<XPlaneWindLayer>& layers, const QString& jobName)
    : name(jobName)
    , id(jobId)
    , windLayers(layers)
{}

void registerJobType()
{
    qRegisterMetaType<Job>("Job");
}

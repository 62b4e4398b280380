#pragma once

#include "weather/output/records/XPlaneWeather.h"

#include <QByteArray>
#include <QMetaType>
#include <QString>

#include <vector>

/// Id of the empty job, which an empty queue gives.
inline constexpr int kNoJob = -1;

/// Work for one of the worker threads, copied by value into and out of its queue. What an id means
/// depends on the worker: the two have separate number ranges.
struct Job
{
    /// The empty job, "no job".
    Job();
    Job(int jobId, const QString& jobName);
    /// `contents`: a file for jobs that carry one.
    Job(int jobId, const QString& jobName, const QByteArray& contents);
    Job(int jobId, const XPlaneWeather& record, const QString& jobName);
    Job(int jobId, const std::vector<XPlaneWindLayer>& layers, const QString& jobName);

    QString name; ///< for the log; for many jobs the argument as well
    int id = kNoJob;
    XPlaneWeather xplaneWeather;
    std::vector<XPlaneWindLayer> windLayers;
    QByteArray data;
};
Q_DECLARE_METATYPE(Job)

/// Makes Job known to queued connections; call once before the first one is made.
void registerJobType();

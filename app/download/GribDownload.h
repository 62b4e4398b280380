#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/GribSource.h"
#include "app/base/Reporting.h"
#include "app/base/StopFlag.h"

#include <QCoreApplication>
#include <QMutex>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>

class ProcessRunner;
class QThread;
class WeatherWrapper;
struct ProcessResult;

/// Fetches upper-air data into the store: the weather server's text, or a GRIB2 file of an address
/// of the user's. The only part of the download side that is entered from two threads, the main
/// one, on which it is made, and the weather worker's. Owned by the controller.
class GribDownload final : public GribSource
{
    Q_DECLARE_TR_FUNCTIONS(GribDownload)
public:
    /// Everything handed in outlives it. `stop` is also the flag of the context; it is raised here
    /// when the event loops of the main thread are ended from outside.
    GribDownload(DownloadContext context, StopFlag& stop, ProcessRunner& processes,
                 WeatherWrapper& store, Reporting reporting);

    /// On the main thread the event loop runs on meanwhile; a second call from there fails.
    int DownloadGrib(const aviation::Position& position, bool single) override;
    void giveWayWhen(const std::function<bool()>& condition) override;

private:
    int download(const aviation::Position& position, bool single);
    int downloadText(const aviation::Position& position, bool single);
    int takeText(const aviation::Position& position, const QString& text);
    int downloadRaw();
    bool mayAskRaw(const QString& address);
    void runWgrib(const QString& gribFile);
    ProcessResult runOutsideProgram(const QString& program, const QStringList& arguments);
    bool onMainThread() const;
    /// What ends the running call of this thread.
    const StopFlag& stopOfCall() const;
    DownloadContext contextOfCall() const;
    /// Logs a failed download, and a repetition of the same failure as a detail only.
    void logFault(const QString& kind, const QString& text, int level);
    bool failedBefore();

    const DownloadContext m_context;
    StopFlag& m_stop;
    ProcessRunner& m_processes;
    WeatherWrapper& m_store;
    const Reporting m_reporting;
    const QThread* const m_mainThread;
    std::function<bool()> m_workerGivesWay;
    const StopFlag m_workerStop;            ///< the stop flag, and what the worker gives way to
    bool m_mainThreadWaits = false;         ///< for a download of its own; main thread only
    QMutex m_mutex;                         ///< guards all below
    QString m_fault;                        ///< kind of the last failure
    QString m_rawUrl;                       ///< the last template asked
    std::optional<std::int64_t> m_rawAsked; ///< monotonic ms
};

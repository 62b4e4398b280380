#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/JobPosts.h"
#include "app/base/Reporting.h"

#include <QByteArray>
#include <QString>

/// Fetches the files of X-Plane's global wind and hands them to the simulator, or writes them where
/// it reads them. Whether that succeeds or not, job 24 has the simulator load the weather. Main
/// thread, whose event loop runs on while they are fetched; owned by the controller.
class GlobalWindDownload
{
public:
    /// `postJob` posts to the simulator's worker.
    GlobalWindDownload(DownloadContext context, Reporting reporting, PostJob postJob);

    /// After each X-Plane weather that is written as files. Files that came already aren't fetched
    /// again from the same server, nor are those that failed, until tryFailedAgain.
    void download();
    /// Lets the next weather ask again for files that failed: new reports are being downloaded.
    void tryFailedAgain();
    /// A file that was handed to the simulator didn't arrive there.
    void sendFailed() { m_failed = true; }

private:
    bool fetch(QByteArray& turbulence, QByteArray& wind);
    bool send(const QByteArray& turbulence, const QByteArray& wind);
    bool writeWind(const QString& simulator, const QByteArray& wind);
    void postActivation();

    const DownloadContext m_context;
    const Reporting m_reporting;
    const PostJob m_postJob;
    QString m_url; ///< the last one that was asked
    bool m_failed = false;
    bool m_underWay = false;
};

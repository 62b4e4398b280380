#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/Reporting.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>

class ProcessRunner;
struct InfoFile;
enum class VersionState;

/// Fetches the file of the info server and does what follows from it: reports a new version,
/// offers it, starts its installer, and leaves a weather server under load. Main thread; owned by
/// the controller.
class UpdateCheck : public QObject
{
    Q_OBJECT
public:
    /// The settings, the dialogs of the context, which aren't null here, and the runner outlive it.
    UpdateCheck(Settings& settings, DownloadContext context, ProcessRunner& processes,
                Reporting reporting, QObject* parent = nullptr);

    /// Begins the download at the start of the program; it ends in takeFile or logFailure.
    void download();
    void takeFile(const QString& fileName, int error);
    void logFailure(int error, const QString& reason);
    /// The user's question for a new version, answered from the file that came at the start.
    void checkKeptFile();

Q_SIGNALS:
    /// The program is to be closed: it isn't supported any longer, or an installer runs.
    void sigCloseProgram();

private:
    std::optional<QByteArray> readFile(const QString& fileName, const QString& advice);
    void judge(const InfoFile& info);
    void leaveBusyServer(const InfoFile& info);
    void warnUnsupported(const InfoFile& info);
    void logNewVersion(const InfoFile& info);
    void logUpToDate();
    void logNoVersion();
    void offer(const InfoFile& info, VersionState state);
    void startInstaller(const QString& installer);
    void closeSoon();

    Settings& m_settings;
    const DownloadContext m_context;
    ProcessRunner& m_processes;
    const Reporting m_reporting;
};

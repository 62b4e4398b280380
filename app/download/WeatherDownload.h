#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/Reporting.h"
#include "app/download/ExternalWeather.h"
#include "app/download/WeatherFileReader.h"
#include "aviation/FsId.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <functional>

/// Fetches the report file: chooses its address, tries other servers and sources, inflates and
/// reads it. A download ends with sigText or without a text. Main thread; owned by the controller.
class WeatherDownload : public QObject
{
    Q_OBJECT
public:
    /// Settings and the dialogs of the context, which aren't null here, outlive it. `simulator`
    /// gives the connected one: FS2020 has a list of its own.
    WeatherDownload(Settings& settings, DownloadContext context,
                    std::function<aviation::FsId()> simulator, Reporting reporting,
                    QObject* parent = nullptr);

    /// The source with which the row of tries begins anew, that of the settings.
    void useSourceOfSettings();
    /// Begins a download from a source (1 VATSIM, 2 IVAO, 3 NOAA) unless one is under way.
    void download(int source);
    bool isUnderWay() const { return m_underWay; }
    /// After a list without reports: another source, until all have been tried.
    void tryAnotherSource();
    void switchServer();

    /// The end of the queue of files, and what went wrong with one.
    void takeFile(const QString& fileName, int error);
    void logFailure(int error, const QString& reason);

Q_SIGNALS:
    void sigBegun();
    /// A server's list of the present time is fetched.
    void sigPresentRequested();
    /// Fetched or failed: the weather clock has to stand until there are reports.
    void sigEnded();
    /// The text of a report file.
    void sigText(const QString& text);

private:
    void fetchList(int source);
    QString addressOf(int source);
    void fetchExternal();
    void retry(const QString& fileName, int error);
    void read(const QString& downloaded);
    void takeRead();

    Settings& m_settings;
    const DownloadContext m_context;
    const std::function<aviation::FsId()> m_simulator;
    const Reporting m_reporting;
    ExternalWeather m_external;
    WeatherFileReader m_reader;
    bool m_underWay = false;
    bool m_plainList = false;     ///< the list that is under way isn't packed
    std::int32_t m_retries = 0;   ///< failed downloads and empty lists; deliberately never reset
    std::int32_t m_currentSource; ///< the one that the row of tries has come to
};

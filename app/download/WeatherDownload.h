#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/Reporting.h"
#include "app/download/ExternalWeather.h"
#include "app/download/WeatherFileReader.h"
#include "app/download/WeatherList.h"
#include "aviation/FsId.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <functional>

class MainView;

/// Fetches the report file: chooses its address, tries other servers and sources, inflates and
/// reads it. A download ends with sigList or sigFailed; what became of a list is said by
/// takeOutcome. A failed one stands in the window's bar, and in a box if the pilot asked for it.
/// Main thread; owned by the controller.
class WeatherDownload : public QObject
{
    Q_OBJECT
public:
    enum class Asked
    {
        ByItself,
        ByPilot
    };

    /// Settings, view and the dialogs of the context, which aren't null here, outlive it.
    /// `simulator` gives the connected one: FS2020 has a list of its own.
    WeatherDownload(Settings& settings, MainView& view, DownloadContext context,
                    std::function<aviation::FsId()> simulator, Reporting reporting,
                    QObject* parent = nullptr);

    /// The source with which the row of tries begins anew, that of the settings.
    void useSourceOfSettings();
    /// Begins a download from a source (1 VATSIM, 2 IVAO, 3 NOAA), and with it a row of sources,
    /// unless one is under way. One by itself leaves the try that is due after a pause its turn;
    /// the pilot's takes it.
    void download(int source, Asked asked = Asked::ByItself);
    /// Until it has failed or the outcome of its list is taken.
    bool isUnderWay() const { return m_underWay; }
    /// The pilot waits for what comes of the download.
    bool isAsked() const { return m_asked; }
    void switchServer();
    /// Reads the list of the last run, once; nothing happens if there is none.
    void readKept();

    /// What became of a list: after a live one of few METARs another source is tried, until all
    /// have been.
    void takeOutcome(const DecodeOutcome& outcome);
    /// The decode of a list came to no end: the list counts as damaged.
    void takeDecodeFailure();
    /// Whose weather and how old it is while it is that of the last run; otherwise empty.
    QString keptText() const { return m_keptText; }

    /// The end of the queue of files, and what went wrong with one.
    void takeFile(const QString& fileName, int error);
    void logFailure(int error, const QString& reason);

Q_SIGNALS:
    void sigBegun();
    /// A server's list of the present time is fetched.
    void sigPresentRequested();
    /// Fetched or failed: the weather clock has to stand until there are reports.
    void sigEnded();
    void sigList(const WeatherList& list);
    /// There is nothing new; the program goes on with what it has.
    void sigFailed();

private:
    void begin(int source);
    void fetchList(int source);
    QString addressOf(int source);
    void fetchExternal();
    void failNetwork(const QString& fileName, int error);
    void tryAgain(const QString& failure);
    void fail(const QString& text);
    void read(const QString& downloaded);
    void exportList();
    void takeRead();
    void takeKept(const WeatherFileResult& result);
    void tryAnotherSource();
    void sayKept(std::int64_t fetchedMs);
    void showNotice();

    Settings& m_settings;
    MainView& m_view;
    const DownloadContext m_context;
    const std::function<aviation::FsId()> m_simulator;
    const Reporting m_reporting;
    ExternalWeather m_external;
    WeatherFileReader m_reader;
    QTimer m_pause; ///< until the next try
    bool m_underWay = false;
    bool m_asked = false;
    bool m_keptRead = false;
    bool m_plainList = false;     ///< the list that is under way isn't packed
    std::int32_t m_retries = 0;   ///< failed downloads since the last good list
    std::int32_t m_poorLists = 0; ///< of the row of sources; counted for themselves, so that a
                                  ///< network that failed before leaves all sources to be tried
    std::int32_t m_currentSource; ///< the one that the row of tries has come to
    QString m_listFile;           ///< the last one that was read
    QString m_failure;            ///< the last one, in the user's language; empty if it is settled
    QString m_keptText;
};

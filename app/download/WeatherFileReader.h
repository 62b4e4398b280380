#pragma once

#include "app/download/WeatherList.h"

#include <QMutex>
#include <QString>
#include <QThread>

#include <optional>

class StopFlag;

/// A weather file, downloaded or kept, and what is to become of it.
struct WeatherFileRequest
{
    QString downloaded;
    QString inflated; ///< where the inflated text goes; empty: the file isn't packed
    QString copy;     ///< if not empty, the file is copied there and not read
    WeatherList::Origin origin = WeatherList::Origin::Live;
};

struct WeatherFileResult
{
    WeatherList list;
    QString file;         ///< the one that the text was read from
    QString fault;        ///< why there are no reports in it, not escaped; empty if all is well
    QString unwritten;    ///< why the inflated text isn't in its file, not escaped
    bool opened = false;  ///< the text could be read
    bool damaged = false; ///< a part of it is missing or can't be inflated; `fault` says which
};

/// Inflates, copies and reads a weather file: a world-wide one takes too long for the event loop.
/// A thread that ends with each file; QThread::finished says that a result is there. Lives on the
/// main thread; the destructor waits for the file under way, well below a second for a real one.
class WeatherFileReader final : public QThread
{
public:
    /// The flag outlives the reader; once it is raised, the steps that are left are skipped.
    explicit WeatherFileReader(const StopFlag& stop, QObject* parent = nullptr);
    ~WeatherFileReader() override;

    /// Starts; waits for the file before, if that one isn't done.
    void read(const WeatherFileRequest& request);
    /// Starts likewise: copies a file and replaces what is there, without a result.
    void copy(const QString& file, const QString& target);
    /// The result of the last file, once; the reader keeps nothing of a text of some megabytes.
    std::optional<WeatherFileResult> takeResult();

protected:
    void run() override;

private:
    void begin(const WeatherFileRequest& request);

    const StopFlag& m_stop;
    QMutex m_mutex;
    WeatherFileRequest m_request;              ///< guarded by m_mutex
    std::optional<WeatherFileResult> m_result; ///< guarded by m_mutex
};

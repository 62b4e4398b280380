#pragma once

#include "standins/wxserver/WeatherServer.h"

#include <QMutex>
#include <QSemaphore>
#include <QThread>

#include <deque>
#include <functional>

namespace wxserver {

/// A thread of its own for a WeatherServer, for tests whose main thread is blocked at times. Made,
/// used and destroyed on one thread; all operations wait until the server's thread has done them.
class WeatherServerThread : private QThread
{
public:
    using Task = std::function<void(WeatherServer&)>;

    explicit WeatherServerThread(const QString& dataFolder = QString());
    /// Stops the server, closes its connections and joins the thread.
    ~WeatherServerThread() override;

    /// Listens on 127.0.0.1, on a free port for 0. False when it can't.
    [[nodiscard]] bool start(quint16 port = 0);
    void stop();
    /// Base address without a slash at its end; empty before start.
    QString url();
    quint16 port();

    /// Runs a function on the server's thread and waits for its end. It must not throw.
    void invoke(const Task& task);

    void addFault(const Fault& fault);
    [[nodiscard]] bool addFault(const QString& text);
    void clearFaults(const QString& pattern = QString());
    void setInfo(const QString& key, const QString& value);
    int requestCount(const QString& path = QString());
    std::vector<RequestRecord> requests();

private:
    class Inbox;

    void run() override;
    void runTasks(WeatherServer& server);

    QString m_dataFolder;
    QMutex m_mutex;           ///< guards the two members below
    std::deque<Task> m_tasks; ///< posted, not yet run
    Inbox* m_inbox = nullptr; ///< lives on the server's thread while it runs
    QSemaphore m_done;        ///< one for each task that has ended, and one for the start
};

} // namespace wxserver

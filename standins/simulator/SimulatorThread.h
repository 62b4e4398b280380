#pragma once

#include "standins/simulator/SimulatorServer.h"

#include <QMutex>
#include <QObject>

#include <deque>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace simulator {

/// A stand-in simulator on a thread of its own, for tests. Created, used and destroyed by one
/// thread; the destructor stops the server and joins. Typical use:
///
///     simulator::SimulatorThread simulator;
///     const quint16 port = simulator.startServer();
///     simulator.setFault(QStringLiteral("silent*1"));
///     ... drive the client ...
///     EXPECT_EQ(simulator.receivedCount(simulator::command::kWrite,
///                                       simulator::message::kClearWeather), 1);
///
/// Its signals come from the server's thread, so receivers on other threads get them queued. Calls
/// cross by a queue that the thread looks at every few milliseconds, with locks that the thread
/// sanitizer understands; a standard thread is used because it can see that one end.
class SimulatorThread : public QObject
{
    Q_OBJECT
public:
    /// The thread runs from here on; nobody can connect before startServer().
    explicit SimulatorThread(const SimulatorOptions& options = {},
                             SimulatedFlight flight = SimulatedFlight(), QObject* parent = nullptr);
    /// The same before a simulator that has other ways in too and outlives this one.
    SimulatorThread(const SimulatorOptions& options, SimulatorModel& model,
                    QObject* parent = nullptr);
    ~SimulatorThread() override;

    /// Listens; the port, 0 when it can't. Called again after stopServer() it listens on the same
    /// port.
    quint16 startServer();
    /// Closes everything; the thread goes on.
    void stopServer();

    /// Runs a function on the server's thread and waits for its end. Not to be called by the
    /// function itself.
    void invoke(const std::function<void(SimulatorServer&)>& function);

    /// Text as in parseFault(), "none" ends it. False if it is none.
    bool setFault(const QString& fault);
    void closeConnections();

    /// These ask the server without waiting for its thread.
    quint16 port() const { return m_port; }
    SimulatorState state() const { return m_server->state(); }
    std::vector<ReceivedMessage> received() const { return m_server->received(); }
    int receivedCount(int command, int id = 0) const
    {
        return m_server->receivedCount(command, id);
    }
    void clearReceived() { m_server->clearReceived(); }

    /// Lets the calling thread's events run until the condition holds, at most `timeoutMs` of real
    /// time. What the condition gave last.
    static bool waitUntil(const std::function<bool()>& condition, int timeoutMs = 10000);

Q_SIGNALS:
    void messageReceived(int command, int id, QByteArray data);
    void line(QString text);
    void weatherSet();

private:
    using Maker = std::function<std::unique_ptr<SimulatorServer>()>;
    SimulatorThread(const Maker& makeServer, QObject* parent);
    void run(const Maker& makeServer, const std::function<void()>& isReady);
    void runPosted();

    QMutex m_mutex;
    std::deque<std::function<void()>> m_posted; ///< guarded by m_mutex
    SimulatorServer* m_server = nullptr;        ///< lives on the thread, as long as it runs
    quint16 m_port = 0;
    std::thread m_thread;
};

} // namespace simulator

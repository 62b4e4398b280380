#pragma once

#include "standins/simulator/AircraftStream.h"
#include "standins/simulator/Fault.h"
#include "standins/simulator/MessageHandler.h"
#include "standins/simulator/SimulatorOptions.h"

#include <QMutex>
#include <QObject>
#include <QTcpServer>
#include <QTimer>

#include <deque>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace simulator {

class BridgeConnection;

/// A stand-in simulator behind the bridge's TCP protocol. It lives on the thread of its event loop:
/// everything is called there, but for the operations that are said to be for any thread. Signals
/// come from that thread.
class SimulatorServer : public QObject
{
    Q_OBJECT
public:
    explicit SimulatorServer(const SimulatorOptions& options = {},
                             SimulatedFlight flight = SimulatedFlight(), QObject* parent = nullptr);
    /// The bridge into a simulator that has other ways in too and outlives this one. Its flight is
    /// left as it is, whatever speed the options say.
    SimulatorServer(const SimulatorOptions& options, SimulatorModel& model,
                    QObject* parent = nullptr);
    ~SimulatorServer() override;

    /// Listens on 127.0.0.1 at the port of the options. False when the port isn't free.
    bool start();
    /// Closes all connections, stops the datagrams and stops listening. start() brings it back on
    /// the port that it had.
    void stop();
    /// Closes all connections at once and goes on listening.
    void closeConnections();
    quint16 port() const { return m_port; }
    int connections() const { return static_cast<int>(m_connections.size()); }

    void setFault(const Fault& fault);
    Fault fault() const { return m_fault; }
    void setApiVersion(const QString& version) { m_options.apiVersion = version; }
    void setSimulator(int fsId, int interfaceId);
    /// The simulator behind the bridge. For any thread.
    SimulatorModel& model() { return *m_model; }
    AircraftStream& stream() { return m_stream; }

    /// A copy of what was given. For any thread.
    SimulatorState state() const { return m_model->state(); }
    /// The last messages, at most some thousand and 16 MB. For any thread.
    std::vector<ReceivedMessage> received() const;
    /// Messages with these numbers since the start, id 0 for all of the command. For any thread.
    int receivedCount(int command, int id = 0) const;
    /// Forgets the messages, not what they set. For any thread.
    void clearReceived();

Q_SIGNALS:
    void messageReceived(int command, int id, QByteArray data);
    /// One line for people: what came, what was switched, which phase began.
    void line(QString text);
    void weatherSet();
    void phaseChanged(int phase);
    void clientConnected();
    void clientDisconnected();

private:
    SimulatorServer(const SimulatorOptions& options, std::shared_ptr<SimulatorModel> model,
                    QObject* parent);
    void onNewConnection();
    void onClosed(BridgeConnection* connection);
    void onFrame(BridgeConnection* connection, const Frame& frame);
    void onTick();
    void note(const Frame& frame);
    Reply replyTo(BridgeConnection* connection, const Frame& frame, const Fault& fault);
    Fault takeFault(const Frame& frame);
    Reply greet(const Frame& frame, const Fault& fault);
    Reply tellSimulator() const;
    Reply startStream(BridgeConnection* connection, const Frame& frame);

    SimulatorOptions m_options;
    std::shared_ptr<SimulatorModel> m_model; ///< owns nothing if the model was handed in
    MessageHandler m_handler;
    QTcpServer m_listener;
    AircraftStream m_stream;
    QTimer m_tick;
    std::vector<BridgeConnection*> m_connections; ///< children
    BridgeConnection* m_streamOwner = nullptr;
    Fault m_fault;
    Phase m_phase = Phase::Boarding;
    quint16 m_port = 0;

    mutable QMutex m_mutex;
    std::deque<ReceivedMessage> m_received;      ///< guarded by m_mutex
    qint64 m_receivedBytes = 0;                  ///< guarded by m_mutex
    std::map<std::pair<int, int>, int> m_counts; ///< guarded by m_mutex
};

} // namespace simulator

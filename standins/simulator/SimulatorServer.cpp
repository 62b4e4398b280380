#include "standins/simulator/SimulatorServer.h"

#include "aviation/support/Clock.h"
#include "aviation/support/ScopedLock.h"
#include "standins/simulator/BridgeConnection.h"
#include "standins/simulator/Describe.h"
#include "standins/simulator/Messages.h"

#include <QTcpSocket>

#include <algorithm>

namespace simulator {

namespace {

constexpr std::size_t kMostConnections = 16;
constexpr std::size_t kKeptMessages = 4096;
constexpr qint64 kKeptMessageBytes = 16LL * 1024 * 1024;
constexpr int kTickMs = 200;

/// A value of the connected-simulator answer: without its separators.
QByteArray plainValue(const QString& text)
{
    QByteArray value = text.toUtf8();
    std::replace_if(
        value.begin(), value.end(), [](char c) { return c == ';' || c == '='; }, ' ');
    return value;
}

/// A simulator whose time is now and runs at the speed.
std::shared_ptr<SimulatorModel> startedModel(SimulatedFlight flight, double speed)
{
    flight.setSpeed(speed);
    flight.setStartTime(aviation::Clock::current().nowSeconds()
                        - static_cast<std::int64_t>(flight.elapsed()));
    return std::make_shared<SimulatorModel>(std::move(flight));
}

} // namespace

SimulatorServer::SimulatorServer(const SimulatorOptions& options, SimulatedFlight flight,
                                 QObject* parent)
    : SimulatorServer(options, startedModel(std::move(flight), options.speed), parent)
{}

SimulatorServer::SimulatorServer(const SimulatorOptions& options, SimulatorModel& model,
                                 QObject* parent)
    : SimulatorServer(options, std::shared_ptr<SimulatorModel>(std::shared_ptr<void>(), &model),
                      parent)
{}

SimulatorServer::SimulatorServer(const SimulatorOptions& options,
                                 std::shared_ptr<SimulatorModel> model, QObject* parent)
    : QObject(parent)
    , m_options(options)
    , m_model(std::move(model))
    , m_handler(*m_model)
    , m_listener(this)
    , m_stream(
          [this] {
              return encodeFrame({command::kAnswer, message::kAircraft, m_handler.aircraftText()});
          },
          this)
    , m_tick(this)
    , m_port(options.port)
{
    setFault(options.fault);
    m_model->withFlight([this](const SimulatedFlight& flight) { m_phase = flight.phase(); });
    connect(&m_listener, &QTcpServer::newConnection, this, &SimulatorServer::onNewConnection);
    connect(&m_tick, &QTimer::timeout, this, &SimulatorServer::onTick);
}

SimulatorServer::~SimulatorServer()
{
    stop();
}

bool SimulatorServer::start()
{
    if (!m_listener.isListening() && !m_listener.listen(QHostAddress::LocalHost, m_port)) {
        return false;
    }
    m_port = m_listener.serverPort();
    m_tick.start(kTickMs);
    return true;
}

void SimulatorServer::stop()
{
    m_tick.stop();
    m_listener.close();
    closeConnections();
}

void SimulatorServer::closeConnections()
{
    const std::vector<BridgeConnection*> connections = m_connections;
    for (BridgeConnection* connection : connections) {
        connection->abort();
    }
}

void SimulatorServer::setFault(const Fault& fault)
{
    m_fault = fault;
    m_stream.setFault(fault.isUdp() ? fault : Fault{});
}

void SimulatorServer::setSimulator(int fsId, int interfaceId)
{
    m_options.fsId = fsId;
    m_options.interfaceId = interfaceId;
}

void SimulatorServer::onNewConnection()
{
    while (QTcpSocket* socket = m_listener.nextPendingConnection()) {
        if (m_connections.size() >= kMostConnections) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        auto* connection = new BridgeConnection(socket, this);
        m_connections.push_back(connection);
        connect(connection, &BridgeConnection::frameReceived, this,
                [this, connection](const Frame& frame) { onFrame(connection, frame); });
        connect(connection, &BridgeConnection::broken, this,
                [this] { Q_EMIT line(QStringLiteral("unreadable message, connection closed")); });
        connect(connection, &BridgeConnection::closed, this,
                [this, connection] { onClosed(connection); });
        Q_EMIT clientConnected();
    }
}

void SimulatorServer::onClosed(BridgeConnection* connection)
{
    if (std::erase(m_connections, connection) == 0) {
        return;
    }
    if (connection == m_streamOwner) {
        m_stream.stop();
        m_streamOwner = nullptr;
    }
    connection->deleteLater();
    Q_EMIT line(QStringLiteral("connection closed"));
    Q_EMIT clientDisconnected();
}

void SimulatorServer::onFrame(BridgeConnection* connection, const Frame& frame)
{
    const Fault fault = takeFault(frame);
    const Reply reply = replyTo(connection, frame, fault);
    note(frame);
    Q_EMIT messageReceived(frame.command, frame.id, frame.data);
    if (!reply.line.isEmpty()) {
        Q_EMIT line(reply.line);
    }
    if (reply.isWeather) {
        Q_EMIT weatherSet();
    }
    connection->deliver(reply.frame, fault);
}

/// The fault that this message meets, which it counts.
Fault SimulatorServer::takeFault(const Frame& frame)
{
    const bool isGreetingFault = m_fault.kind == FaultKind::WrongApi;
    if (m_fault.isUdp() || !m_fault.concerns(frame.command, frame.id)
        || (isGreetingFault && frame.command != command::kHello))
    {
        return {};
    }
    const Fault fault = m_fault;
    m_fault.countDown();
    return fault;
}

Reply SimulatorServer::replyTo(BridgeConnection* connection, const Frame& frame, const Fault& fault)
{
    if (fault.kind == FaultKind::Refuse) {
        return MessageHandler::refusal(
            frame, fault.text.isEmpty() ? QStringLiteral("refused on demand") : fault.text);
    }
    if (frame.command == command::kHello && frame.id == message::kHello) {
        return greet(frame, fault);
    }
    if (frame.command == command::kConnectedSimulator && frame.id == message::kIsConnected) {
        return tellSimulator();
    }
    if (frame.command == command::kRequest && frame.id == message::kClientAddress) {
        return startStream(connection, frame);
    }
    return m_handler.handle(frame);
}

Reply SimulatorServer::greet(const Frame& frame, const Fault& fault)
{
    const QList<QByteArray> parts = frame.data.split(';');
    const QByteArray key = "CLIENTAPI=";
    if (parts.size() != 2 || !parts[0].startsWith(key)) {
        return MessageHandler::refusal(frame, QStringLiteral("unreadable greeting"));
    }
    const QString api = printable(parts[0].mid(key.size()));
    const QString name = printable(parts[1]);
    m_model->setClient(name, api);
    const bool isWrong = fault.kind == FaultKind::WrongApi;
    const QString wrongApi = fault.text.isEmpty() ? QStringLiteral("1.0") : fault.text;
    const QString ownApi = isWrong ? wrongApi : m_options.apiVersion;
    return {{command::kHello, message::kHello, "SERVERAPI=" + ownApi.toUtf8()},
            QStringLiteral("connected: %1, API %2").arg(name, api),
            false};
}

Reply SimulatorServer::tellSimulator() const
{
    const QByteArray text = "FS_IS_CONNECTED;FsId=" + QByteArray::number(m_options.fsId)
                            + ";FsName=" + plainValue(m_options.simulatorName)
                            + ";InterfaceId=" + QByteArray::number(m_options.interfaceId)
                            + ";InterfaceName=" + plainValue(m_options.interfaceName);
    return {{command::kConnectedSimulator, message::kConnectedAnswer, text}, {}, false};
}

Reply SimulatorServer::startStream(BridgeConnection* connection, const Frame& frame)
{
    const QHostAddress address(QString::fromLatin1(frame.data));
    const quint16 port = address.isNull() ? 0 : m_stream.portFor(address, m_options.udpPort);
    if (port == 0) {
        return MessageHandler::refusal(frame, QStringLiteral("no address of this computer"));
    }
    m_stream.start(address, port, m_options.udpIntervalMs);
    m_streamOwner = connection;
    return {{command::kAnswer, frame.id, QByteArray::number(static_cast<uint>(port))},
            QStringLiteral("datagrams to %1:%2").arg(address.toString()).arg(port),
            false};
}

void SimulatorServer::onTick()
{
    Phase phase = m_phase;
    m_model->withFlight([&phase](SimulatedFlight& flight) {
        flight.followClock();
        phase = flight.phase();
    });
    if (phase != m_phase) {
        m_phase = phase;
        Q_EMIT line(QStringLiteral("phase ") + phaseName(phase));
        Q_EMIT phaseChanged(static_cast<int>(phase));
    }
}

void SimulatorServer::note(const Frame& frame)
{
    const aviation::ScopedLock lock(m_mutex);
    ++m_counts[{frame.command, frame.id}];
    m_received.push_back({frame.command, frame.id, frame.data.left(kKeptFileBytes)});
    m_receivedBytes += m_received.back().data.size();
    while (m_received.size() > kKeptMessages || m_receivedBytes > kKeptMessageBytes) {
        m_receivedBytes -= m_received.front().data.size();
        m_received.pop_front();
    }
}

std::vector<ReceivedMessage> SimulatorServer::received() const
{
    const aviation::ScopedLock lock(m_mutex);
    return {m_received.begin(), m_received.end()};
}

int SimulatorServer::receivedCount(int command, int id) const
{
    const aviation::ScopedLock lock(m_mutex);
    int count = 0;
    for (const auto& [numbers, times] : m_counts) {
        count += numbers.first == command && (id == 0 || numbers.second == id) ? times : 0;
    }
    return count;
}

void SimulatorServer::clearReceived()
{
    const aviation::ScopedLock lock(m_mutex);
    m_received.clear();
    m_receivedBytes = 0;
    m_counts.clear();
}

} // namespace simulator

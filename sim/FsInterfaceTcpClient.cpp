#include "sim/FsInterfaceTcpClient.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "aviation/support/Clock.h"
#include "sim/BridgeDatagram.h"
#include "sim/BridgeText.h"
#include "weather/output/records/NewWeatherText.h"
#include "weather/output/records/XPlaneWeatherText.h"

#include <QDebug>
#include <QFile>

#include <algorithm>
#include <utility>

using Outcome = BridgeSocket::Outcome;

namespace {

/// A reply of this size to a write isn't one.
constexpr int kOutsizedReply = 65535;
/// So many plain writes in a row without a reply, and the next ones are hardly waited for.
constexpr int kMostSilentWrites = 2;
constexpr const char* kAircraftRequest = "Request Aircraft data";
/// Seconds of the year 9999's end, the last that a calendar here goes to.
constexpr qint64 kLastSecond = 253402300799;

QString textOf(const QByteArray& utf8)
{
    constexpr int kLongestName = 256;
    return QString::fromUtf8(utf8.left(kLongestName));
}

} // namespace

FsInterfaceTcpClient::FsInterfaceTcpClient(const QString& address, int port,
                                           const QString& clientName, const StopFlag& stop,
                                           const BridgeTimeouts& timeouts, QObject* parent)
    : FsInterfaceBase(parent)
    , m_address(address)
    , m_port(port)
    , m_clientName(clientName)
    , m_timeouts(timeouts)
    , m_socket(stop, timeouts, [this](const QString& text, int level) { log(text, level); })
{}

void FsInterfaceTcpClient::log(const QString& text, int level)
{
    Q_EMIT sigDebugString(text, level);
}

void FsInterfaceTcpClient::logParseFault(const QString& fault)
{
    if (!fault.isEmpty() && fault != m_parseFault) {
        qDebug().noquote() << fault;
        log(outsidetext::forLog(fault.trimmed()), loglevel::kDebug);
    }
    m_parseFault = fault;
}

int FsInterfaceTcpClient::GetFsVersion(aviation::FsId& id, QString& name)
{
    id = m_fsVersion;
    name = m_fsName;
    return simresult::kNone;
}

int FsInterfaceTcpClient::GetInterface(int& id, QString& name)
{
    id = m_interfaceId;
    name = m_interfaceName;
    return simresult::kNone;
}

int FsInterfaceTcpClient::replyFault(const BridgeSocket::Reply& reply)
{
    if (reply.outcome == Outcome::Nothing) {
        countSilence();
        return simresult::kTimeout;
    }
    m_socket.say(QStringLiteral("The server's reply is cut off and can't be read."));
    return simresult::kTimeout;
}

void FsInterfaceTcpClient::countSilence()
{
    constexpr int kMostSilentReplies = 2;
    if (m_socket.stopped()) {
        return;
    }
    if (m_socket.isOpen()) {
        m_socket.sayTimeout();
    } else {
        m_socket.say(QStringLiteral("The server closed the connection."));
    }
    if (++m_silentReplies >= kMostSilentReplies && m_socket.isOpen()) {
        m_socket.say(QStringLiteral("The server doesn't answer any more, the connection is given "
                                    "up. Please check the server, then connect again."));
        m_socket.close();
    }
}

int FsInterfaceTcpClient::request(std::uint8_t id, const QByteArray& text, QByteArray& answer)
{
    if (m_socket.send(bridgecommand::kRequest, id, text) == 0) {
        return simresult::kTimeout;
    }
    if (m_silentWrites > 0 && m_socket.droppedLateReply()) {
        heardWrite();
    }
    const BridgeSocket::Reply reply = readAnswer(id);
    if (reply.outcome != Outcome::Message) {
        return replyFault(reply);
    }
    m_silentReplies = 0;
    m_unheardMs = 0;
    if (reply.message.id != id) {
        return simresult::kWrongMessage;
    }
    if (reply.message.command == bridgecommand::kAnswer) {
        answer = reply.message.data;
        return simresult::kNone;
    }
    return reply.message.command == bridgecommand::kRefuse ? simresult::kRefused
                                                           : simresult::kTimeout;
}

/// The reply to a request. A server that is slow with its writes may answer one of them first.
BridgeSocket::Reply FsInterfaceTcpClient::readAnswer(std::uint8_t id)
{
    BridgeSocket::Reply reply = m_socket.ReadReply();
    const FsMessage& message = reply.message;
    if (reply.outcome != Outcome::Message || message.id == id || m_silentWrites == 0) {
        return reply;
    }
    heardWrite();
    const QByteArray rest = message.data.mid(std::max(0, message.dataLength));
    return m_socket.ReadReply(m_timeouts.reply, rest.startsWith('@') ? rest : QByteArray());
}

int FsInterfaceTcpClient::checkedWrite(std::uint8_t id, const QByteArray& data)
{
    if (m_socket.send(bridgecommand::kWrite, id, data) == 0) {
        return simresult::kTimeout;
    }
    m_writeAnswered = m_socket.ReadReply().outcome != Outcome::Nothing;
    if (!m_writeAnswered) {
        countSilence();
        return simresult::kTimeout;
    }
    heardWrite();
    return simresult::kNone;
}

int FsInterfaceTcpClient::plainWrite(std::uint8_t id, const QByteArray& data)
{
    if (m_socket.send(bridgecommand::kWrite, id, data) == 0) {
        return simresult::kTimeout;
    }
    if (m_socket.droppedLateReply()) {
        heardWrite();
    }
    const int limit =
        m_silentWrites < kMostSilentWrites ? m_timeouts.reply : m_timeouts.unheardWrite;
    const BridgeSocket::Reply reply = m_socket.ReadReply(limit);
    noteWrite(reply.outcome != Outcome::Nothing, limit);
    if (!m_writeAnswered && !m_socket.isOpen() && !m_socket.stopped()) {
        m_socket.say(QStringLiteral("The server closed the connection."));
        return simresult::kTimeout;
    }
    return reply.length >= kOutsizedReply ? simresult::kTimeout : simresult::kNone;
}

void FsInterfaceTcpClient::noteWrite(bool answered, int waitedMs)
{
    if (answered) {
        heardWrite();
        return;
    }
    m_writeAnswered = false;
    m_unheardMs += waitedMs;
    if (++m_silentWrites >= kMostSilentWrites && !std::exchange(m_silentWritesLogged, true)) {
        log(QStringLiteral("(Client) - The server doesn't answer what is written to it. It isn't "
                           "waited for any more, and the weather may not reach the simulator. "
                           "Please check the server, or start it again."),
            loglevel::kWarning);
    }
}

/// Answered requests deliberately don't lead here: a server that swallows writes answers them, and
/// each write would be waited for in full again.
void FsInterfaceTcpClient::heardWrite()
{
    m_writeAnswered = true;
    m_silentReplies = 0;
    m_silentWrites = 0;
    m_unheardMs = 0;
}

/// Silence after a plain write says nothing. If it lasts, a question shows whether the server is
/// gone or only swallows writes.
int FsInterfaceTcpClient::checkLink()
{
    if (!m_connected || m_socket.stopped()) {
        return simresult::kNone;
    }
    if (!m_socket.stillStands()) {
        m_socket.say(QStringLiteral("The server closed the connection."));
        return simresult::kTimeout;
    }
    if (m_unheardMs >= m_timeouts.reply) {
        QByteArray answer;
        request(bridgemessage::kAircraftData, kAircraftRequest, answer);
        return m_unheardMs == 0 ? simresult::kNone : simresult::kTimeout;
    }
    return simresult::kNone;
}

BridgeEnds FsInterfaceTcpClient::ends() const
{
    return {m_socket.ownAddress(), m_socket.serverAddress()};
}

int FsInterfaceTcpClient::GetAircraftData(aviation::structs::AircraftData& data)
{
    QByteArray answer;
    const int result = request(bridgemessage::kAircraftData, kAircraftRequest, answer);
    if (result == simresult::kNone) {
        QString fault;
        data = bridgetext::aircraftFromText(answer, &fault);
        fillMaximumWeights(data);
        logParseFault(fault);
    }
    return result;
}

int FsInterfaceTcpClient::GetAircraftFuel(aviation::structs::AircraftFuel& fuel)
{
    QByteArray answer;
    const int result = request(bridgemessage::kFuel, "Request Aircraft fuel", answer);
    if (result == simresult::kNone) {
        QString fault;
        fuel = bridgetext::fuelFromText(answer, &fault);
        logParseFault(fault);
    }
    return result;
}

int FsInterfaceTcpClient::GetAircraftPayload(aviation::structs::AircraftPayload& payload)
{
    QByteArray answer;
    const int result = request(bridgemessage::kPayload, "Request Aircraft payload", answer);
    if (result == simresult::kNone) {
        QString fault;
        payload = bridgetext::payloadFromText(answer, &fault);
        logParseFault(fault);
    }
    return result;
}

int FsInterfaceTcpClient::GetRadioFrequencys(aviation::structs::RadioFrequencys& radios)
{
    QByteArray answer;
    const int result = request(bridgemessage::kRadios, "Request Radio Data", answer);
    if (result == simresult::kNone) {
        QString fault;
        radios = bridgetext::radioFromText(answer, &fault);
        logParseFault(fault);
    }
    return result;
}

int FsInterfaceTcpClient::GetDateTime(QDateTime& dateTime)
{
    QByteArray answer;
    const int result = request(bridgemessage::kDateTime, "Request DateTime from FS", answer);
    if (result != simresult::kNone) {
        return result;
    }
    qint64 seconds = 0;
    if (!bridgetext::longFromText(answer, seconds) || seconds < -kLastSecond
        || seconds > kLastSecond) {
        return simresult::kWrongMessage;
    }
    dateTime = QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
    return simresult::kNone;
}

int FsInterfaceTcpClient::announceAddress(const QString& address, QString& port)
{
    QByteArray answer;
    const int result = request(bridgemessage::kClientAddress, address.toUtf8(), answer);
    if (result == simresult::kNone) {
        port = textOf(answer);
    }
    return result;
}

int FsInterfaceTcpClient::requestServerConfig(QByteArray& contents)
{
    if (m_socket.send(bridgecommand::kRequest, bridgemessage::kConfigFile,
                      "get Cirrilon config file")
        == 0)
    {
        return simresult::kTimeout;
    }
    QByteArray block;
    FsMessage reply;
    if (m_socket.ReceiveStream(block) == 0) {
        countSilence();
        return simresult::kTimeout;
    }
    block.remove(0, std::max(0, block.indexOf('@')));
    if (progressOf(block) != FrameProgress::Complete || !parseFrame(block, reply)) {
        return simresult::kTimeout;
    }
    m_silentReplies = 0;
    if (reply.command == 0) {
        return simresult::kWrongMessage;
    }
    if (reply.command == bridgecommand::kRefuse) {
        return simresult::kRefused;
    }
    contents = reply.data;
    Q_EMIT sigDataReceived(contents);
    return simresult::kNone;
}

int FsInterfaceTcpClient::ClearWeather()
{
    return checkedWrite(bridgemessage::kClearWeather, "Clear Wx");
}

int FsInterfaceTcpClient::SetAircraftFuel(const aviation::structs::AircraftFuel& fuel)
{
    return checkedWrite(bridgemessage::kFuel, bridgetext::fuelText(fuel));
}

int FsInterfaceTcpClient::SetAircraftPayload(const aviation::structs::AircraftPayload& payload)
{
    return checkedWrite(bridgemessage::kPayload, bridgetext::payloadText(payload));
}

int FsInterfaceTcpClient::SetWeatherRecord(const NewWeather& record)
{
    return checkedWrite(bridgemessage::kWeatherRecord,
                        QByteArray::fromStdString(newWeatherText(record)));
}

int FsInterfaceTcpClient::SendText(const std::string& text, int /*seconds*/)
{
    return plainWrite(bridgemessage::kText, QByteArray::fromStdString(text));
}

int FsInterfaceTcpClient::SetWeatherData(const XPlaneWeather& weather, int mode)
{
    if (mode == kWeatherTextWx) {
        return plainWrite(bridgemessage::kWeatherWx,
                          QByteArray::fromStdString(xPlaneWeatherWxText(weather)));
    }
    return plainWrite(bridgemessage::kWeather,
                      QByteArray::fromStdString(xPlaneWeatherText(weather)));
}

int FsInterfaceTcpClient::SetWeatherText(const QString& text)
{
    return plainWrite(bridgemessage::kObservation, text.toUtf8());
}

int FsInterfaceTcpClient::SetWeatherTheme(const std::string& name)
{
    const std::size_t folderEnd = name.find_last_of("/\\");
    const std::string bare = folderEnd == std::string::npos ? name : name.substr(folderEnd + 1);
    return plainWrite(bridgemessage::kWeatherFileName, QByteArray::fromStdString(bare));
}

int FsInterfaceTcpClient::SetWindLayers(const std::vector<XPlaneWindLayer>& layers)
{
    return plainWrite(bridgemessage::kWindLayers,
                      QByteArray::fromStdString(windLayersLongText(layers)));
}

int FsInterfaceTcpClient::SetWindAtAircraft(const aviation::weather::Wind& wind)
{
    return plainWrite(bridgemessage::kWind,
                      QByteArray::fromStdString(aviation::weather::windText(wind)));
}

int FsInterfaceTcpClient::SetVisibility(int metres)
{
    return plainWrite(bridgemessage::kVisibility, QByteArray::number(metres));
}

int FsInterfaceTcpClient::SetGlobalWindFile(const QByteArray& contents)
{
    return plainWrite(bridgemessage::kGlobalWindFile, contents);
}

int FsInterfaceTcpClient::SetTurbulenceWindFile(const QByteArray& contents)
{
    return plainWrite(bridgemessage::kTurbulenceFile, contents);
}

int FsInterfaceTcpClient::ActivateWeather()
{
    return plainWrite(bridgemessage::kActivateWeather, "Activate Weather Xplane");
}

int FsInterfaceTcpClient::SetRadioFrequencys(const aviation::structs::RadioFrequencys& radios)
{
    return plainWrite(bridgemessage::kRadios, bridgetext::radioText(radios));
}

int FsInterfaceTcpClient::SendWeatherFile(const std::string& path)
{
    constexpr int kSliceMs = 50;
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly) || file.size() > kLongestFrameData) {
        log(QStringLiteral("(Client) - no good file failed! "), loglevel::kError);
        return simresult::kFileNotOpened;
    }
    if (m_socket.send(bridgecommand::kWrite, bridgemessage::kWeatherFile, file.readAll()) == 0) {
        return simresult::kNotDelivered;
    }
    for (int slept = 0; slept < m_timeouts.fileSettle && !m_socket.stopped(); slept += kSliceMs) {
        aviation::Clock::current().SleepMs(kSliceMs);
    }
    return readFileReply();
}

int FsInterfaceTcpClient::readFileReply()
{
    const BridgeSocket::Reply reply = m_socket.ReadReply();
    m_writeAnswered = reply.outcome != Outcome::Nothing;
    if (!m_writeAnswered) {
        countSilence();
        return simresult::kTimeout;
    }
    heardWrite();
    if (reply.message.command == bridgecommand::kRefuse
        && reply.message.id == bridgemessage::kWeatherFile)
    {
        log(QStringLiteral("(Client) - ") + outsidetext::forLog(reply.message.data),
            loglevel::kError);
        return simresult::kNotDelivered;
    }
    return simresult::kNone;
}

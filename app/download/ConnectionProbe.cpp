#include "app/download/ConnectionProbe.h"

#include "app/base/Gzip.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "app/download/ServerAnswer.h"
#include "sim/BridgeFrame.h"
#include "weather/store/WeatherFile.h"

#include <QList>
#include <QLocale>
#include <QStringList>
#include <QStringView>
#include <QTcpSocket>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace {

constexpr int kAddressMs = 20000;
constexpr int kBridgeMs = 5000;
constexpr qint64 kLargestAnswer = 64LL * 1024 * 1024;
constexpr qint64 kLargestInflated = 64LL * 1024 * 1024; // enough to look at; keeps the window alive
constexpr int kLargestHandshake = 16 * 1024;

QString sizeText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

bool isGzip(const QByteArray& data)
{
    return data.startsWith("\x1f\x8b");
}

int filledLines(QStringView text)
{
    const QList<QStringView> lines = text.split(u'\n');
    return static_cast<int>(std::count_if(
        lines.begin(), lines.end(), [](QStringView line) { return !line.trimmed().isEmpty(); }));
}

int countOf(QStringView text, QStringView part)
{
    int count = 0;
    for (qsizetype at = text.indexOf(part); at >= 0; at = text.indexOf(part, at + part.size())) {
        ++count;
    }
    return count;
}

/// "KMSP 011153Z ...": four letters or digits, a day and time group.
bool looksLikeReport(QStringView line)
{
    constexpr int kIdentLength = 4;
    constexpr int kTimeLength = 7;
    if (line.size() <= kIdentLength + kTimeLength || line.at(kIdentLength) != u' ') {
        return false;
    }
    const QStringView time = line.mid(kIdentLength + 1, kTimeLength);
    return time.endsWith(u'Z') && std::all_of(time.begin(), time.end() - 1, [](QChar c) {
               return c >= u'0' && c <= u'9';
           });
}

int bareReports(QStringView text)
{
    const QList<QStringView> lines = text.split(u'\n');
    return static_cast<int>(std::count_if(lines.begin(), lines.end(), [](QStringView line) {
        return looksLikeReport(line.trimmed());
    }));
}

ProbeResult describePlain(const QByteArray& data)
{
    const QString text = QString::fromUtf8(data);
    const aviation::weather::WeatherBlocks blocks = aviation::weather::extractWeatherBlocks(text);
    QStringList found;
    const int metars = filledLines(blocks.metars);
    const int synops = countOf(blocks.synops, u"=");
    const int tafs = countOf(blocks.tafs, u"TAF ");
    if (metars > 0) {
        found << ConnectionProbe::tr("a METAR block with %1 reports").arg(metars);
    }
    if (synops > 0) {
        found << ConnectionProbe::tr("a SYNOP block with %1 reports").arg(synops);
    }
    if (tafs > 0) {
        found << ConnectionProbe::tr("a TAF block with %1 reports").arg(tafs);
    }
    if (!found.isEmpty()) {
        return {true, ConnectionProbe::tr("It is a weather file with %1.")
                          .arg(found.join(QStringLiteral(", ")))};
    }
    const int bare = bareReports(text);
    if (bare > 0) {
        return {true,
                ConnectionProbe::tr("It holds %1 METAR reports without block marks.").arg(bare)};
    }
    return {false, ConnectionProbe::tr("No weather was recognised in it. It begins with: %1")
                       .arg(outsidetext::quoted(data))};
}

QString socketReason(const QTcpSocket& socket)
{
    switch (socket.error()) {
    case QAbstractSocket::ConnectionRefusedError:
        return ConnectionProbe::tr("The connection was refused. Is the server running, and is the "
                                   "port right?");
    case QAbstractSocket::HostNotFoundError:
        return ConnectionProbe::tr("The computer was not found. Check the address.");
    case QAbstractSocket::RemoteHostClosedError:
        return ConnectionProbe::tr("The server closed the connection without an answer.");
    default:
        return socket.errorString();
    }
}

} // namespace

ProbeResult describeWeatherAnswer(const QByteArray& data)
{
    if (data.startsWith("GRIB")) {
        return {true, ConnectionProbe::tr("It is a GRIB file.")};
    }
    const serveranswer::Fault fault = serveranswer::faultKind(data);
    if (fault == serveranswer::Fault::Empty) {
        return {false, ConnectionProbe::tr("It is empty.")};
    }
    if (fault == serveranswer::Fault::WebPage) {
        return {false, ConnectionProbe::tr("It is a web page, not weather data.")};
    }
    if (!isGzip(data)) {
        return describePlain(data);
    }
    const GzipResult inflated = inflateGzip(data, kLargestInflated);
    if (!inflated.ok()) {
        return {false,
                ConnectionProbe::tr("It is gzip data that can't be read: %1.").arg(inflated.error)};
    }
    ProbeResult inside = describePlain(inflated.data);
    inside.text = ConnectionProbe::tr("It is gzip data.") + QLatin1Char(' ') + inside.text;
    return inside;
}

ConnectionProbe::ConnectionProbe(NetworkFactory network, QObject* parent)
    : QObject(parent)
    , m_network(std::move(network))
    , m_addressMs(kAddressMs)
    , m_bridgeMs(kBridgeMs)
{
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &ConnectionProbe::onTimeout);
}

ConnectionProbe::~ConnectionProbe()
{
    cancel();
}

void ConnectionProbe::setTimeLimits(int addressMs, int bridgeMs)
{
    m_addressMs = addressMs;
    m_bridgeMs = bridgeMs;
}

bool ConnectionProbe::isRunning() const
{
    return m_download != nullptr || m_socket != nullptr;
}

/// Both may be the sender of what led here.
void ConnectionProbe::cancel()
{
    m_limit.stop();
    m_handshake.reset();
    m_block.clear();
    if (DownloadManager* download = std::exchange(m_download, nullptr)) {
        download->disconnect(this);
        download->deleteLater();
    }
    if (QTcpSocket* socket = std::exchange(m_socket, nullptr)) {
        socket->disconnect(this);
        socket->abort();
        socket->deleteLater();
    }
}

void ConnectionProbe::finish(const ProbeResult& result)
{
    cancel();
    Q_EMIT sigFinished(result.ok, result.text);
}

void ConnectionProbe::onTimeout()
{
    const int seconds = (m_socket != nullptr ? m_bridgeMs : m_addressMs) / 1000;
    if (!m_handshake) {
        finish({false, tr("No answer within %1 seconds.").arg(seconds)});
    } else {
        finish({false, tr("Something is listening there, but it gave no bridge answer within "
                          "%1 seconds.")
                           .arg(seconds)});
    }
}

void ConnectionProbe::testAddress(const QUrl& url)
{
    cancel();
    if (!isWebAddress(url)) {
        finish({false, tr("This is no address that begins with http:// or https://.")});
        return;
    }
    DownloadContext context;
    context.network = m_network;
    context.limits.replyBytes = kLargestAnswer;
    m_download = new DownloadManager(std::move(context), this);
    connect(m_download, &DownloadManager::sigFetched, this, &ConnectionProbe::onFetched);
    m_limit.start(m_addressMs);
    m_download->fetchToMemory(url);
}

void ConnectionProbe::onFetched(const DownloadAnswer& answer)
{
    if (answer.tooLarge) {
        finish({false, tr("The answer is larger than %1.").arg(sizeText(kLargestAnswer))});
        return;
    }
    if (answer.status == 0) {
        finish({false, tr("The server can't be reached: %1").arg(answer.errorText)});
        return;
    }
    const QString head =
        tr("HTTP status %1, %2.").arg(answer.status).arg(sizeText(answer.data.size()));
    if (answer.error != 0) {
        finish({false, head + QLatin1Char(' ')
                           + tr("The server refuses: %1").arg(outsidetext::quoted(answer.phrase))});
        return;
    }
    const ProbeResult inside = describeWeatherAnswer(answer.data);
    finish({inside.ok, head + QLatin1Char(' ') + inside.text});
}

void ConnectionProbe::testBridge(const QString& host, int port)
{
    cancel();
    m_server = host + QLatin1Char(':') + QString::number(port);
    m_socket = new QTcpSocket(this);
    connect(m_socket, &QTcpSocket::connected, this, &ConnectionProbe::onBridgeConnected);
    connect(m_socket, &QTcpSocket::readyRead, this, &ConnectionProbe::onBridgeData);
    connect(m_socket, &QTcpSocket::errorOccurred, this, &ConnectionProbe::onBridgeError);
    m_limit.start(m_bridgeMs);
    m_socket->connectToHost(host, static_cast<quint16>(port));
}

void ConnectionProbe::onBridgeError()
{
    finish({false, socketReason(*m_socket)});
}

void ConnectionProbe::onBridgeConnected()
{
    m_handshake.emplace(QStringLiteral("Cirrilon v.") + Settings::version());
    sendRequest();
}

void ConnectionProbe::sendRequest()
{
    const FsMessage request = m_handshake->request();
    m_block.clear();
    m_socket->write(frameBytes(request.command, request.id, request.data));
}

void ConnectionProbe::onBridgeData()
{
    m_block += m_socket->read(kLargestHandshake);
    const FrameProgress progress = progressOf(m_block);
    if (progress == FrameProgress::Partial && m_block.size() < kLargestHandshake) {
        return;
    }
    FsMessage reply;
    const bool framed = m_block.startsWith('@') && progress == FrameProgress::Complete
                        && parseFrame(m_block, reply);
    // What is no frame is an empty message, which no bridge server sends.
    m_handshake->take(framed ? reply : FsMessage());
    if (m_handshake->isOpen()) {
        sendRequest();
    } else {
        finish(bridgeResult());
    }
}

ProbeResult ConnectionProbe::bridgeResult() const
{
    switch (m_handshake->step()) {
    case BridgeHandshake::Step::Done:
        return simulatorResult();
    case BridgeHandshake::Step::WrongVersion:
        return versionResult();
    default:
        return {false,
                tr("Something answers at %1, but not as a bridge server does.").arg(m_server)};
    }
}

ProbeResult ConnectionProbe::versionResult() const
{
    const QString advice = m_handshake->clientIsNewer() ? tr("Please update the server or plug-in.")
                                                        : tr("Please update Cirrilon.");
    return {false, tr("A server answers at %1, but its API version is %2 and %3 is needed.")
                           .arg(m_server, outsidetext::quoted(m_handshake->serverVersion()),
                                QLatin1String(kBridgeApiVersion))
                       + QLatin1Char(' ') + advice};
}

ProbeResult ConnectionProbe::simulatorResult() const
{
    const BridgeSimulator& simulator = m_handshake->simulator();
    const auto quoted = [](const std::optional<QString>& text) {
        return outsidetext::quoted(text.value_or(QString()).toUtf8());
    };
    const QString head = tr("Connected to %1, server API version %2.")
                             .arg(m_server, outsidetext::quoted(m_handshake->serverVersion()))
                         + QLatin1Char(' ');
    const QString name = quoted(simulator.fsName);
    if (name.isEmpty() || simulator.fsId.value_or(0) == 0) {
        return {true, head + tr("The server has no simulator at the moment.")};
    }
    return {true,
            head + tr("Simulator: %1, through %2.").arg(name, quoted(simulator.interfaceName))};
}

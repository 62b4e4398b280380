#include "app/download/ConnectionProbe.h"

#include "app/base/Gzip.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "aviation/support/NumberText.h"
#include "sim/BridgeFrame.h"
#include "sim/FsInterfaceTcpClient.h"

#include <QList>
#include <QLocale>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QStringList>
#include <QTcpSocket>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace {

constexpr char kUserAgent[] = "Cirrilon 3.0";
constexpr int kAddressMs = 20000;
constexpr int kBridgeMs = 5000;
constexpr qint64 kLargestAnswer = 64LL * 1024 * 1024;
constexpr qint64 kLargestInflated = 64LL * 1024 * 1024; // enough to look at; keeps the window alive
constexpr int kLargestHandshake = 16 * 1024;
constexpr int kLongestQuote = 80;
constexpr int kMaxRedirects = 5;
constexpr int kFieldsOfSimulator = 5;

QString SizeText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

bool IsGzip(const QByteArray& data)
{
    return data.startsWith("\x1f\x8b");
}

/// The text between the last pair of markers, as the program reads it.
QByteArray Block(const QByteArray& data, const QByteArray& name)
{
    const QByteArray opening = '[' + name + ']';
    const int start = data.lastIndexOf(opening);
    const int end = data.lastIndexOf("[/" + name + ']');
    return start < 0 || end < start
               ? QByteArray()
               : data.mid(start + opening.size(), end - start - opening.size());
}

int FilledLines(const QByteArray& text)
{
    int count = 0;
    for (const QByteArray& line : text.split('\n')) {
        count += line.trimmed().isEmpty() ? 0 : 1;
    }
    return count;
}

/// "KMSP 011153Z ...": four letters or digits, a day and time group.
bool LooksLikeReport(const QByteArray& line)
{
    constexpr int kIdentLength = 4;
    constexpr int kTimeLength = 7;
    const QByteArray time = line.mid(kIdentLength + 1, kTimeLength);
    return line.size() > kIdentLength + kTimeLength && line.at(kIdentLength) == ' '
           && time.endsWith('Z') && std::all_of(time.begin(), time.end() - 1, [](char c) {
                  return c >= '0' && c <= '9';
              });
}

int BareReports(const QByteArray& text)
{
    int count = 0;
    for (const QByteArray& line : text.split('\n')) {
        count += LooksLikeReport(line.trimmed()) ? 1 : 0;
    }
    return count;
}

bool LooksLikeWebPage(const QByteArray& data)
{
    constexpr int kHead = 512;
    const QByteArray head = data.left(kHead).trimmed().toLower();
    return head.startsWith("<!doctype") || head.startsWith("<html") || head.startsWith("<?xml");
}

ProbeResult DescribePlain(const QByteArray& data)
{
    QStringList found;
    const int metars = FilledLines(Block(data, "METAR"));
    const int synops = Block(data, "SYNOP").count('=');
    const int tafs = Block(data, "TAF").count("TAF ");
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
    const int bare = BareReports(data);
    if (bare > 0) {
        return {true,
                ConnectionProbe::tr("It holds %1 METAR reports without block marks.").arg(bare)};
    }
    return {false, ConnectionProbe::tr("No weather was recognised in it. It begins with: %1")
                       .arg(outsidetext::quoted(data))};
}

/// Number and text of an attribute "key=value".
QByteArray ValueOf(const QByteArray& field)
{
    return field.mid(field.indexOf('=') + 1);
}

double VersionNumber(const QByteArray& text)
{
    return aviation::NumberFromText(aviation::Widen(text.left(kLongestQuote).toStdString()));
}

QString SocketReason(const QTcpSocket& socket)
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

bool IsWebAddress(const QUrl& url)
{
    return url.isValid() && !url.host().isEmpty()
           && (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
}

ProbeResult DescribeWeatherAnswer(const QByteArray& data)
{
    if (data.isEmpty()) {
        return {false, ConnectionProbe::tr("It is empty.")};
    }
    if (data.startsWith("GRIB")) {
        return {true, ConnectionProbe::tr("It is a GRIB file.")};
    }
    if (LooksLikeWebPage(data)) {
        return {false, ConnectionProbe::tr("It is a web page, not weather data.")};
    }
    if (!IsGzip(data)) {
        return DescribePlain(data);
    }
    const GzipResult inflated = inflateGzip(data, kLargestInflated);
    if (!inflated.ok()) {
        return {false,
                ConnectionProbe::tr("It is gzip data that can't be read: %1.").arg(inflated.error)};
    }
    ProbeResult inside = DescribePlain(inflated.data);
    inside.text = ConnectionProbe::tr("It is gzip data.") + QLatin1Char(' ') + inside.text;
    return inside;
}

ConnectionProbe::ConnectionProbe(NetworkFactory network, QObject* parent)
    : QObject(parent)
    , m_makeNetwork(std::move(network))
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
    return m_reply != nullptr || m_socket != nullptr;
}

void ConnectionProbe::cancel()
{
    m_limit.stop();
    m_step = Step::Idle;
    m_block.clear();
    if (QNetworkReply* reply = std::exchange(m_reply, nullptr)) {
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
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
    if (m_step == Step::Idle) {
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
    if (!IsWebAddress(url)) {
        finish({false, tr("This is no address that begins with http:// or https://.")});
        return;
    }
    if (m_network == nullptr) {
        m_network = m_makeNetwork();
    }
    QNetworkRequest request(url);
    request.setRawHeader("User-Agent", kUserAgent);
    // Otherwise Qt asks for packed transfers and inflates them without a limit.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(kMaxRedirects);
    m_reply = m_network->get(request);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &ConnectionProbe::onAddressProgress);
    connect(m_reply, &QNetworkReply::finished, this, &ConnectionProbe::onAddressFinished);
    m_limit.start(m_addressMs);
}

void ConnectionProbe::onAddressProgress(qint64 received)
{
    if (received > kLargestAnswer) {
        finish({false, tr("The answer is larger than %1.").arg(SizeText(kLargestAnswer))});
    }
}

void ConnectionProbe::onAddressFinished()
{
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status == 0) {
        finish({false, tr("The server can't be reached: %1").arg(m_reply->errorString())});
        return;
    }
    const QByteArray data = m_reply->readAll();
    const QString head = tr("HTTP status %1, %2.").arg(status).arg(SizeText(data.size()));
    if (m_reply->error() != QNetworkReply::NoError) {
        const QString phrase = outsidetext::quoted(
            m_reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toByteArray());
        finish({false, head + QLatin1Char(' ') + tr("The server refuses: %1").arg(phrase)});
        return;
    }
    const ProbeResult inside = DescribeWeatherAnswer(data);
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
    finish({false, SocketReason(*m_socket)});
}

void ConnectionProbe::send(int command, int id, const QByteArray& data)
{
    m_block.clear();
    m_socket->write(
        FrameBytes(static_cast<std::uint8_t>(command), static_cast<std::uint8_t>(id), data));
}

void ConnectionProbe::onBridgeConnected()
{
    m_step = Step::Hello;
    send(bridgecommand::kHello, bridgemessage::kHello,
         QByteArray("CLIENTAPI=") + kBridgeApiVersion + ";Cirrilon v."
             + Settings::version().toUtf8());
}

void ConnectionProbe::onBridgeData()
{
    m_block += m_socket->read(kLargestHandshake);
    const FrameProgress progress = ProgressOf(m_block);
    if (progress == FrameProgress::Partial && m_block.size() < kLargestHandshake) {
        return;
    }
    FsMessage message;
    const bool framed = m_block.startsWith('@') && progress == FrameProgress::Complete
                        && ParseFrame(m_block, message);
    const bool hello =
        framed && message.command == bridgecommand::kHello && message.id == bridgemessage::kHello;
    if (m_step == Step::Hello && hello) {
        onHello(message.data);
    } else if (m_step == Step::Simulator && framed && message.id == bridgemessage::kFsConnected) {
        onSimulator(message.data);
    } else {
        finish(
            {false, tr("Something answers at %1, but not as a bridge server does.").arg(m_server)});
    }
}

void ConnectionProbe::onHello(const QByteArray& data)
{
    const QByteArray version = ValueOf(data);
    m_serverApi = outsidetext::quoted(version);
    const double server = VersionNumber(version);
    const double client = VersionNumber(kBridgeApiVersion);
    if (data.count('=') == 1 && (server < client || server > client)) {
        const QString advice = client > server ? tr("Please update the server or plug-in.")
                                               : tr("Please update Cirrilon.");
        finish({false, tr("A server answers at %1, but its API version is %2 and %3 is needed.")
                               .arg(m_server, m_serverApi, QLatin1String(kBridgeApiVersion))
                           + QLatin1Char(' ') + advice});
        return;
    }
    m_step = Step::Simulator;
    send(bridgecommand::kConnectedFs, bridgemessage::kIsFsConnected, "IS_FS_CONNECTED");
}

void ConnectionProbe::onSimulator(const QByteArray& data)
{
    const QString head = tr("Connected to %1, server API version %2.").arg(m_server, m_serverApi);
    const QList<QByteArray> fields = data.split(';');
    const QString name = fields.size() == kFieldsOfSimulator
                             ? outsidetext::quoted(ValueOf(fields.at(2)))
                             : QString();
    if (name.isEmpty() || ValueOf(fields.at(1)).toInt() == 0) {
        finish({true, head + QLatin1Char(' ') + tr("The server has no simulator at the moment.")});
        return;
    }
    finish({true, head + QLatin1Char(' ')
                      + tr("Simulator: %1, through %2.")
                            .arg(name, outsidetext::quoted(ValueOf(fields.at(4))))});
}

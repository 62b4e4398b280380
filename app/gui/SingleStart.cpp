#include "app/gui/SingleStart.h"

#include <QCryptographicHash>
#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QLockFile>

#include <utility>

namespace {

constexpr int kConnectMs = 1000;
constexpr int kAnswerMs = 5000; ///< the first one may be loading its tables
constexpr int kTurnMs = 8000;   ///< longer than another start takes to find out
constexpr char kQuestion = '?';
constexpr char kAnswer = '!';
constexpr int kKeyCharacters = 24;

} // namespace

SingleStart::SingleStart(QString key, QObject* parent)
    : QObject(parent)
    , m_key(std::move(key))
    , m_server(new QLocalServer(this))
{
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server, &QLocalServer::newConnection, this, &SingleStart::answer);
}

SingleStart::~SingleStart() = default;

QString SingleStart::keyOf(const QString& settingsFolder)
{
    const QDir folder(settingsFolder);
    const QString place = folder.exists() ? folder.canonicalPath() : folder.absolutePath();
    const QByteArray who = QDir::homePath().toUtf8() + '\n' + qgetenv("USER") + '\n'
                           + qgetenv("USERNAME") + '\n' + place.toUtf8();
    const QByteArray hash = QCryptographicHash::hash(who, QCryptographicHash::Sha256).toHex();
    return QStringLiteral("cirrilon-") + QString::fromLatin1(hash.left(kKeyCharacters));
}

SingleStart::Found SingleStart::begin()
{
    // Two starts at once, as after a double click too many, find out one after the other.
    QLockFile turn(QDir::temp().filePath(m_key + QStringLiteral(".lock")));
    turn.tryLock(kTurnMs);
    const Found found = askFirst();
    if (found == Found::Nobody) {
        listen();
    }
    return found;
}

SingleStart::Found SingleStart::askFirst() const
{
    QLocalSocket socket;
    socket.connectToServer(m_key);
    if (!socket.waitForConnected(kConnectMs)) {
        return Found::Nobody;
    }
    socket.write(&kQuestion, 1);
    socket.flush();
    const bool answered = socket.waitForReadyRead(kAnswerMs) && socket.read(1).startsWith(kAnswer);
    return answered ? Found::Raised : Found::NoAnswer;
}

void SingleStart::listen()
{
    if (!m_server->listen(m_key)) {
        QLocalServer::removeServer(m_key); // what a crash has left
        m_server->listen(m_key);
    }
}

void SingleStart::answer()
{
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        socket->write(&kAnswer, 1);
        socket->flush(); // bringing up the window may take a while
        Q_EMIT sigRaise();
    }
}

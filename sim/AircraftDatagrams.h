#pragma once

#include "app/base/Reporting.h"
#include "aviation/AircraftData.h"

#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <cstdint>
#include <memory>

class QByteArray;
class QUdpSocket;
class Settings;
class StopFlag;

/// Times of the stream of aircraft data, milliseconds.
struct StreamTimes
{
    int silence = 3000;   ///< without a datagram; then the data are asked for again
    int slowPoll = 10000; ///< between two questions beside the stream
};

/// The stream of aircraft data that a bridge server pushes by UDP. While datagrams come, the
/// simulator is hardly polled. Only datagrams of the server of the settings count; a server on this
/// computer may send from any of its own addresses. Main thread; owned by the controller.
class AircraftDatagrams : public QObject
{
    Q_OBJECT
public:
    /// Settings and flag outlive it; once the flag is raised nothing more is read.
    AircraftDatagrams(const Settings& settings, const StopFlag& stop, LogFunction log,
                      StreamTimes times = {}, QObject* parent = nullptr);
    ~AircraftDatagrams() override;

    /// Binds an own address and a port in decimal digits, and says how it went. A socket that is
    /// bound stays as it is.
    void bind(const QString& ownAddress, const QString& portText);
    void close();
    bool isBound() const { return m_bound; }
    /// Datagrams come: the last one isn't older than the silence.
    bool isStreaming() const { return m_streaming; }
    /// Whether the simulator is to be polled now: always without a stream, beside one now and then,
    /// since a stream says nothing of the connection by which weather is set. A yes counts.
    bool takePollTurn();
    /// Reads one datagram; those that wait after it get calls of their own.
    void readOne();

Q_SIGNALS:
    /// `isAnswer`: it stands for a finished poll.
    void sigAircraft(const aviation::structs::AircraftData& aircraft, bool isAnswer);
    /// The first datagram that counts has come, or the first after a silence.
    void sigStreaming();
    /// None came at all, or none any more; once for each bind.
    void sigSilent();

private:
    void findSenders();
    void setSenders(const QList<QHostAddress>& server);
    bool isSender(const QHostAddress& sender) const;
    void take(const QByteArray& bytes);
    void noteDatagram();
    void noteSilence();
    void logOnce(bool& logged, const QString& text);

    const Settings& m_settings;
    const StopFlag& m_stop;
    const LogFunction m_log;
    std::unique_ptr<QUdpSocket> m_socket;
    bool m_bound = false;
    bool m_streaming = false;
    const StreamTimes m_times;
    QTimer m_silence{this};
    std::int64_t m_lastPollMs = 0; ///< of the monotonic clock
    QString m_ends;                ///< own address and port, for the log
    QList<QHostAddress> m_senders;
    bool m_sendersKnown = false;
    // Said once for each stream.
    bool m_foreignLogged = false;
    bool m_badLogged = false;
    bool m_silenceLogged = false;
};

#pragma once

#include "app/base/Reporting.h"
#include "aviation/AircraftData.h"

#include <QHostAddress>
#include <QObject>
#include <QString>
#include <QVector>

#include <memory>

class QByteArray;
class QUdpSocket;
class Settings;
class StopFlag;

/// The stream of aircraft data that a bridge server pushes by UDP, in place of polling. Only
/// datagrams of the server of the settings count. Main thread; owned by the controller.
class AircraftDatagrams : public QObject
{
    Q_OBJECT
public:
    /// Settings and flag outlive it; once the flag is raised nothing more is read.
    AircraftDatagrams(const Settings& settings, const StopFlag& stop, LogFunction log,
                      QObject* parent = nullptr);
    ~AircraftDatagrams() override;

    /// Binds the own address of the settings and a port in decimal digits, and says how it went. A
    /// socket that is bound stays as it is.
    void bind(const QString& portText);
    void close();
    bool isBound() const { return m_bound; }
    /// Reads one datagram; those that wait after it get calls of their own.
    void readOne();

Q_SIGNALS:
    /// `isAnswer`: it stands for a finished poll.
    void sigAircraft(const aviation::structs::AircraftData& aircraft, bool isAnswer);

private:
    void findSenders();
    bool isSender(const QHostAddress& sender) const;
    void take(const QByteArray& bytes);
    void logOnce(bool& logged, const QString& text);

    const Settings& m_settings;
    const StopFlag& m_stop;
    const LogFunction m_log;
    std::unique_ptr<QUdpSocket> m_socket;
    bool m_bound = false;
    QVector<QHostAddress> m_senders;
    bool m_sendersKnown = false;
    // Said once for each stream.
    bool m_foreignLogged = false;
    bool m_badLogged = false;
};

#pragma once

#include "tools/simulator/Frame.h"
#include "tools/simulator/SimulatedFlight.h"
#include "tools/simulator/SimulatorState.h"

#include <QMutex>
#include <QString>

namespace simulator {

/// The answer to a message and the line that tells people of it; an empty line tells nothing.
struct Reply
{
    Frame frame;
    QString line;
    bool isWeather = false; ///< the message set weather
};

/// Understands WRIT and REQUEST messages: keeps what is written, answers with it and with the
/// flight. No sockets, no faults. Used on the server's thread; state() on any.
class MessageHandler
{
public:
    explicit MessageHandler(SimulatedFlight flight);

    /// The answer; NCMD for what isn't in the table or can't be read.
    Reply handle(const Frame& frame);
    static Reply refusal(const Frame& frame, const QString& why);

    SimulatedFlight& flight() { return m_flight; }
    /// The aircraft in the weather that was given, with weights; the landing rate is left alone.
    aviation::structs::AircraftData peekAircraft();
    /// The text of the aircraft, with the landing rate in the first after touchdown.
    QByteArray aircraftText();

    SimulatorState state() const;
    void setClient(const QString& name, const QString& api);

private:
    Reply handleRequest(const Frame& frame);
    Reply handleWrite(const Frame& frame);
    QString write(int id, const QByteArray& data);
    QString writeWeather(int id, const QByteArray& data);
    QString writeAircraft(int id, const QByteArray& data);
    QString writeCommand(int id, const QByteArray& data);
    QString keepFile(const char* kind, const QByteArray& data);
    aviation::structs::AircraftFuel presentFuel() const;

    SimulatedFlight m_flight;
    double m_burnedBefore = 0.0; ///< pounds burned when the fuel was last set

    mutable QMutex m_mutex;
    SimulatorState m_state; ///< guarded by m_mutex; written on the server's thread only
};

} // namespace simulator

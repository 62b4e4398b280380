#pragma once

#include "standins/simulator/Frame.h"
#include "standins/simulator/SimulatorModel.h"

#include <QString>

namespace simulator {

/// The answer to a message and the line that people read of it; an empty line isn't printed.
struct Reply
{
    Frame frame;
    QString line;
    bool isWeather = false; ///< the message set weather
};

/// Understands WRIT and REQUEST messages: the model keeps what is written, and answers. No sockets,
/// no faults. Used on the server's thread.
class MessageHandler
{
public:
    /// The model outlives the handler.
    explicit MessageHandler(SimulatorModel& model) : m_model(model) {}

    /// The answer; NCMD for what isn't in the table or can't be read.
    Reply handle(const Frame& frame);
    static Reply refusal(const Frame& frame, const QString& why);

    /// The text of the aircraft, with the landing rate in the first after touchdown.
    QByteArray aircraftText();

private:
    Reply handleRequest(const Frame& frame);
    Reply handleWrite(const Frame& frame);
    QString write(int id, const QByteArray& data);
    QString writeWeather(int id, const QByteArray& data);
    QString writeWinds(int id, const QByteArray& data);
    QString writeAircraft(int id, const QByteArray& data);
    QString writeCommand(int id, const QByteArray& data);
    QString keepFile(const char* kind, const QByteArray& data);

    SimulatorModel& m_model;
};

} // namespace simulator

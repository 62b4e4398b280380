#include "standins/simulator/MessageHandler.h"

#include "standins/simulator/AircraftTexts.h"
#include "standins/simulator/Describe.h"
#include "standins/simulator/Messages.h"
#include "standins/simulator/WeatherTexts.h"

#include <algorithm>
#include <array>

namespace simulator {

namespace {

constexpr int kMostVisibility = 1000000; ///< metres

struct RequestText
{
    int id;
    const char* text;
};

/// What a client has to send with a request, letter by letter.
constexpr std::array kRequestTexts{RequestText{message::kAircraft, "Request Aircraft data"},
                                   RequestText{message::kFuel, "Request Aircraft fuel"},
                                   RequestText{message::kPayload, "Request Aircraft payload"},
                                   RequestText{message::kRadios, "Request Radio Data"},
                                   RequestText{message::kDateTime, "Request DateTime from FS"},
                                   RequestText{message::kConfigFile, "get Cirrilon config file"}};

bool isRequest(const Frame& frame)
{
    return std::any_of(
        kRequestTexts.begin(), kRequestTexts.end(),
        [&frame](const RequestText& row) { return row.id == frame.id && frame.data == row.text; });
}

bool isWeatherMessage(int id)
{
    return id == message::kWeatherRecord || id == message::kWeatherText
           || id == message::kWeatherData || id == message::kWeatherDataWx || id == message::kFile;
}

} // namespace

Reply MessageHandler::refusal(const Frame& frame, const QString& why)
{
    return {{command::kRefusal, frame.id, why.toUtf8()},
            QStringLiteral("refused %1: %2").arg(messageName(frame.command, frame.id), why),
            false};
}

Reply MessageHandler::handle(const Frame& frame)
{
    if (frame.command == command::kRequest || frame.command == command::kRead) {
        return handleRequest(frame);
    }
    if (frame.command == command::kWrite) {
        return handleWrite(frame);
    }
    return refusal(frame, QStringLiteral("unknown command"));
}

Reply MessageHandler::handleRequest(const Frame& frame)
{
    if (!isRequest(frame)) {
        return refusal(frame, QStringLiteral("unknown request"));
    }
    Reply reply{{command::kAnswer, frame.id, {}}, {}, false};
    switch (frame.id) {
    case message::kAircraft:
        reply.frame.data = aircraftText();
        break;
    case message::kFuel:
        reply.frame.data = fuelText(m_model.presentFuel());
        break;
    case message::kPayload:
        reply.frame.data = payloadText(m_model.state().payload);
        break;
    case message::kRadios:
        reply.frame.data = radioText(m_model.state().radios);
        break;
    case message::kDateTime:
        reply.frame.data = QByteArray::number(static_cast<qlonglong>(m_model.simTime()));
        break;
    default:
        reply.frame.data = "[Server]\nName=stand-in simulator\n";
        break;
    }
    return reply;
}

Reply MessageHandler::handleWrite(const Frame& frame)
{
    const QString line = write(frame.id, frame.data);
    if (line.isEmpty()) {
        return refusal(frame, QStringLiteral("unknown or unreadable message"));
    }
    return {{command::kAnswer, frame.id, "OK"}, line, isWeatherMessage(frame.id)};
}

/// What was done, for people; empty if nothing was.
QString MessageHandler::write(int id, const QByteArray& data)
{
    switch (id) {
    case message::kFuel:
    case message::kPayload:
    case message::kRadios:
        return writeAircraft(id, data);
    case message::kFile:
        return keepFile("weather", data);
    case message::kGlobalWindFile:
        return keepFile("global wind", data);
    case message::kTurbulenceFile:
        return keepFile("turbulence", data);
    case message::kFileName:
    case message::kActivateWeather:
    case message::kVisibility:
    case message::kScreenText:
    case message::kClearWeather:
        return writeCommand(id, data);
    default:
        return writeWeather(id, data);
    }
}

QString MessageHandler::writeWeather(int id, const QByteArray& data)
{
    if (id == message::kWeatherText && !data.isEmpty()) {
        m_model.addWeatherText(QString::fromUtf8(data));
        return describeWeatherText(data);
    }
    if (id == message::kWeatherRecord) {
        const std::optional<NewWeather> record = readWeatherRecord(data);
        if (record) {
            m_model.addWeatherRecord(*record);
        }
        return record ? describe(*record) : QString();
    }
    if (id == message::kWeatherData || id == message::kWeatherDataWx) {
        const bool withWx = id == message::kWeatherDataWx;
        const std::optional<XPlaneWeather> weather = readWeatherData(data, withWx);
        if (weather) {
            m_model.setWeatherData(*weather, withWx);
        }
        return weather ? describe(*weather) : QString();
    }
    return writeWinds(id, data);
}

QString MessageHandler::writeWinds(int id, const QByteArray& data)
{
    if (id == message::kWindLayers) {
        const auto layers = readWindLayers(data);
        if (layers) {
            m_model.setWindLayers(*layers);
        }
        return layers ? describe(*layers) : QString();
    }
    const std::optional<aviation::weather::Wind> wind =
        id == message::kWind ? readWind(data) : std::nullopt;
    if (wind) {
        m_model.setWind(*wind);
    }
    return wind ? describe(*wind) : QString();
}

QString MessageHandler::writeAircraft(int id, const QByteArray& data)
{
    if (id == message::kFuel) {
        const auto fuel = readFuel(data);
        if (fuel) {
            m_model.setFuel(*fuel);
        }
        return fuel ? describe(*fuel) : QString();
    }
    if (id == message::kPayload) {
        const auto payload = readPayload(data);
        if (payload) {
            m_model.setPayload(*payload);
        }
        return payload ? describe(*payload) : QString();
    }
    const auto radios = readRadios(data);
    if (radios) {
        m_model.setRadios(*radios);
    }
    return radios ? describe(*radios) : QString();
}

QString MessageHandler::writeCommand(int id, const QByteArray& data)
{
    if (id == message::kScreenText) {
        m_model.addScreenText(QString::fromUtf8(data.left(kLongestKeptText)));
        return QStringLiteral("screen text: ") + printable(data);
    }
    if (id == message::kFileName) {
        m_model.addTheme(QString::fromUtf8(data.left(kLongestKeptText)));
        return QStringLiteral("weather file ") + printable(data);
    }
    if (id == message::kVisibility) {
        bool isNumber = false;
        const int metres = data.toInt(&isNumber);
        if (!isNumber || metres < 0 || metres > kMostVisibility) {
            return {};
        }
        m_model.setVisibility(metres);
        return QStringLiteral("visibility %1 m").arg(metres);
    }
    if (id == message::kActivateWeather && data == "Activate Weather Xplane") {
        m_model.withState([](SimulatorState& state) { ++state.activations; });
        return QStringLiteral("weather activated");
    }
    if (id == message::kClearWeather && data == "Clear Wx") {
        m_model.clearWeather();
        return QStringLiteral("weather cleared");
    }
    return {};
}

QString MessageHandler::keepFile(const char* kind, const QByteArray& data)
{
    m_model.withState([kind, &data](SimulatorState& state) {
        state.files[QLatin1String(kind)] = data.size();
        state.lastFile = data.left(kKeptFileBytes);
    });
    return QStringLiteral("%1 file: %2 bytes").arg(QLatin1String(kind)).arg(data.size());
}

QByteArray MessageHandler::aircraftText()
{
    return simulator::aircraftText(m_model.takeAircraft());
}

} // namespace simulator

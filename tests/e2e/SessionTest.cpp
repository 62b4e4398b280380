#include "app/base/StopFlag.h"
#include "aviation/support/ScopedLock.h"
#include "sim/FsInterfaceTcpClient.h"
#include "standins/simulator/Messages.h"
#include "standins/simulator/SimulatorThread.h"
#include "tests/sim/LoopbackBridge.h"
#include "tests/support/ExpectedFile.h"
#include "tests/support/FakeClock.h"

#include <QDateTime>
#include <QFile>
#include <QMutex>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <set>
#include <utility>

namespace {

constexpr int kLimitMs = 10000;
constexpr int kHeader = 20;
constexpr int kDatagramPort = 49100; ///< announced, but nothing is sent to it
constexpr int kDatagramIntervalMs = 3600000;

/// One line for people: bytes that aren't printable ASCII as \xNN.
QByteArray escaped(const QByteArray& bytes)
{
    QByteArray text;
    for (const char c : bytes) {
        if (c == '\\' || c < ' ' || c > '~') {
            text += "\\x" + QByteArray(1, c).toHex();
        } else {
            text += c;
        }
    }
    return text;
}

/// A conversation as it stands in its file: "> " before what the client says, "< " before the
/// answer.
struct Session
{
    QByteArrayList said;
    QByteArrayList answers;

    QByteArray text() const
    {
        QByteArray lines;
        for (int i = 0; i < said.size(); ++i) {
            lines += "> " + escaped(said[i]) + "\n< " + escaped(answers.value(i)) + '\n';
        }
        return lines;
    }
};

NewWeather weatherRecord()
{
    NewWeather record;
    record.Command = 2;
    record.setIcao(L"KMSP");
    record.Lat = 44.88;
    record.Lon = -93.22;
    record.Elev = 16798711;
    record.Press = 16211;
    record.Vis = {3000, -5, 621, 0};
    record.nTempCtr = 1;
    record.Temp[0] = {0, 21, 0, 11};
    record.nWindCtr = 2;
    record.Wind[0] = {500, 12, 8, 43691, 1, 0, 910, 65000, 500};
    record.Wind[1] = {9000, 55, 0, 49152, 0, 0, 0, 0, 0};
    record.nCloudCtr = 1;
    record.Cloud[0] = {2000, 900, 10, 4, 9, 1, 0, -20, 1, 2, 0, 0};
    return record;
}

XPlaneWeather weatherData()
{
    XPlaneWeather weather;
    weather.Press = 29.95F;
    weather.Vis = 9000.0F;
    weather.Temp = 21.4F;
    weather.Dew = -3.5F;
    weather.RainPercent = 0.5F;
    weather.WX = "KMSP 011200Z 24012KT";
    weather.Clouds[0] = {2, 0.5F, 900.0F, 2000.0F};
    weather.Winds = {{900.0F, 240.0F, 12.0F, 0.5F, 10.0F, 3.0F, {1.0F, 2.0F}}};
    return weather;
}

/// What is read is written back, changed.
void expectReadsAndWrites(FsInterfaceTcpClient& client)
{
    QString port;
    EXPECT_EQ(client.announceAddress(QStringLiteral("127.0.0.1"), port), 0);
    EXPECT_EQ(port.toInt(), kDatagramPort);
    aviation::structs::AircraftData aircraft;
    EXPECT_EQ(client.GetAircraftData(aircraft), 0);
    aviation::structs::AircraftFuel fuel;
    EXPECT_EQ(client.GetAircraftFuel(fuel), 0);
    ASSERT_EQ(fuel.tanks.size(), 3U);
    aviation::structs::AircraftPayload payload;
    EXPECT_EQ(client.GetAircraftPayload(payload), 0);
    ASSERT_EQ(payload.stations.size(), 6U);
    aviation::structs::RadioFrequencys radios;
    EXPECT_EQ(client.GetRadioFrequencys(radios), 0);
    QDateTime dateTime;
    EXPECT_EQ(client.GetDateTime(dateTime), 0);
    EXPECT_EQ(dateTime.toSecsSinceEpoch(), aircraft.simTime);
    QByteArray config;
    EXPECT_EQ(client.requestServerConfig(config), 0);
    fuel.tanks.front().level = 12.5;
    EXPECT_EQ(client.SetAircraftFuel(fuel), 0);
    payload.stations.front().name = L"J\u00fcrgen";
    EXPECT_EQ(client.SetAircraftPayload(payload), 0);
    radios.transponder = 1200;
    EXPECT_EQ(client.SetRadioFrequencys(radios), 0);
}

void expectWeatherWrites(FsInterfaceTcpClient& client, const QString& file)
{
    EXPECT_EQ(client.SetWeatherText(QStringLiteral("KMSP 011153Z 24012KT 10SM FEW030 21/11 A2992")),
              0);
    EXPECT_EQ(client.SetWeatherText(QStringLiteral(
                  "-----METAR-----\r\nKMSP 011153Z 24012KT\n-----WIND-----\r\n900 240 12\n")),
              0);
    EXPECT_EQ(client.SetWeatherRecord(weatherRecord()), 0);
    EXPECT_EQ(client.SetWeatherData(weatherData(), 0), 0);
    EXPECT_EQ(client.SetWeatherData(weatherData(), kWeatherTextWx), 0);
    EXPECT_EQ(client.SetWindLayers(weatherData().Winds), 0);
    EXPECT_EQ(client.SetWindAtAircraft({250.5F, 33.25F, -1.0F, 0.0F}), 0);
    EXPECT_EQ(client.SetVisibility(9000), 0);
    EXPECT_EQ(client.SetWeatherTheme("cirrilon.WTB"), 0);
    EXPECT_EQ(client.SendWeatherFile(file.toStdString()), 0);
    EXPECT_EQ(client.SetGlobalWindFile(QByteArray("GRIB\0\x02\xff", 7)), 0);
    EXPECT_EQ(client.SetTurbulenceWindFile(QByteArray("GRIB\0\x03", 6)), 0);
    EXPECT_EQ(client.ActivateWeather(), 0);
    EXPECT_EQ(client.ClearWeather(), 0);
}

/// Every operation that sends something.
void driveClient(int port)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("weather.WTB"));
    QFile weatherFile(file);
    EXPECT_TRUE(weatherFile.open(QIODevice::WriteOnly));
    weatherFile.write("theme\r\n@0005;\x80");
    weatherFile.close();
    const StopFlag stop;
    FsInterfaceTcpClient client(QStringLiteral("127.0.0.1"), port,
                                QStringLiteral("Cirrilon v.test"), stop);
    EXPECT_EQ(client.Connect(), 0);
    expectReadsAndWrites(client);
    expectWeatherWrites(client, file);
    EXPECT_EQ(client.SendText("Cirrilon: connected \xC3\xA4", 10), 0);
    EXPECT_EQ(client.Disconnect(), 0);
}

/// What the stand-in answers to one frame.
QByteArray askStandIn(int port, const QByteArray& frame)
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), static_cast<quint16>(port));
    socket.waitForConnected(kLimitMs);
    socket.write(frame);
    QByteArray answer;
    while ((answer.size() < kHeader || answer.size() < kHeader + answer.mid(11, 8).toInt())
           && socket.waitForReadyRead(kLimitMs))
    {
        answer += socket.readAll();
    }
    return answer;
}

simulator::SimulatorOptions standInOptions()
{
    simulator::SimulatorOptions options;
    options.speed = 0.0;
    options.udpPort = kDatagramPort;
    options.udpIntervalMs = kDatagramIntervalMs;
    return options;
}

simulator::SimulatedFlight cruisingFlight()
{
    simulator::SimulatedFlight flight;
    flight.jumpTo(simulator::Phase::Cruise);
    return flight;
}

/// The conversation of the client with the stand-in, as it goes over the wire now.
Session recordSession()
{
    simulator::SimulatorThread standIn(standInOptions(), cruisingFlight());
    const int port = standIn.startServer();
    QMutex mutex;
    Session session; // guarded by mutex while the wire lives
    LoopbackBridge wire([&mutex, &session, port](const QByteArray& frame) {
        const QByteArray answer = askStandIn(port, frame);
        const aviation::ScopedLock lock(mutex);
        session.said.append(frame);
        session.answers.append(answer);
        return LoopbackBridge::Answer{answer, 0, false};
    });
    driveClient(wire.port());
    const aviation::ScopedLock lock(mutex);
    return session;
}

TEST(SessionTest, ProgramAndStandInSpeakAsRecorded)
{
    const FakeClock clock(2019, 7, 1, 12);
    const Session session = recordSession();
    expectFile(session.text().toStdString(), "bridge/session.txt");
    std::set<std::pair<int, int>> said;
    for (const QByteArray& frame : session.said) {
        said.emplace(frame.mid(1, 4).toInt(), frame.mid(6, 4).toInt());
    }
    const std::set<std::pair<int, int>> everyMessage{
        {1, 1},  {2, 80}, {6, 2},  {6, 3},  {6, 4},  {6, 18}, {6, 23}, {6, 24}, {6, 25},
        {5, 3},  {5, 4},  {5, 6},  {5, 7},  {5, 8},  {5, 9},  {5, 10}, {5, 11}, {5, 13},
        {5, 14}, {5, 15}, {5, 16}, {5, 17}, {5, 18}, {5, 20}, {5, 22}, {5, 28}};
    EXPECT_EQ(said, everyMessage);
    for (const QByteArray& answer : session.answers) {
        EXPECT_FALSE(answer.startsWith("@0008;")) << "a refusal: " << answer.constData();
    }
}

} // namespace

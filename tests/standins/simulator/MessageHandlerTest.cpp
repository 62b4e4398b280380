#include "standins/simulator/MessageHandler.h"

#include "standins/simulator/Messages.h"
#include "tests/support/FakeClock.h"
#include "weather/output/records/NewWeatherText.h"
#include "weather/output/records/XPlaneWeatherText.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using simulator::Reply;
using simulator::SimulatedFlight;
namespace command = simulator::command;
namespace message = simulator::message;

class MessageHandlerTest : public ::testing::Test
{
protected:
    Reply write(int id, const QByteArray& data)
    {
        return handler.handle({command::kWrite, id, data});
    }

    FakeClock clock{2019, 7, 1, 12};
    simulator::SimulatorModel model;
    simulator::MessageHandler handler{model};
};

/// A record with something in every kind of layer.
NewWeather fullRecord()
{
    NewWeather record;
    record.Command = 2;
    record.setIcao(L"KMSP");
    record.Lat = 44.88;
    record.Lon = -93.22;
    record.Press = 16211;
    record.Vis = {3000, -5, 621, 0};
    record.nTempCtr = 2;
    record.Temp[0] = {0, 21, 0, 11};
    record.Temp[1] = {9000, -38, 0, -50};
    record.nWindCtr = 1;
    record.Wind[0] = {500, 12, 8, 43691, 1, 0, 910, 65000, 500};
    record.nCloudCtr = 1;
    record.Cloud[0] = {2000, 900, 10, 4, 9, 1, 0, -20, 1, 2, 0, 0};
    record.nUpperVisCtr = 1;
    record.UpperVis[0] = {10000, 3000, 65535, 0};
    return record;
}

XPlaneWeather fullWeather()
{
    XPlaneWeather weather;
    weather.Temp = 20.0F;
    weather.TempTropo = -60.0F;
    weather.TropoAltMeter = 10000.0F;
    weather.Vis = 9000.0F;
    weather.WX = "KMSP 011200Z 24012KT";
    weather.Clouds[0] = {2, 0.5F, 900.0F, 2000.0F};
    weather.Winds.resize(2);
    weather.Winds[0].Alt = 1000.0F;
    weather.Winds[0].Dir = 240.0F;
    weather.Winds[1] = {12000.0F, 270.0F, 80.0F, 0.5F, 10.0F, 3.0F, {1.0F, 2.0F}};
    return weather;
}

TEST_F(MessageHandlerTest, WeatherComesThroughAsItWasSent)
{
    const std::string record = NewWeatherText(fullRecord());
    EXPECT_EQ(write(message::kWeatherRecord, QByteArray::fromStdString(record)).line,
              QStringLiteral("weather record KMSP: QNH 1013, wind 240/12, 21 C, visibility 9992 m, "
                             "1 clouds, 1 winds, 2 temperatures"));
    const std::string data = XPlaneWeatherText(fullWeather());
    EXPECT_TRUE(write(message::kWeatherData, QByteArray::fromStdString(data)).isWeather);
    EXPECT_EQ(XPlaneWeatherText(*model.state().weatherData), data);
    const std::string wx = XPlaneWeatherWxText(fullWeather());
    EXPECT_TRUE(write(message::kWeatherDataWx, QByteArray::fromStdString(wx)).isWeather);
    EXPECT_EQ(XPlaneWeatherWxText(*model.state().weatherData), wx);
    const std::string layers = WindLayersLongText(fullWeather().Winds);
    EXPECT_FALSE(write(message::kWindLayers, QByteArray::fromStdString(layers)).line.isEmpty());
    EXPECT_EQ(WindLayersLongText(model.state().windLayers), layers);
    ASSERT_EQ(model.state().weatherRecords.size(), 1U);
    EXPECT_EQ(NewWeatherText(model.state().weatherRecords[0]), record);
    write(message::kWeatherText, "EDDF 011220Z\r\n<b>24012KT");
    EXPECT_EQ(write(message::kWeatherText, "-----METAR-----\r\nA\nB\n-----WIND-----\r\nC\n").line,
              QStringLiteral("weather text: 2 reports, 1 winds"));
    EXPECT_EQ(model.state().weatherTexts.size(), 2);
    write(message::kClearWeather, "Clear Wx");
    EXPECT_TRUE(model.state().weatherTexts.isEmpty());
    EXPECT_FALSE(model.state().weatherData);
}

TEST_F(MessageHandlerTest, WhatCantBeReadIsRefusedAndChangesNothing)
{
    const QByteArray record = QByteArray::fromStdString(NewWeatherText(fullRecord()));
    const QByteArray data = QByteArray::fromStdString(XPlaneWeatherText(fullWeather()));
    using Row = std::pair<int, QByteArray>;
    for (const auto& [id, text] :
         {Row{message::kWeatherRecord, record + "x"},
          Row{message::kWeatherRecord, QByteArray(record).replace("Dew=", "Dow=")},
          Row{message::kWeatherRecord, QByteArray(record).replace("16211", "70000")},
          Row{message::kWeatherRecord, QByteArray(record).replace("nWindCtr=1", "nWindCtr=9")},
          Row{message::kWeatherData, QByteArray(data).replace('.', ',')},
          Row{message::kWeatherDataWx, data}, Row{message::kWind, "Dir=nan"},
          Row{message::kWind, QByteArray("Dir=1\0", 6)},
          Row{message::kFuel, "NumOfStation=1:FuelWeight=6.7"},
          Row{message::kPayload, "NumOfStation=x"}, Row{message::kRadios, ""},
          Row{message::kVisibility, "far"}, Row{message::kClearWeather, "Clear"}, Row{99, "what"}})
    {
        EXPECT_EQ(write(id, text).frame.command, command::kRefusal) << text.constData();
    }
    EXPECT_EQ(handler.handle({command::kRequest, message::kFuel, "fuel please"}).frame.command,
              command::kRefusal);
    EXPECT_EQ(model.state().weatherRecords.size(), 0U);
    EXPECT_EQ(model.state().fuel.tanks.size(), 3U);
}

TEST_F(MessageHandlerTest, OnlyTheFirstAnswerAfterTouchdownHasTheLandingRate)
{
    model.withFlight([](SimulatedFlight& flight) { flight.jumpTo(QStringLiteral("approach")); });
    handler.aircraftText();
    model.withFlight([](SimulatedFlight& flight) { flight.advance(1000.0); });
    EXPECT_FALSE(handler.aircraftText().contains(":LandRate=0:"));
    EXPECT_TRUE(handler.aircraftText().contains(":LandRate=0:"));
}

TEST_F(MessageHandlerTest, TheAircraftFliesInTheWeatherThatWasSet)
{
    model.withFlight([](SimulatedFlight& flight) { flight.jumpTo(QStringLiteral("cruise")); });
    write(message::kWeatherRecord, QByteArray::fromStdString(NewWeatherText(fullRecord())));
    EXPECT_NEAR(model.peekAircraft().wind.Dir, 240.0, 0.1);
    EXPECT_EQ(model.peekAircraft().temperature, -38.0F);
    write(message::kWeatherData, QByteArray::fromStdString(XPlaneWeatherText(fullWeather())));
    EXPECT_EQ(model.peekAircraft().wind.Speed, 80.0F);
    EXPECT_EQ(model.peekAircraft().temperature, -60.0F);
    EXPECT_EQ(model.peekAircraft().visibility, 9.0F);
    std::vector<XPlaneWindLayer> layers(2);
    layers[0].Alt = 10363.0F; // a little below its 34000 feet
    layers[0].Speed = 34.0F;
    layers[1].Alt = 30638.0F;
    layers[1].Speed = 38.0F;
    write(message::kWindLayers, QByteArray::fromStdString(WindLayersLongText(layers)));
    EXPECT_EQ(model.peekAircraft().wind.Speed, 34.0F) << "of the nearest layer";
    write(message::kWind, "Dir=100.00:Speed=33.00:Gust=-1.00");
    EXPECT_EQ(model.peekAircraft().wind.Speed, 33.0F);
    write(message::kVisibility, "1500");
    EXPECT_EQ(model.peekAircraft().visibility, 1.5F);
}

} // namespace

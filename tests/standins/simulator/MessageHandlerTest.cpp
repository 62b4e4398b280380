#include "standins/simulator/MessageHandler.h"

#include "standins/simulator/Messages.h"
#include "tests/support/FakeClock.h"
#include "weather/output/records/NewWeatherText.h"
#include "weather/output/records/XPlaneWeatherText.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using simulator::Reply;
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

/// With a wind and a temperature, so that their parts can be spoilt.
NewWeather recordWithLayers()
{
    NewWeather record;
    record.Command = 2;
    record.setIcao(L"KMSP");
    record.Press = 16211;
    record.nTempCtr = 1;
    record.nWindCtr = 1;
    return record;
}

TEST_F(MessageHandlerTest, WhatCantBeReadIsRefusedAndChangesNothing)
{
    const QByteArray record = QByteArray::fromStdString(newWeatherText(recordWithLayers()));
    const QByteArray data = QByteArray::fromStdString(xPlaneWeatherText(XPlaneWeather()));
    using Row = std::pair<int, QByteArray>;
    EXPECT_TRUE(write(message::kWeatherRecord, record).isWeather);
    model.clearWeather();
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
    EXPECT_FALSE(model.state().weatherData);
    EXPECT_EQ(model.state().fuel.tanks.size(), 3U);
}

} // namespace

#include "sim/BridgeText.h"

#include "sim/BridgeDatagram.h"
#include "sim/FsInterfaceBase.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>
#include <vector>

using aviation::structs::AircraftData;
using aviation::structs::AircraftFuel;
using aviation::structs::AircraftPayload;
using aviation::structs::RadioFrequencys;

namespace {

/// The value of each field after a key of the right length.
const QByteArray kAircraft =
    "AGLFeet1200:Alt=3000:TAS=250:GS=240:Hdg=271.5:VS=-800:Wind--Dir=180.5:Wind--Speed=12.25:"
    "MagVar=-3.5:Vis=9.5:Lat=50.0333:Lon=-8.5706:On--Ground=1:Engine--Off=0:Landing---Light==1:"
    "Door--Open=1 :Parking----Brake==1:Name=Boeing \xC3\xBC:Reg=D-ABCD:Airline=LH:Type=B738:"
    "FuelFlow=2500.5:EmptyWeight=90000:MaxGrossWeight=174000:TotalWeight=150000.5:LandRate=-120:"
    "Zulu---4102444800:OAT=-12.5";

AircraftData aircraftOf(int fields)
{
    return bridgetext::aircraftFromText(kAircraft.split(':').mid(0, fields).join(':'));
}

/// With another text for one field.
AircraftData aircraftWith(int field, const char* text, QString* fault = nullptr)
{
    QByteArrayList parts = kAircraft.split(':');
    parts[field] = text;
    return bridgetext::aircraftFromText(parts.join(':'), fault);
}

} // namespace

TEST(BridgeTextTest, ReadsAllAircraftFields)
{
    QString fault;
    const AircraftData data = bridgetext::aircraftFromText(kAircraft, &fault);
    EXPECT_EQ(fault.toStdString(), "");
    const std::vector<std::int32_t> whole{data.heightAgl,   data.altitude,      data.tas,
                                          data.groundSpeed, data.verticalSpeed, data.landingRate};
    EXPECT_EQ(whole, (std::vector{1200, 3000, 250, 240, -800, -120}));
    const std::vector<float> single{data.magneticVariation, data.visibility,     data.fuelFlow,
                                    data.emptyWeight,       data.maxGrossWeight, data.totalWeight,
                                    data.temperature};
    EXPECT_EQ(single, (std::vector{-3.5F, 9.5F, 2500.5F, 90000.0F, 174000.0F, 150000.5F, -12.5F}));
    EXPECT_EQ(data.heading, 271.5);
    EXPECT_EQ(windText(data.wind), "Dir=180.50:Speed=12.25:Gust=-1.00");
    EXPECT_EQ(data.position, aviation::Position(50.0333, -8.5706));
    EXPECT_TRUE(data.onGround && data.landingLight && data.parkingBrake);
    EXPECT_FALSE(data.engineOff);
    EXPECT_FALSE(data.doorOpen) << "only exactly 1 is true";
    EXPECT_EQ(data.name + L'|' + data.registration + L'|' + data.airline + L'|' + data.type,
              L"Boeing \u00FC|D-ABCD|LH|B738");
    EXPECT_EQ(data.simTime, 4102444800);
}

TEST(BridgeTextTest, AClockBeyondTheCalendarIsRefused)
{
    EXPECT_EQ(aircraftWith(26, "Zulu---253402300799").simTime, 253402300799);
    for (const char* const clock :
         {"Zulu---253402300800", "Zulu----62135596801", "Zulu---9223372036854775807"})
    {
        EXPECT_EQ(aircraftWith(26, clock).simTime, 0) << clock;
    }
}

TEST(BridgeTextTest, ShortAircraftTextsLeaveDefaults)
{
    EXPECT_EQ(aircraftOf(16).heightAgl, 0);
    const AircraftData data = aircraftOf(17);
    EXPECT_EQ(data.heightAgl, 1200);
    EXPECT_TRUE(data.parkingBrake);
    EXPECT_EQ(data.name, L"unknown");
}

TEST(BridgeTextTest, AircraftFaultKeepsWhatStands)
{
    for (const char* broken : {"VS", "VS=", "VS=x", "VS=99999999999", "VS=--1"}) {
        QString fault;
        const AircraftData data = aircraftWith(5, broken, &fault);
        EXPECT_TRUE(fault.startsWith(QStringLiteral("\nError in CAIRCRAFT::FromString - ")))
            << broken;
        EXPECT_EQ(data.groundSpeed, 240) << broken;
        EXPECT_EQ(data.verticalSpeed, 0) << broken;
        EXPECT_FALSE(data.position.isKnown()) << broken;
    }
    for (const char* broken : {"Lat=nan", "Lat=inf", "Lat=1e300", "Lat=", "Lat=90.5"}) {
        EXPECT_FALSE(aircraftWith(10, broken).position.isKnown()) << broken;
    }
}

TEST(BridgeTextTest, GrossWeightStandsForMissingMaximums)
{
    AircraftData data;
    data.maxRampWeight = 5.0F;
    fillMaximumWeights(data);
    EXPECT_EQ(data.maxTakeOffWeight, 0.0F);
    data.maxGrossWeight = 7.0F;
    fillMaximumWeights(data);
    EXPECT_EQ(data.maxTakeOffWeight, 7.0F);
    EXPECT_EQ(data.maxRampWeight, 5.0F);
}

TEST(BridgeTextTest, FuelTravelsBothWays)
{
    AircraftFuel fuel;
    fuel.fuelWeight = 6.7;
    fuel.tanks = {{L"Left: M|in \u00FC", 3, 50.5, 1000.25}, {L"Center", 4, 0.0, 500.0}};
    const QByteArray text = bridgetext::fuelText(fuel);
    EXPECT_EQ(text, "NumOfStation=2:FuelWeight=6.700000"
                    ":StationID=3|Name=Left  M in \xC3\xBC|Capacity=1000.250000|Level=50.500000"
                    ":StationID=4|Name=Center|Capacity=500.000000|Level=0.000000");
    QString fault;
    const AircraftFuel read = bridgetext::fuelFromText(text, &fault);
    EXPECT_EQ(fault, QString());
    EXPECT_EQ(bridgetext::fuelText(read), text);

    const QByteArray tank = ":StationID=1|Name=A|Capacity=1|Level=2";
    const std::tuple<QByteArray, std::size_t, bool> rows[] = {
        {"NumOfStation=1:FuelWeight=1" + tank + tank, 1, false},
        {"NumOfStation=9:FuelWeight=1" + tank, 1, false},
        {"NumOfStation=-9:FuelWeight=1" + tank, 0, false},
        {"NumOfStation=2:FuelWeight=1" + tank + ":StationID=1|Name=A", 1, true},
        {"NumOfStation=2:FuelWeight=?" + tank, 0, true},
        {"", 0, true},
    };
    for (const auto& [sent, tanks, isFault] : rows) {
        fault.clear();
        EXPECT_EQ(bridgetext::fuelFromText(sent, &fault).tanks.size(), tanks) << sent.constData();
        EXPECT_EQ(!fault.isEmpty(), isFault) << sent.constData();
    }
}

TEST(BridgeTextTest, PayloadTravelsBothWays)
{
    const QByteArray text = "NumOfStation=2"
                            ":StationName=Row 1|Type=3|MaxWeight=400.000000|Weight=180.500000"
                            ":StationName=Hold|Type=5|MaxWeight=900.000000|Weight=20.000000";
    const AircraftPayload read = bridgetext::payloadFromText(text);
    EXPECT_EQ(bridgetext::payloadText(read), text);
    EXPECT_EQ(read.totalWeight, 200.5);
    ASSERT_EQ(read.stations.size(), 2U);
    EXPECT_EQ(read.stations[0].maxWeight, 400.0F);
    for (const char* type : {"7", "-1"}) {
        const AircraftPayload odd = bridgetext::payloadFromText(
            QByteArray("NumOfStation=1:StationName=A|Type=") + type + "|MaxWeight=1|Weight=1");
        ASSERT_EQ(odd.stations.size(), 1U);
        EXPECT_EQ(odd.stations[0].type, 0) << type;
    }
}

TEST(BridgeTextTest, RadiosTravelBothWays)
{
    const RadioFrequencys radios{1, 2, 3, 4, 5, 6, 7, 8, 1200, 350};
    const QByteArray text = bridgetext::radioText(radios);
    EXPECT_EQ(text, "comm1active=1:comm1standby=2:comm2active=3:comm2standby=4:nav1active=5:"
                    "nav1standby=6:nav2active=7:nav2standby=8:adf=350:transponder=1200");
    EXPECT_EQ(bridgetext::radioText(bridgetext::radioFromText(text)), text);
    EXPECT_EQ(bridgetext::radioText(
                  bridgetext::radioFromText("comm1active=12345:comm1standby=70000:comm2active=5")),
              "comm1active=12345:comm1standby=11800:comm2active=11800:comm2standby=11800:"
              "nav1active=10800:nav1standby=10800:nav2active=10800:nav2standby=10800:adf=384:"
              "transponder=7000")
        << "nothing is read behind a fault";
}

TEST(BridgeTextTest, ReadsWindAndLongNumbers)
{
    QString fault;
    const aviation::weather::Wind wind =
        bridgetext::windFromText("Dir=270.00:Speed=12.50:Gust=-1.00", &fault);
    EXPECT_EQ(windText(wind), "Dir=270.00:Speed=12.50:Gust=-1.00");
    EXPECT_EQ(fault, QString());
    bridgetext::windFromText("Dir", &fault);
    EXPECT_TRUE(fault.startsWith(QStringLiteral("\nError in Wind::ToWind - ")));

    qint64 number = 5;
    EXPECT_FALSE(bridgetext::longFromText("", number));
    EXPECT_FALSE(bridgetext::longFromText("99999999999999999999", number));
    EXPECT_EQ(number, 5);
    EXPECT_TRUE(bridgetext::longFromText(" 4102444800\r\n", number));
    EXPECT_EQ(number, 4102444800);
}

TEST(FsInterfaceBaseTest, NamesResultCodes)
{
    const char* const kNone = "Error number not found";
    for (const auto& [code, text] : {std::pair{0, "No Error"},
                                     {13, "Time out. Connection lost"},
                                     {14, "FSInterface not initalized"},
                                     {200, "Function is not implemented is this client"},
                                     {5, kNone},
                                     {201, kNone},
                                     {-1, kNone}})
    {
        EXPECT_EQ(FsInterfaceBase::ErrorText(code).toStdString(), text) << code;
    }
}

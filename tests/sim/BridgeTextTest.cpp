#include "sim/BridgeText.h"

#include "sim/BridgeDatagram.h"
#include "sim/FsInterfaceBase.h"
#include "sim/LogText.h"

#include <gtest/gtest.h>

using aviation::structs::AircraftData;
using aviation::structs::AircraftFuel;
using aviation::structs::AircraftPayload;
using aviation::structs::RadioFrequencys;

namespace {

/// The value of each field behind a key of the right length.
const QByteArrayList kAircraftFields{"AGLFeet1200",
                                     "Alt=3000",
                                     "TAS=250",
                                     "GS=240",
                                     "Hdg=271.5",
                                     "VS=-800",
                                     "Wind--Dir=180.5",
                                     "Wind--Speed=12.25",
                                     "MagVar=-3.5",
                                     "Vis=9.5",
                                     "Lat=50.0333",
                                     "Lon=-8.5706",
                                     "On--Ground=1",
                                     "Engine--Off=0",
                                     "Landing---Light==1",
                                     "Door--Open=1 ",
                                     "Parking----Brake==1",
                                     "Name=Boeing \xC3\xBC",
                                     "Reg=D-ABCD",
                                     "Airline=LH",
                                     "Type=B738",
                                     "FuelFlow=2500.5",
                                     "EmptyWeight=90000",
                                     "MaxGrossWeight=174000",
                                     "TotalWeight=150000.5",
                                     "LandRate=-120",
                                     "Zulu---4102444800",
                                     "OAT=-12.5"};

QByteArray aircraftText(int fields = 28)
{
    QByteArrayList parts = kAircraftFields.mid(0, fields);
    return parts.join(':');
}

} // namespace

TEST(BridgeText, ReadsAllAircraftFields)
{
    QString fault;
    const AircraftData data = bridgetext::AircraftFromText(aircraftText(), &fault);
    EXPECT_EQ(fault.toStdString(), "");
    EXPECT_EQ(data.heightAgl, 1200);
    EXPECT_EQ(data.altitude, 3000);
    EXPECT_EQ(data.tas, 250);
    EXPECT_EQ(data.groundSpeed, 240);
    EXPECT_EQ(data.heading, 271.5);
    EXPECT_EQ(data.verticalSpeed, -800);
    EXPECT_EQ(WindText(data.wind), "Dir=180.50:Speed=12.25:Gust=-1.00");
    EXPECT_EQ(data.magneticVariation, -3.5F);
    EXPECT_EQ(data.visibility, 9.5F);
    EXPECT_EQ(data.position, aviation::Position(50.0333, -8.5706));
    EXPECT_TRUE(data.onGround);
    EXPECT_FALSE(data.engineOff);
    EXPECT_TRUE(data.landingLight);
    EXPECT_FALSE(data.doorOpen) << "only exactly 1 is true";
    EXPECT_TRUE(data.parkingBrake);
    EXPECT_EQ(data.name, L"Boeing \u00FC");
    EXPECT_EQ(data.registration, L"D-ABCD");
    EXPECT_EQ(data.airline, L"LH");
    EXPECT_EQ(data.type, L"B738");
    EXPECT_EQ(data.fuelFlow, 2500.5F);
    EXPECT_EQ(data.emptyWeight, 90000.0F);
    EXPECT_EQ(data.maxGrossWeight, 174000.0F);
    EXPECT_EQ(data.totalWeight, 150000.5F);
    EXPECT_EQ(data.landingRate, -120);
    EXPECT_EQ(data.simTime, 4102444800);
    EXPECT_EQ(data.temperature, -12.5F);
}

TEST(BridgeText, ShortAircraftTextsLeaveDefaults)
{
    EXPECT_EQ(bridgetext::AircraftFromText(aircraftText(16)).heightAgl, 0);
    const AircraftData data = bridgetext::AircraftFromText(aircraftText(17));
    EXPECT_EQ(data.heightAgl, 1200);
    EXPECT_TRUE(data.parkingBrake);
    EXPECT_EQ(data.name, L"unknown");
    EXPECT_EQ(data.temperature, 13.0F);
    EXPECT_EQ(data.visibility, 9.5F);
    EXPECT_EQ(AircraftData().visibility, 99999.0F);
}

TEST(BridgeText, AircraftFaultKeepsWhatStands)
{
    for (const char* broken : {"VS", "VS=", "VS=x", "VS=99999999999", "VS=--1"}) {
        QByteArrayList parts = kAircraftFields;
        parts[5] = broken;
        QString fault;
        const AircraftData data = bridgetext::AircraftFromText(parts.join(':'), &fault);
        EXPECT_TRUE(fault.startsWith(QStringLiteral("\nError in CAIRCRAFT::FromString - ")))
            << broken;
        EXPECT_EQ(data.groundSpeed, 240) << broken;
        EXPECT_EQ(data.verticalSpeed, 0) << broken;
        EXPECT_FALSE(data.position.isKnown()) << broken;
    }
    for (const char* broken : {"Lat=nan", "Lat=inf", "Lat=1e300", "Lat=", "Lat=90.5"}) {
        QByteArrayList parts = kAircraftFields;
        parts[10] = broken;
        EXPECT_FALSE(bridgetext::AircraftFromText(parts.join(':')).position.isKnown()) << broken;
    }
}

TEST(BridgeText, GrossWeightStandsForMissingMaximums)
{
    AircraftData data;
    data.maxRampWeight = 5.0F;
    FillMaximumWeights(data);
    EXPECT_EQ(data.maxTakeOffWeight, 0.0F);
    data.maxGrossWeight = 7.0F;
    FillMaximumWeights(data);
    EXPECT_EQ(data.maxTakeOffWeight, 7.0F);
    EXPECT_EQ(data.maxRampWeight, 5.0F);
}

TEST(BridgeText, FuelTravelsBothWays)
{
    AircraftFuel fuel;
    fuel.fuelWeight = 6.7;
    fuel.tanks = {{L"Left: M|in \u00FC", 3, 50.5, 1000.25}, {L"Center", 4, 0.0, 500.0}};
    const QByteArray text = bridgetext::FuelText(fuel);
    EXPECT_EQ(text, "NumOfStation=2:FuelWeight=6.700000"
                    ":StationID=3|Name=Left  M in \xC3\xBC|Capacity=1000.250000|Level=50.500000"
                    ":StationID=4|Name=Center|Capacity=500.000000|Level=0.000000");
    QString fault;
    const AircraftFuel read = bridgetext::FuelFromText(text, &fault);
    EXPECT_EQ(fault, QString());
    EXPECT_EQ(read.fuelWeight, 6.7);
    ASSERT_EQ(read.tanks.size(), 2U);
    EXPECT_EQ(read.tanks[0].name, L"Left  M in \u00FC");
    EXPECT_EQ(read.tanks[0].id, 3);
    EXPECT_EQ(read.tanks[0].level, 50.5);
    EXPECT_EQ(read.tanks[0].capacity, 1000.25);

    const QByteArray tank = ":StationID=1|Name=A|Capacity=1|Level=2";
    const struct
    {
        QByteArray text;
        std::size_t tanks;
        bool fault;
    } rows[] = {
        {"NumOfStation=1:FuelWeight=1" + tank + tank, 1, false},
        {"NumOfStation=9:FuelWeight=1" + tank, 1, false},
        {"NumOfStation=-9:FuelWeight=1" + tank, 0, false},
        {"NumOfStation=2:FuelWeight=1" + tank + ":StationID=1|Name=A", 1, true},
        {"NumOfStation=2:FuelWeight=?" + tank, 0, true},
        {"", 0, true},
    };
    for (const auto& row : rows) {
        QString rowFault;
        EXPECT_EQ(bridgetext::FuelFromText(row.text, &rowFault).tanks.size(), row.tanks)
            << row.text.constData();
        EXPECT_EQ(!rowFault.isEmpty(), row.fault) << row.text.constData();
    }
}

TEST(BridgeText, PayloadTravelsBothWays)
{
    AircraftPayload payload;
    payload.stations = {{L"Row 1", 400.0F, 180.5F, 3}, {L"Hold", 900.0F, 20.0F, 5}};
    const QByteArray text = bridgetext::PayloadText(payload);
    EXPECT_EQ(text, "NumOfStation=2"
                    ":StationName=Row 1|Type=3|MaxWeight=400.000000|Weight=180.500000"
                    ":StationName=Hold|Type=5|MaxWeight=900.000000|Weight=20.000000");
    const AircraftPayload read = bridgetext::PayloadFromText(text);
    ASSERT_EQ(read.stations.size(), 2U);
    EXPECT_EQ(read.stations[0].name, L"Row 1");
    EXPECT_EQ(read.stations[0].type, 3);
    EXPECT_EQ(read.stations[1].maxWeight, 900.0F);
    EXPECT_EQ(read.totalWeight, 200.5);
    for (const char* type : {"7", "-1"}) {
        const AircraftPayload odd = bridgetext::PayloadFromText(
            QByteArray("NumOfStation=1:StationName=A|Type=") + type + "|MaxWeight=1|Weight=1");
        ASSERT_EQ(odd.stations.size(), 1U);
        EXPECT_EQ(odd.stations[0].type, 0) << type;
    }
}

TEST(BridgeText, RadiosTravelBothWays)
{
    const RadioFrequencys radios{1, 2, 3, 4, 5, 6, 7, 8, 1200, 350};
    const QByteArray text = bridgetext::RadioText(radios);
    EXPECT_EQ(text, "comm1active=1:comm1standby=2:comm2active=3:comm2standby=4:nav1active=5:"
                    "nav1standby=6:nav2active=7:nav2standby=8:adf=350:transponder=1200");
    const RadioFrequencys read = bridgetext::RadioFromText(text);
    EXPECT_EQ(bridgetext::RadioText(read), text);
    EXPECT_EQ(read.transponder, 1200);

    const RadioFrequencys little =
        bridgetext::RadioFromText("comm1active=12345:comm1standby=70000:comm2active=5");
    EXPECT_EQ(little.comm1active, 12345);
    EXPECT_EQ(little.comm1standby, 11800);
    EXPECT_EQ(little.comm2active, 11800) << "nothing is read behind a fault";
    EXPECT_EQ(little.transponder, 7000);
}

TEST(BridgeText, ReadsWindAndLongNumbers)
{
    QString fault;
    const aviation::weather::Wind wind =
        bridgetext::WindFromText("Dir=270.00:Speed=12.50:Gust=-1.00", &fault);
    EXPECT_EQ(WindText(wind), "Dir=270.00:Speed=12.50:Gust=-1.00");
    EXPECT_EQ(fault, QString());
    bridgetext::WindFromText("Dir", &fault);
    EXPECT_TRUE(fault.startsWith(QStringLiteral("\nError in Wind::ToWind - ")));

    qint64 number = 5;
    EXPECT_FALSE(bridgetext::LongFromText("", number));
    EXPECT_FALSE(bridgetext::LongFromText("99999999999999999999", number));
    EXPECT_EQ(number, 5);
    EXPECT_TRUE(bridgetext::LongFromText(" 4102444800\r\n", number));
    EXPECT_EQ(number, 4102444800);
}

TEST(LogText, IsOneLineOfPlainText)
{
    EXPECT_EQ(LogText(QByteArray("@0005;\r\nA<b>\t\x1B[2J\xE2\x80\xA8")).toStdString(),
              "@0005;\\r\\nA&lt;b&gt;\t\\u001b[2J\\u2028");
    EXPECT_EQ(LogText(QByteArray(5000, '\n')).toStdString().substr(8190), "\\n ... (5000 bytes)");
}

TEST(FsInterfaceBase, NamesResultCodes)
{
    const struct
    {
        int code;
        const char* text;
    } rows[] = {{0, "No Error"},
                {13, "Time out. Connection lost"},
                {14, "FSInterface not initalized"},
                {200, "Function is not implemented is this client"},
                {5, "Error number not found"},
                {100, "Error number not found"},
                {201, "Error number not found"},
                {-1, "Error number not found"}};
    for (const auto& row : rows) {
        EXPECT_EQ(FsInterfaceBase::ErrorText(row.code).toStdString(), row.text) << row.code;
    }
}

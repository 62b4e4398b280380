#include "sim/BridgeFrame.h"

#include "sim/BridgeDatagram.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

TEST(BridgeFrameTest, WritesAndReadsFrames)
{
    const QByteArray frame = frameBytes(bridgecommand::kWrite, bridgemessage::kText, "Hello");
    EXPECT_EQ(frame, "@0005;0020;00000005;Hello");
    FsMessage message;
    ASSERT_TRUE(parseFrame(frame + "!", message));
    EXPECT_EQ(message.command, bridgecommand::kWrite);
    EXPECT_EQ(message.id, bridgemessage::kText);
    EXPECT_EQ(message.dataLength, 5);
    EXPECT_EQ(message.data, "Hello!") << "all behind the header, whatever it announces";
}

TEST(BridgeFrameTest, ReadsBrokenBlocks)
{
    /// A block, whether it is readable, its command and id, and how far the frame is.
    const std::tuple<const char*, bool, int, int, FrameProgress> rows[] = {
        {"", true, 0, 0, FrameProgress::Partial},
        {"#0007;0002;00000000;", true, 0, 0, FrameProgress::Complete},
        {"@0007;0002;000", true, 0, 0, FrameProgress::Partial},
        {"@0007;0002;0000", true, 7, 2, FrameProgress::Partial},
        {"@0007;0002;00000", false, 99, 99, FrameProgress::Partial},
        {"@0007;0002;00000000", false, 99, 99, FrameProgress::Partial},
        {"@0007;0002;00000000;", true, 7, 2, FrameProgress::Complete},
        {"@0007;0002;00000002;x", true, 7, 2, FrameProgress::Partial},
        {"@0007;0002;67108864;x", true, 7, 2, FrameProgress::Partial},
        {"@0007;0002;67108865;x", true, 7, 2, FrameProgress::TooLong},
        {"@0007;0002;99999999;x", true, 7, 2, FrameProgress::TooLong},
        {"@0007;0002;-0000001;x", true, 7, 2, FrameProgress::Complete},
        {"@0263;-002;garbage!;x", true, 0, 0, FrameProgress::Complete},
    };
    for (const auto& [block, readable, command, id, progress] : rows) {
        FsMessage message;
        message.command = message.id = 99;
        EXPECT_EQ(parseFrame(block, message), readable) << block;
        EXPECT_EQ(message.command, command) << block;
        EXPECT_EQ(message.id, id) << block;
        EXPECT_EQ(progressOf(block), progress) << block;
    }
}

TEST(BridgeFrameTest, NamesCommands)
{
    for (const auto& [number, name] :
         {std::pair{1, "HELO"}, {7, "ANSW"}, {0, "NCMD"}, {10, "NCMD"}, {-1, "NCMD"}})
    {
        EXPECT_STREQ(commandName(number), name) << number;
    }
}

TEST(BridgeDatagramTest, ReadsUpToTheFirstZero)
{
    const QByteArray text = "AGL-ft=100:Alt=500:TAS=1:GS=2:Hdg=270.5:VS=3:Wind-Dir==1:"
                            "Wind-Speed==2:MagVar=3:Vis=4:Lat=50:Lon=8:ON-GROUND-=1:ENGINE-OFF-=0:"
                            "LANDING-LIGHT--==1:DOOR-OPEN-=0:PARKING--BRAKE--==1";
    const QByteArray frame = frameBytes(bridgecommand::kAnswer, bridgemessage::kAircraftData, text);
    const BridgeDatagram pushed = parseDatagram(frame + QByteArray(3, '\0') + "left over");
    ASSERT_TRUE(pushed.isAircraftAnswer()) << pushed.fault.toStdString();
    EXPECT_EQ(pushed.fault, QString());
    EXPECT_EQ(pushed.aircraft.heightAgl, 100);
    EXPECT_TRUE(pushed.aircraft.parkingBrake);
    EXPECT_EQ(pushed.aircraft.position, aviation::Position(50.0, 8.0));

    const BridgeDatagram read = parseDatagram(frameBytes(bridgecommand::kRead, 9, text));
    EXPECT_TRUE(read.hasAircraft);
    EXPECT_FALSE(read.isAircraftAnswer());
    const QByteArray withoutAircraft[] = {
        frameBytes(bridgecommand::kAnswer, bridgemessage::kFuel, text),
        frameBytes(bridgecommand::kAnswer, bridgemessage::kAircraftData, "HeightA1:Alt5"),
        frame.left(18),
        QByteArray(1, '\0') + frame,
        "garbage",
    };
    for (const QByteArray& datagram : withoutAircraft) {
        EXPECT_FALSE(parseDatagram(datagram).hasAircraft) << datagram.constData();
    }
}

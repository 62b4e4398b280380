#include "sim/BridgeHandshake.h"

#include "tests/support/Text.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Step = BridgeHandshake::Step;

/// A reply, what it leads to, and the version that is known then.
struct Row
{
    std::uint8_t command;
    std::uint8_t id;
    QByteArray data;
    Step step;
    bool hasVersion;
    bool clientIsNewer;
};

BridgeHandshake after(const std::vector<FsMessage>& replies)
{
    BridgeHandshake handshake("me"_q);
    for (const FsMessage& reply : replies) {
        handshake.take(reply);
    }
    return handshake;
}

TEST(BridgeHandshakeTest, AGreetingIsAnsweredByItsVersion)
{
    const Row rows[] = {
        {1, 1, "SERVERAPI=3.3", Step::AskSimulator, true, false},
        {1, 1, "SERVERAPI=3.30", Step::AskSimulator, true, false},
        {1, 1, "SERVERAPI=3.2", Step::WrongVersion, true, true},
        {1, 1, "SERVERAPI=4", Step::WrongVersion, true, false},
        {1, 1, "SERVERAPI=", Step::WrongVersion, true, true},
        {1, 1, "hello", Step::AskSimulator, false, true},
        {1, 1, "A=2.0=B", Step::AskSimulator, false, true},
        {7, 1, "SERVERAPI=2", Step::DoneUnversioned, false, true},
        {0, 0, "", Step::DoneUnversioned, false, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.data.toStdString());
        const BridgeHandshake handshake = after({{row.command, row.id, 0, row.data}});
        EXPECT_EQ(handshake.step(), row.step);
        EXPECT_EQ(handshake.isOpen(), row.step == Step::AskSimulator);
        EXPECT_EQ(handshake.hasServerVersion(), row.hasVersion);
        EXPECT_EQ(handshake.clientIsNewer(), row.clientIsNewer);
    }
}

TEST(BridgeHandshakeTest, AsksInTwoSteps)
{
    BridgeHandshake handshake("m\u00EA"_q);
    EXPECT_EQ(handshake.request().command, bridgecommand::kHello);
    EXPECT_EQ(handshake.request().data, "CLIENTAPI=3.3;m\xC3\xAA");
    handshake.take({1, 1, 0, "SERVERAPI=3.3"});
    EXPECT_EQ(handshake.request().id, bridgemessage::kIsFsConnected);
    EXPECT_EQ(handshake.request().data, "IS_FS_CONNECTED");
    handshake.take({2, 80, 0, "FS;ID=1;NAME=a;IFID=1;IF=b"});
    EXPECT_EQ(handshake.step(), Step::NoSimulatorReply);
    EXPECT_FALSE(handshake.simulator().fsId);
}

TEST(BridgeHandshakeTest, ReadsWhatTheServerSaysOfItsSimulator)
{
    const std::pair<QByteArray, QString> rows[] = {
        {"FS;ID=13;NAME=X <1>;IFID=8;IF=Plug-in", "13 X <1> 8 Plug-in"_q},
        {"FS;ID=13a;NAME=a=b;IFID=;IF=", "13 a 0 "_q},
        {"FS;13;NAME;8;IF", "- - - -"_q},
        {"FS;ID=13;NAME=X;IFID=8", "- - - -"_q},
        {"", "- - - -"_q},
    };
    for (const auto& [data, expected] : rows) {
        for (const bool versioned : {true, false}) {
            const BridgeHandshake handshake =
                versioned ? after({{1, 1, 0, "SERVERAPI=3.3"}, {9, 81, 0, data}})
                          : after({{2, 81, 0, data}});
            const BridgeSimulator& simulator = handshake.simulator();
            const auto shown = [](const std::optional<int>& value) {
                return value ? QString::number(*value) : "-"_q;
            };
            EXPECT_EQ(shown(simulator.fsId) + QLatin1Char(' ') + simulator.fsName.value_or("-"_q)
                          + QLatin1Char(' ') + shown(simulator.interfaceId) + QLatin1Char(' ')
                          + simulator.interfaceName.value_or("-"_q),
                      expected);
            EXPECT_FALSE(handshake.isOpen());
        }
    }
}

} // namespace

#include "standins/simulator/Frame.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using simulator::Frame;
using simulator::FrameReader;

std::vector<QByteArray> drain(FrameReader& reader)
{
    std::vector<QByteArray> texts;
    while (const auto frame = reader.next()) {
        texts.push_back(QByteArray::number(frame->command) + '/' + QByteArray::number(frame->id)
                        + ' ' + frame->data);
    }
    return texts;
}

TEST(FrameReader, GivesTheSameFramesHoweverTheBytesAreCut)
{
    const QByteArray bytes = "noise" + simulator::encodeFrame({5, 8, "a@b;c"})
                             + simulator::encodeFrame({5, 22, ""})
                             + simulator::encodeFrame({6, 2, QByteArray("\0\r\n@", 4)});
    const std::vector<QByteArray> expected{"5/8 a@b;c", "5/22 ", "6/2 " + QByteArray("\0\r\n@", 4)};
    for (int piece = 1; piece <= bytes.size(); ++piece) {
        FrameReader reader;
        std::vector<QByteArray> got;
        for (int at = 0; at < bytes.size(); at += piece) {
            reader.append(bytes.mid(at, piece));
            const std::vector<QByteArray> some = drain(reader);
            got.insert(got.end(), some.begin(), some.end());
        }
        EXPECT_EQ(got, expected) << "pieces of " << piece;
        EXPECT_EQ(reader.skippedBytes(), 5);
        EXPECT_EQ(reader.pendingBytes(), 0);
    }
}

TEST(FrameReader, BreaksAtAHeaderThatIsNone)
{
    for (const char* header :
         {"@0005;0008;99999999;", "@0005;0008;-0000001;", "@ 005;0008;00000001;",
          "@0005,0008;00000001;", "@0005;0999;00000001;", "@9005;0008;00000001;"})
    {
        FrameReader reader;
        reader.append(header);
        reader.append(simulator::encodeFrame({6, 2, "x"}));
        EXPECT_TRUE(drain(reader).empty()) << header;
        EXPECT_TRUE(reader.isBroken()) << header;
        EXPECT_EQ(reader.pendingBytes(), 0) << header;
    }
}

} // namespace

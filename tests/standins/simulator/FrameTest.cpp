#include "standins/simulator/Frame.h"

#include <gtest/gtest.h>

namespace {

using simulator::FrameReader;

TEST(FrameReaderTest, BreaksAtAHeaderThatIsNone)
{
    for (const char* header :
         {"@0005;0008;99999999;", "@0005;0008;-0000001;", "@ 005;0008;00000001;",
          "@0005,0008;00000001;", "@0005;0999;00000001;", "@9005;0008;00000001;"})
    {
        FrameReader reader;
        reader.append(header);
        reader.append(simulator::encodeFrame({6, 2, "x"}));
        EXPECT_FALSE(reader.next()) << header;
        EXPECT_TRUE(reader.isBroken()) << header;
        EXPECT_EQ(reader.pendingBytes(), 0) << header;
    }
}

} // namespace

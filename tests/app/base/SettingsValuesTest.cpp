#include "app/base/SettingsValues.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(SettingsValuesTest, UnitNumberIsTheStoredValuePlusOne)
{
    EXPECT_EQ(unitNumber(weightunit::kPounds), 1);
    EXPECT_EQ(unitNumber(weightunit::kKilograms), 2);
    EXPECT_EQ(unitNumber(volumeunit::kGallons), 1);
    EXPECT_EQ(unitNumber(volumeunit::kLitres), 2);
    for (const int meaningless : {-1, 2, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(unitNumber(meaningless), 2) << meaningless;
    }
}

} // namespace

#include "weather/output/ObservationString.h"

#include "tests/weather/output/CompositionFixture.h"

namespace {

class ObservationStringTest : public CompositionTest
{
protected:
    /// A record with one wind, one temperature layer and no cloud.
    static NewWeather plain()
    {
        NewWeather record;
        record.Wind[0].Dir = 49152;
        record.Wind[0].Speed = 9;
        record.Wind[0].UpperAlt = 210;
        record.nTempCtr = 1;
        record.nWindCtr = 1;
        return record;
    }
    static std::string textOf(const NewWeather& record)
    {
        return MetarString(metarOf("EDDF 011220Z 27009KT 9999 15/08 Q1013"), {}, {}, record);
    }
};

TEST_F(ObservationStringTest, SpreadsTheVariableSectorAroundTheDirection)
{
    const std::tuple<std::uint16_t, std::uint16_t, const char*> rows[] = {
        {49152, 3640, " 260V279 "}, // 270 and 9.5 degrees to each side
        {0, 3640, " 351V009 "},     // cut towards zero, then folded
        {65535, 3641, " 349V009 "}, // 359 and 10
        {49152, 32768, " 180V000 "},
        {182, 65353, " 181V179 "}};
    for (const auto& [direction, variance, sector] : rows) {
        NewWeather record = plain();
        record.Wind[0].Dir = direction; // both in steps
        record.Wind[0].Variance = variance;
        EXPECT_EQ(textOf(record).substr(28, 9), sector);
    }
}

TEST_F(ObservationStringTest, ListsTheWindsAloft)
{
    NewWeather record = plain();
    const auto aloft = [&record](int winds, int temperatures) {
        record.nWindCtr = winds;
        record.nTempCtr = temperatures;
        const std::string text = textOf(record);
        return text.substr(text.find("@@@") + 3);
    };
    record.Wind[1] = {410, 11, 5, 51882, 0, 0, 0, 0, 0};
    record.Wind[2] = {9144, 85, 0, 0, 0, 0, 0, 0, 0};
    record.Temp[1].Day = 2;
    record.Temp[2].Day = -44;
    EXPECT_EQ(aloft(1, 3), " ");
    EXPECT_EQ(aloft(2, 3), " 13 2 284 11");
    EXPECT_EQ(aloft(3, 3), " 13 2 284 11 | 300 -44 0 85");
    EXPECT_EQ(aloft(3, 2), " 13 2 284 11");
    EXPECT_EQ(aloft(-5, 1000), " ");
    const std::string all = aloft(1000, 1000);
    EXPECT_EQ(std::count(all.begin(), all.end(), '|'), 22);
}

TEST(RelabelObservationTest, ReplacesFourCharactersByAnotherName)
{
    const std::pair<const char*, const char*> rows[] = {
        {"EDDF 011220Z", "GLOB 011220Z"}, {"ABC", "GLOB"}, {"", "GLOB"}};
    for (const auto& [text, result] : rows) {
        std::string changed = text;
        relabelObservation(changed, L"GLOB");
        EXPECT_EQ(changed, result);
    }
}

} // namespace

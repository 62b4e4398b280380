#include "aviation/support/NumberText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <limits>

using namespace aviation;

namespace {

constexpr double kHuge = std::numeric_limits<double>::max();

TEST(NumberTextTest, NumbersArePaddedAndRoundedAsByPrintf)
{
    EXPECT_EQ(integerText(7, 3), "007");
    EXPECT_EQ(integerText(-7, 3), "-07");
    EXPECT_EQ(integerText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    const std::string locale = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "C");
    for (const double value : {0.0, 0.5, 1.5, 2.5, -0.4, -7.25, 3.14159, 123456.789, 1e15, 5e-324})
    {
        for (const int precision : {0, 2, 6}) {
            char expected[400];
            std::snprintf(expected, sizeof expected, "%06.*f", precision, value);
            EXPECT_EQ(fixedText(value, precision, 6), expected);
        }
    }
    std::setlocale(LC_NUMERIC, locale.c_str());
    EXPECT_EQ(fixedText(1.25, 1), "1.2");
    EXPECT_EQ(fixedText(kHuge, 0).size(), 309U);
    EXPECT_EQ(fixedText(std::numeric_limits<double>::quiet_NaN(), 2), "nan");
    EXPECT_EQ(fixedText(-std::numeric_limits<double>::infinity(), 2), "-inf");
    EXPECT_EQ(narrowAscii(L"5\u00B0 \u4E2D"), "5? ?");
}

TEST(NumberTextTest, IntegersAreReadUpToTheFirstOtherCharacter)
{
    const std::pair<const wchar_t*, std::int32_t> rows[] = {{L"///", 0},
                                                            {L"", 0},
                                                            {L" \t12", 12},
                                                            {L"-7", -7},
                                                            {L"+-7", 0},
                                                            {L"1 2", 1},
                                                            {L"99999999999", 2147483647},
                                                            {L"-99999999999", -2147483647 - 1},
                                                            {L"\u0661", 0}};
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(integerFromText(text), expected) << testing::PrintToString(text);
    }
    EXPECT_EQ(integerFromText(std::wstring(400, L'9')), 2147483647);
    EXPECT_EQ(integerFromText(std::wstring_view(L"1\0002", 3)), 1);
}

TEST(NumberTextTest, DecimalsAreReadWithAPointInEveryLocale)
{
    const std::pair<const wchar_t*, double> rows[] = {
        {L"12.5", 12.5}, {L"12,5", 12.0}, {L"-.5x", -0.5},  {L"5.", 5.0},      {L"1e3", 1000.0},
        {L"1e", 1.0},    {L"1e+", 1.0},   {L"2e-2", 0.02},  {L"nan", 0.0},     {L"inf", 0.0},
        {L"0x10", 0.0},  {L".", 0.0},     {L"1e-999", 0.0}, {L" +3.25", 3.25}, {L"1e999", kHuge}};
    for (const auto& [text, expected] : rows) {
        EXPECT_EQ(numberFromText(text), expected) << testing::PrintToString(text);
    }
    EXPECT_EQ(numberFromText(L"-" + std::wstring(400, L'9')), -kHuge);
    EXPECT_EQ(numberFromText(L"0." + std::wstring(400, L'0') + L"1"), 0.0);
}

} // namespace

#include "aviation/pattern/Pattern.h"

#include <gtest/gtest.h>

using aviation::pattern::Pattern;

namespace {

TEST(Pattern, CountsItsGroupsWithTheWholeMatch)
{
    EXPECT_EQ(Pattern<L"^abc">::kGroups, 1U);
    EXPECT_EQ((Pattern<L"^(([0-9]{4})|([/]{4}))((NDV)|([NESW]{0,2}))*">::kGroups), 7U);
}

TEST(Pattern, PrefersTheEarlierAlternative)
{
    const auto match = Pattern<L"^((A)|(AB)|(ABC))">::MatchFront(L"ABC");
    ASSERT_TRUE(match);
    EXPECT_EQ(match[0], L"A");
    EXPECT_EQ(match[2], L"A");
    EXPECT_EQ(match[3], L"");
}

TEST(Pattern, TakesAnotherAlternativeWhenTheRestNeedsIt)
{
    const auto match = Pattern<L"^((A)|(AB))C">::MatchFront(L"ABC");
    ASSERT_TRUE(match);
    EXPECT_EQ(match[1], L"AB");
    EXPECT_EQ(match[2], L"") << "a group of an alternative that was given up";
}

TEST(Pattern, GivesBackWhatTheRestNeeds)
{
    const auto match = Pattern<L"^([A-Z]*)([A-Z]{2})([A-Z]{0,3})Z">::MatchFront(L"ABCDEZ");
    ASSERT_TRUE(match);
    EXPECT_EQ(match[1], L"ABC");
    EXPECT_EQ(match[2], L"DE");
    EXPECT_EQ(match[3], L"");
}

TEST(Pattern, SharesBlanksBetweenTwoRunsAroundAnOptionalWord)
{
    using Words = Pattern<L"^A[[:blank:]]{0,}([B-D]{0,3})[[:blank:]]{0,}([0-9]{2})">;
    for (const wchar_t* text : {L"A12", L"A \t 12", L"ABC12", L"A BCD\t12", L"A  B  12"}) {
        const auto match = Words::MatchFront(text);
        ASSERT_TRUE(match) << text;
        EXPECT_EQ(match[2], L"12") << text;
    }
    EXPECT_FALSE(Words::MatchFront(L"A BCDB 12"));
    EXPECT_FALSE(Words::MatchFront(L"A      1 2"));
}

TEST(Pattern, RepeatsAGroupUntilATurnIsEmpty)
{
    using Turns = Pattern<L"^([0-9]{4})((NDV)|([NESW]{0,2}))*">;
    const auto match = Turns::MatchFront(L"9999NDVNESX");
    ASSERT_TRUE(match);
    EXPECT_EQ(match[0], L"9999NDVNES");
    EXPECT_EQ(match[3], L"NDV") << "a turn that leaves a group out keeps what it had";
    EXPECT_EQ(match[2], L"") << "the last, empty turn counts";
}

TEST(Pattern, RepeatsGroupsACountedNumberOfTimes)
{
    using Counted = Pattern<L"^(A[0-9]){1,3}B?">;
    EXPECT_EQ(Counted::MatchFront(L"A1A2A3A4B")[0], L"A1A2A3");
    EXPECT_EQ(Counted::MatchFront(L"A1A2B")[0], L"A1A2B");
    EXPECT_EQ(Counted::MatchFront(L"A1A2B")[1], L"A2");
    EXPECT_FALSE(Counted::MatchFront(L"AB"));
}

TEST(Pattern, ReadsOddClassesAsTheyStand)
{
    using Bracket = Pattern<L"^L([[0-9]{4})">;
    EXPECT_EQ(Bracket::MatchFront(L"L[12[")[1], L"[12[");
    using Underscore = Pattern<L"^[A-Za_Z]+">;
    EXPECT_EQ(Underscore::MatchFront(L"AZa_b")[0], L"AZa_");
    using Signs = Pattern<L"^[-+]*[LRC/]">;
    EXPECT_EQ(Signs::MatchFront(L"+-+/")[0], L"+-+/");
    using Beyond = Pattern<L"^[A-Z]">;
    EXPECT_FALSE(Beyond::MatchFront(L"\u0141")) << "128 more than a letter of the class";
}

TEST(Pattern, SearchFindsTheLeftmostAndThenTheLongest)
{
    using Km = Pattern<L"([0-9]{1,2}KM)">;
    EXPECT_EQ(Km::Search(L"A 123KM 4KM")[1], L"23KM");
    EXPECT_FALSE(Km::Search(L"KM 1K M"));
    EXPECT_FALSE(Km::Search(L""));
}

TEST(Pattern, MatchesTextsWithoutCharactersAndWithNul)
{
    using Anything = Pattern<L"^[A-Z]*">;
    EXPECT_TRUE(Anything::MatchFront({}));
    EXPECT_EQ(Anything::MatchFront({}).length(), 0U);
    EXPECT_EQ(Anything::MatchFront(std::wstring_view(L"A\0B", 3))[0], L"A");
}

TEST(Pattern, InnerAnchorsHoldOnlyAtTheFront)
{
    using Either = Pattern<L"^(A|^(B))(C|^D)?">;
    EXPECT_EQ(Either::MatchFront(L"BC")[0], L"BC");
    EXPECT_EQ(Either::MatchFront(L"BD")[0], L"B");
}

} // namespace

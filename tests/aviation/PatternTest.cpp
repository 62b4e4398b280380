#include "aviation/pattern/Pattern.h"

#include <gtest/gtest.h>

#include <vector>

using aviation::pattern::Pattern;

namespace {

using Groups = std::vector<std::wstring_view>;

/// The groups of a match at the front, none without one.
template <class P>
Groups Matched(std::wstring_view text)
{
    Groups groups;
    const auto match = P::MatchFront(text);
    for (std::size_t at = 0; match && at < P::kGroups; ++at) {
        groups.push_back(match[at]);
    }
    return groups;
}

TEST(Pattern, PrefersTheEarlierAlternativeUnlessTheRestNeedsAnother)
{
    EXPECT_EQ((Matched<Pattern<L"^((A)|(AB)|(ABC))">>(L"ABC")),
              (Groups{L"A", L"A", L"A", L"", L""}));
    EXPECT_EQ((Matched<Pattern<L"^((A)|(AB))C">>(L"ABC")), (Groups{L"ABC", L"AB", L"", L"AB"}));
    EXPECT_EQ((Matched<Pattern<L"^([A-Z]*)([A-Z]{2})([A-Z]{0,3})Z">>(L"ABCDEZ")),
              (Groups{L"ABCDEZ", L"ABC", L"DE", L""}));
}

TEST(Pattern, RepeatsGroups)
{
    using Turns = Pattern<L"^([0-9]{4})((NDV)|([NESW]{0,2}))*">; // the last, empty turn counts
    EXPECT_EQ(Matched<Turns>(L"9999NDVNESX"), (Groups{L"9999NDVNES", L"9999", L"", L"NDV", L""}));
    using Counted = Pattern<L"^(A[0-9]){1,3}B?">;
    EXPECT_EQ(Matched<Counted>(L"A1A2A3A4B"), (Groups{L"A1A2A3", L"A3"}));
    EXPECT_EQ(Matched<Counted>(L"A1A2B"), (Groups{L"A1A2B", L"A2"}));
    EXPECT_EQ(Matched<Counted>(L"AB"), Groups());
}

TEST(Pattern, ReadsOddClassesAsTheyStand)
{
    EXPECT_EQ((Matched<Pattern<L"^L([[0-9]{4})">>(L"L[12[")), (Groups{L"L[12[", L"[12["}));
    EXPECT_EQ((Matched<Pattern<L"^[A-Za_Z]+">>(L"AZa_b")), Groups{L"AZa_"});
    EXPECT_EQ((Matched<Pattern<L"^[-+]*[LRC/]">>(L"+-+/")), Groups{L"+-+/"});
    EXPECT_EQ((Matched<Pattern<L"^[A-Z]">>(L"\u0141")), Groups()) << "128 more than a letter";
}

TEST(Pattern, SearchFindsTheLeftmostAndThenTheLongest)
{
    using Km = Pattern<L"([0-9]{1,2}KM)">;
    EXPECT_EQ(Km::Search(L"A 123KM 4KM")[1], L"23KM");
    EXPECT_FALSE(Km::Search(L"KM 1K M"));
    EXPECT_FALSE(Km::Search(L""));
}

TEST(Pattern, TextsMayBeEmptyOrHoldNulAndAnchorsHoldAtTheFront)
{
    using Anything = Pattern<L"^[A-Z]*">;
    EXPECT_EQ(Matched<Anything>({}), Groups{L""});
    EXPECT_EQ(Matched<Anything>(std::wstring_view(L"A\0B", 3)), Groups{L"A"});
    using Either = Pattern<L"^(A|^(B))(C|^D)?">;
    EXPECT_EQ(Either::MatchFront(L"BC")[0], L"BC");
    EXPECT_EQ(Either::MatchFront(L"BD")[0], L"B");
}

} // namespace

#include "aviation/GribPatterns.h"
#include "aviation/MetarPatterns.h"
#include "aviation/SynopPatterns.h"
#include "tests/support/PatternSamples.h"
#include "tests/support/Regex.h"

#include <QThread>

#include <gtest/gtest.h>

#include <array>
#include <memory>

using namespace aviation::weather;
using aviation::SeededRandom;
using aviation::pattern::Pattern;

namespace {

/// What a pattern may hold and those of the decoders don't.
using OtherPatterns =
    aviation::pattern::PatternList<Pattern<L"^((A)|(AB)|(ABC))">, Pattern<L"^((A)|(AB))C">,
                                   Pattern<L"^([A-Z]*)([A-Z]{2})([A-Z]{0,3})Z">,
                                   Pattern<L"^(A[0-9]){1,3}B?">, Pattern<L"^[A-Za_Z]+">,
                                   Pattern<L"^[!A-z]+">, Pattern<L"^[A-Z]*">,
                                   Pattern<L"^(A|^(B))(C|^D)?">>;

/// One pattern in both forms, without its type.
struct Contestant
{
    std::wstring text;
    std::wregex regex;
    /// The groups that the matcher found, none without a match.
    std::vector<std::wstring_view> (*match)(std::wstring_view);
};

template <class P>
std::vector<std::wstring_view> Groups(const typename P::Result& match)
{
    std::vector<std::wstring_view> groups;
    for (std::size_t at = 0; match && at < P::kGroups; ++at) {
        groups.push_back(match[at]);
    }
    return groups;
}

template <class P>
Contestant MakeContestant(std::vector<std::wstring_view> (*match)(std::wstring_view))
{
    return {std::wstring(P::text()), std::wregex(P::text().begin(), P::text().end()), match};
}

const std::vector<Contestant>& Contestants()
{
    static const std::vector<Contestant> contestants = [] {
        std::vector<Contestant> all;
        const auto front = [&]<class P>() {
            all.push_back(MakeContestant<P>([](std::wstring_view text) {
                const auto match = P::MatchFront(text);
                EXPECT_EQ(P::FrontLength(text),
                          match ? std::optional(match.length()) : std::nullopt)
                    << testing::PrintToString(text);
                return Groups<P>(match);
            }));
        };
        const auto searched = [&]<class P>() {
            all.push_back(MakeContestant<P>(
                [](std::wstring_view text) { return Groups<P>(P::Search(text)); }));
        };
        metarpatterns::FrontPatterns::forEach(front);
        metarpatterns::SearchedPatterns::forEach(searched);
        synoppatterns::AllSynopPatterns::forEach(front);
        gribpatterns::AllGribPatterns::forEach(front);
        OtherPatterns::forEach(front);
        return all;
    }();
    return contestants;
}

std::vector<std::wstring_view> RegexGroups(const std::wregex& regex, std::wstring_view text)
{
    std::match_results<std::wstring_view::const_iterator> match;
    std::vector<std::wstring_view> groups;
    if (std::regex_search(text.begin(), text.end(), match, regex)) {
        for (const auto& group : match) {
            groups.emplace_back(group.matched ? std::wstring_view(group.first, group.second)
                                              : std::wstring_view());
        }
    }
    return groups;
}

TEST(PatternDifferential, SamplesAndNearMissesGiveTheGroupsOfRegularExpressions)
{
    constexpr int kSamples = 600;
    SeededRandom random(7);
    for (const Contestant& contestant : Contestants()) {
        const PatternSamples samples(contestant.text);
        int matched = 0;
        for (int count = 0; count < kSamples; ++count) {
            std::wstring text = samples.Sample(random) + (count % 2 == 0 ? L"" : L" 9999");
            matched += contestant.match(text).empty() ? 0 : 1;
            for (int spoils = 0; spoils < 4; ++spoils) {
                ASSERT_EQ(contestant.match(text), RegexGroups(contestant.regex, text))
                    << testing::PrintToString(contestant.text) << " on "
                    << testing::PrintToString(text);
                text = Spoiled(std::move(text), random);
            }
        }
        EXPECT_GT(matched, kSamples / 2)
            << "the samples are to match " << testing::PrintToString(contestant.text);
    }
}

/// Front, what is repeated, and back of lines of two million characters that tempt a matcher to
/// recurse or to try again from every one.
constexpr std::array<std::wstring_view, 3> kLongLines[] = {
    {L"BBXX", L" ", L"1234/"},   {L"BBXX SHIP", L" \t", L"12345 99123"},
    {L"OOXX", L" ", L"/////"},   {L"9999", L"N", L"X"},
    {L"R09L/", L"V", L""},       {L"R09", L"/", L"V"},
    {L"R09/1200", L"9", L"Q"},   {L"", L"+", L"TSRA"},
    {L"", L" 1/1KM1 1/1SN", L""}};

std::wstring Filled(const std::array<std::wstring_view, 3>& line)
{
    std::wstring text(line[0]);
    while (text.size() < 2'000'000) {
        text += line[1];
    }
    return text.append(line[2]);
}

/// On a small stack: a failure would be a crash, or the time limit of the tests.
TEST(PatternDifferential, LongLinesNeedLittleStackAndTime)
{
    std::size_t groupsFound = 0;
    const std::unique_ptr<QThread> thread(QThread::create([&groupsFound] {
        for (const auto& longLine : kLongLines) {
            const std::wstring line = Filled(longLine);
            for (const Contestant& contestant : Contestants()) {
                groupsFound += contestant.match(line).size();
            }
        }
    }));
    thread->setStackSize(1U << 20U);
    thread->start();
    ASSERT_TRUE(thread->wait());
    EXPECT_GT(groupsFound, 0U);
}

} // namespace

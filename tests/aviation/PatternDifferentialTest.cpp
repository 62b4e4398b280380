#include "tests/aviation/PatternContestants.h"
#include "tests/support/PatternSamples.h"
#include "tests/support/Regex.h"

#include <QThread>

#include <gtest/gtest.h>

#include <array>
#include <memory>

using aviation::SeededRandom;

namespace {

const Contestants& contestants()
{
    static const Contestants contestants = [] {
        Contestants all;
        addMetarPatterns(all);
        addSynopPatterns(all);
        addGribPatterns(all);
        addOtherPatterns(all);
        return all;
    }();
    return contestants;
}

std::vector<std::wstring_view> regexGroups(const std::wregex& regex, std::wstring_view text)
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

TEST(PatternDifferentialTest, SamplesAndNearMissesGiveTheGroupsOfRegularExpressions)
{
    constexpr int kSamples = 600;
    SeededRandom random(7);
    for (const Contestant& contestant : contestants()) {
        const PatternSamples samples(contestant.text);
        const std::wregex regex(contestant.text);
        int matched = 0;
        for (int count = 0; count < kSamples; ++count) {
            std::wstring text = samples.sample(random) + (count % 2 == 0 ? L"" : L" 9999");
            matched += contestant.match(text).empty() ? 0 : 1;
            for (int spoils = 0; spoils < 4; ++spoils) {
                ASSERT_EQ(contestant.match(text), regexGroups(regex, text))
                    << testing::PrintToString(contestant.text) << " on "
                    << testing::PrintToString(text);
                text = spoiled(std::move(text), random);
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

std::wstring filled(const std::array<std::wstring_view, 3>& line)
{
    std::wstring text(line[0]);
    while (text.size() < 2'000'000) {
        text += line[1];
    }
    return text.append(line[2]);
}

/// On a small stack: a failure would be a crash, or the time limit of the tests.
TEST(PatternDifferentialTest, LongLinesNeedLittleStackAndTime)
{
    std::size_t groupsFound = 0;
    const std::unique_ptr<QThread> thread(QThread::create([&groupsFound] {
        for (const auto& longLine : kLongLines) {
            const std::wstring line = filled(longLine);
            for (const Contestant& contestant : contestants()) {
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

#pragma once

#include "aviation/pattern/Pattern.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A pattern as text and as matcher, without its type.
struct Contestant
{
    std::wstring text;
    /// The groups that the matcher found, none without a match.
    std::vector<std::wstring_view> (*match)(std::wstring_view);
};

using Contestants = std::vector<Contestant>;

template <class P>
std::vector<std::wstring_view> groupsOf(const typename P::Result& match)
{
    std::vector<std::wstring_view> groups;
    for (std::size_t at = 0; match && at < P::kGroups; ++at) {
        groups.push_back(match[at]);
    }
    return groups;
}

template <class P>
Contestant contestant(std::vector<std::wstring_view> (*match)(std::wstring_view))
{
    return {std::wstring(P::text()), match};
}

/// The patterns of a list that are matched at the front of a text.
template <class List>
void addFront(Contestants& all)
{
    List::forEach([&]<class P>() {
        all.push_back(contestant<P>([](std::wstring_view text) {
            const auto match = P::matchFront(text);
            EXPECT_EQ(P::frontLength(text), match ? std::optional(match.length()) : std::nullopt)
                << testing::PrintToString(text);
            return groupsOf<P>(match);
        }));
    });
}

/// And those that are searched in it.
template <class List>
void addSearched(Contestants& all)
{
    List::forEach([&]<class P>() {
        all.push_back(
            contestant<P>([](std::wstring_view text) { return groupsOf<P>(P::Search(text)); }));
    });
}

// Each in a file of its own: a matcher takes long to compile.
void addMetarPatterns(Contestants& all);
void addSynopPatterns(Contestants& all);
void addGribPatterns(Contestants& all);
/// What a pattern may hold and those of the decoders don't.
void addOtherPatterns(Contestants& all);

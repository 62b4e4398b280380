#pragma once

#include "aviation/pattern/Program.h"

#include <optional>
#include <string_view>

namespace aviation::pattern {

/// What a pattern found: false when it found nothing, else group 0, the whole match, and the
/// groups. The views point into the text that was matched.
template <std::size_t Groups>
class Match
{
public:
    explicit operator bool() const { return m_groups[0].data() != nullptr; }

    /// A group that took no part in the match is empty.
    const std::wstring_view& operator[](std::size_t group) const { return m_groups[group]; }
    std::size_t length() const { return m_groups[0].size(); }

private:
    template <FixedString Text>
    friend class Pattern;

    std::array<std::wstring_view, Groups> m_groups{};
};

/// A pattern in ECMAScript syntax, read by the compiler: `Pattern<L"^([A-Z]{4}) ([0-9]{6}Z)">`.
///
/// Finds exactly what std::wregex finds, with the preference of the same alternatives and the same
/// groups. Takes no memory, a stack bounded by the pattern, and time in proportion to the text even
/// where it is hostile. A pattern outside of what Parser and Compiler know doesn't compile. All
/// functions are pure and callable from any thread.
template <FixedString Text>
class Pattern
{
    /// A character of the pattern makes at most three nodes: itself, its quantifier, the sequence.
    /// A pattern with large counted groups doesn't fit and doesn't compile.
    static constexpr std::size_t kCapacity = 3 * sizeof(Text.text) / sizeof(wchar_t) + 16;
    static constexpr Program<kCapacity> kProgram = compile<kCapacity>(Text.view());
    static constexpr std::size_t kMinLength = static_cast<std::size_t>(kProgram.minLength);

public:
    /// With the whole match.
    static constexpr std::size_t kGroups = static_cast<std::size_t>(kProgram.groups);
    using Result = Match<kGroups>;

    static constexpr std::wstring_view text() { return Text.view(); }

    /// Matches at the beginning of the text; for patterns that start with ^ on every way.
    static Result matchFront(std::wstring_view text)
    {
        static_assert(kProgram.anchored, "a pattern without ^ is searched for");
        if (text.size() < kMinLength) {
            return Result();
        }
        return matchAt(text, 0);
    }

    /// The length of the match that matchFront finds, for where nobody asks for its groups: noting
    /// them, and taking them back at each alternative that fails, costs much of the time.
    static std::optional<std::size_t> frontLength(std::wstring_view text)
    {
        static_assert(kProgram.anchored, "a pattern without ^ is searched for");
        if (text.size() < kMinLength) {
            return std::nullopt;
        }
        Range whole(text);
        const wchar_t* const end = run<kProgram.entry, kProgram.minLength>(whole, whole.begin);
        return end != nullptr ? std::optional(static_cast<std::size_t>(end - whole.begin))
                              : std::nullopt;
    }

    /// The leftmost match; for patterns without ^ whose matches have a greatest length, since
    /// others could cost quadratic time.
    static Result Search(std::wstring_view text)
    {
        static_assert(!kProgram.anchored, "a pattern with ^ is matched at the front");
        static_assert(kProgram.maxLength != kUnbounded, "the search might be slow");
        for (std::size_t at = 0; at + kMinLength <= text.size(); ++at) {
            const Result result = matchAt(text, at);
            if (result) {
                return result;
            }
        }
        return Result();
    }

private:
    /// What the program runs over.
    struct Range
    {
        static constexpr bool kNotesGroups = false;

        // A null pointer means "no match" in here, so a text without any place gets one.
        explicit Range(std::wstring_view text)
            : begin(text.data() != nullptr ? text.data() : L"")
            , end(begin + text.size())
        {}

        const wchar_t* begin;
        const wchar_t* end;
    };

    /// The same with the groups on the way.
    struct NotedRange : Range
    {
        static constexpr bool kNotesGroups = true;

        using Range::Range;

        Result result{};
        std::array<const wchar_t*, kGroups> open{};
    };

    static Result matchAt(std::wstring_view text, std::size_t at)
    {
        NotedRange state(text);
        const wchar_t* const begin = state.begin + at;
        const wchar_t* const end = run<kProgram.entry, kProgram.minLength>(state, begin);
        if (end == nullptr) {
            return Result();
        }
        state.result.m_groups[0] = view(begin, end);
        return state.result;
    }

    static std::wstring_view view(const wchar_t* begin, const wchar_t* end)
    {
        return {begin, static_cast<std::size_t>(end - begin)};
    }

    /// Runs the program from an instruction on, where at least `Sure` characters are left; returns
    /// the end of the match or a null pointer.
    template <int Index, int Sure, class State>
    static const wchar_t* run(State& state, const wchar_t* at)
    {
        constexpr Instruction kAt = kProgram.at(Index);
        if constexpr (kAt.op == Op::Accept) {
            return at;
        } else if constexpr (kAt.op == Op::Begin) {
            return at == state.begin ? run<kAt.next, Sure>(state, at) : nullptr;
        } else if constexpr (kAt.op == Op::Run && kAt.min == kAt.max) {
            return runExactly<Index, Sure>(state, at);
        } else if constexpr (kAt.op == Op::Run) {
            return runLongest<Index>(state, at);
        } else if constexpr ((kAt.op == Op::Open || kAt.op == Op::Close) && !State::kNotesGroups) {
            return run<kAt.next, Sure>(state, at);
        } else if constexpr (kAt.op == Op::Open) {
            state.open[static_cast<std::size_t>(kAt.group)] = at;
            return run<kAt.next, Sure>(state, at);
        } else if constexpr (kAt.op == Op::Close) {
            return closeGroup<Index, Sure>(state, at);
        } else if constexpr (kAt.op == Op::Branch) {
            const wchar_t* const end = run<kAt.next, Sure>(state, at);
            return end != nullptr ? end : run<kAt.other, Sure>(state, at);
        } else {
            return runLoop<Index>(state, at);
        }
    }

    template <int Index, int Sure, class State>
    static const wchar_t* runExactly(State& state, const wchar_t* at)
    {
        constexpr Instruction kAt = kProgram.at(Index);
        constexpr int kSureBehind = Sure > kAt.max ? Sure - kAt.max : 0;
        if constexpr (Sure < kAt.max) {
            if (state.end - at < kAt.max) {
                return nullptr;
            }
        }
        for (int count = 0; count < kAt.max; ++count) {
            if (!contains<kAt.set>(at[count])) {
                return nullptr;
            }
        }
        return run<kAt.next, kSureBehind>(state, at + kAt.max);
    }

    template <int Index, class State>
    static const wchar_t* runLongest(State& state, const wchar_t* at)
    {
        constexpr Instruction kAt = kProgram.at(Index);
        const wchar_t* stop = state.end;
        if constexpr (kAt.max != kUnbounded) {
            stop = state.end - at > kAt.max ? at + kAt.max : state.end;
        }
        const wchar_t* end = at;
        while (end != stop && contains<kAt.set>(*end)) {
            ++end;
        }
        if (end - at < kAt.min) {
            return nullptr;
        }
        if constexpr (kAt.givesBack) {
            for (; end - at > kAt.min; --end) {
                const wchar_t* const found = run<kAt.next, 0>(state, end);
                if (found != nullptr) {
                    return found;
                }
            }
        }
        return run<kAt.next, 0>(state, end);
    }

    template <int Index, int Sure, class State>
    static const wchar_t* closeGroup(State& state, const wchar_t* at)
    {
        constexpr Instruction kAt = kProgram.at(Index);
        constexpr auto kGroup = static_cast<std::size_t>(kAt.group);
        std::wstring_view& group = state.result.m_groups[kGroup];
        const std::wstring_view before = group;
        group = view(state.open[kGroup], at);
        const wchar_t* const end = run<kAt.next, Sure>(state, at);
        if constexpr (kAt.restores) {
            if (end == nullptr) {
                group = before;
            }
        }
        return end;
    }

    /// What follows a loop always matches, so no turn is ever taken back. A turn over no
    /// characters is made once and counts for the groups, as it does in std::wregex.
    template <int Index, class State>
    static const wchar_t* runLoop(State& state, const wchar_t* at)
    {
        constexpr Instruction kAt = kProgram.at(Index);
        for (;;) {
            const wchar_t* const end = run<kAt.other, 0>(state, at);
            if (end == nullptr || end == at) {
                return run<kAt.next, 0>(state, at);
            }
            at = end;
        }
    }
};

/// A row of patterns, for whoever does the same with each of them.
template <class... Patterns>
struct PatternList
{
    static constexpr std::size_t kSize = sizeof...(Patterns);

    /// Calls `visit.template operator()<Pattern>()` for each pattern in order.
    template <class Visitor>
    static void forEach(Visitor&& visit)
    {
        (visit.template operator()<Patterns>(), ...);
    }
};

} // namespace aviation::pattern

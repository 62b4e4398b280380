#pragma once

#include "aviation/pattern/CharSet.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace aviation::pattern {

/// A wide string literal as a template argument.
template <std::size_t N>
struct FixedString
{
    wchar_t text[N]{};

    consteval FixedString(const wchar_t (&literal)[N]) // NOLINT: conversion is the purpose
    {
        for (std::size_t at = 0; at < N; ++at) {
            text[at] = literal[at];
        }
    }

    constexpr std::wstring_view view() const { return {text, N - 1}; }
};

inline constexpr int kUnbounded = -1;

/// Kinds of syntax tree nodes.
enum class Part
{
    Empty,
    Begin,
    Class,
    Sequence,
    Either,
    Group,
    Repeat
};

struct PartNode
{
    Part part = Part::Empty;
    CharSet set{}; ///< Class
    int left = 0;  ///< Sequence and Either; the inner part of Group and Repeat
    int right = 0; ///< Sequence and Either
    int group = 0; ///< Group: number counted by opening brackets from 1
    int min = 0;   ///< Repeat
    int max = 0;   ///< Repeat, kUnbounded without a limit
};

/// Syntax tree of a pattern text. Nodes refer to each other by index.
template <std::size_t Capacity>
struct Tree
{
    std::array<PartNode, Capacity> nodes{};
    std::size_t count = 0;
    int root = 0;
    int groups = 1; ///< with the whole match

    constexpr int add(const PartNode& node)
    {
        nodes.at(count) = node;
        return static_cast<int>(count++);
    }
    constexpr const PartNode& at(int index) const { return nodes[static_cast<std::size_t>(index)]; }
};

/// Reads the part of the ECMAScript syntax that report formats need: literals, classes with ranges
/// and [:blank:], groups, alternatives, greedy quantifiers and ^. Runs at compile time only; a
/// throw there is a compile error that shows the reason.
template <std::size_t Capacity>
class Parser
{
public:
    constexpr explicit Parser(std::wstring_view text) : m_text(text) {}

    constexpr Tree<Capacity> parse()
    {
        m_tree.root = parseEither();
        if (!atEnd()) {
            throw "a closing bracket without its opening one";
        }
        return m_tree;
    }

private:
    constexpr bool atEnd() const { return m_at == m_text.size(); }
    constexpr bool looksAt(wchar_t c) const { return !atEnd() && m_text[m_at] == c; }
    constexpr bool accept(wchar_t c)
    {
        const bool found = looksAt(c);
        m_at += found ? 1U : 0U;
        return found;
    }
    constexpr wchar_t take()
    {
        if (atEnd()) {
            throw "the pattern ends too early";
        }
        return m_text[m_at++];
    }

    constexpr int parseEither()
    {
        const int left = parseSequence();
        if (!accept(L'|')) {
            return left;
        }
        return m_tree.add({.part = Part::Either, .left = left, .right = parseEither()});
    }

    constexpr int parseSequence()
    {
        if (atEnd() || looksAt(L'|') || looksAt(L')')) {
            return m_tree.add({});
        }
        const int left = parseTerm();
        return m_tree.add({.part = Part::Sequence, .left = left, .right = parseSequence()});
    }

    constexpr int parseTerm()
    {
        if (accept(L'^')) {
            return m_tree.add({.part = Part::Begin});
        }
        return parseQuantifier(parseAtom());
    }

    constexpr int parseAtom()
    {
        const wchar_t c = take();
        if (c == L'(') {
            return parseGroup();
        }
        CharSet set;
        if (c == L'[') {
            set = parseClass();
        } else if (std::wstring_view(L"\\.$*+?{}]").find(c) != std::wstring_view::npos) {
            throw "this character has a meaning that the matcher doesn't know";
        } else {
            addTo(set, c);
        }
        return m_tree.add({.part = Part::Class, .set = set});
    }

    constexpr int parseGroup()
    {
        if (looksAt(L'?')) {
            throw "only plain groups";
        }
        const int group = m_tree.groups++;
        const int inner = parseEither();
        if (take() != L')') {
            throw "a group isn't closed";
        }
        return m_tree.add({.part = Part::Group, .left = inner, .group = group});
    }

    constexpr CharSet parseClass()
    {
        if (looksAt(L'^') || looksAt(L']')) {
            throw "no negated and no empty classes";
        }
        CharSet set;
        while (!accept(L']')) {
            const wchar_t c = take();
            if (c == L'[' && accept(L':')) {
                addNamedClass(set);
            } else if (c == L'\\') {
                throw "no escapes";
            } else {
                addRange(set, c);
            }
        }
        return set;
    }

    constexpr void addNamedClass(CharSet& set)
    {
        constexpr std::wstring_view kBlank = L"blank:]";
        if (m_text.substr(m_at, kBlank.size()) != kBlank) {
            throw "an unknown named class";
        }
        m_at += kBlank.size();
        addTo(set, L' ');
        addTo(set, L'\t');
    }

    /// One character, or a range when a '-' stands between it and another one.
    constexpr void addRange(CharSet& set, wchar_t first)
    {
        wchar_t last = first;
        if (first != L'-' && looksAt(L'-') && m_text.substr(m_at + 1, 1) != L"]") {
            ++m_at;
            last = take();
        }
        if (last < first) {
            throw "a range runs backwards";
        }
        for (wchar_t c = first; c <= last; ++c) {
            addTo(set, c);
        }
    }

    static constexpr void addTo(CharSet& set, wchar_t c)
    {
        if (static_cast<std::uint32_t>(c) >= CharSet::kSize) {
            throw "only ASCII";
        }
        set.add(static_cast<std::uint32_t>(c));
    }

    constexpr int parseQuantifier(int inner)
    {
        if (accept(L'*')) {
            return repeat(inner, 0, kUnbounded);
        }
        if (accept(L'+')) {
            return repeat(inner, 1, kUnbounded);
        }
        if (accept(L'?')) {
            return repeat(inner, 0, 1);
        }
        return accept(L'{') ? parseCounts(inner) : inner;
    }

    constexpr int parseCounts(int inner)
    {
        const int min = parseNumber();
        int max = min;
        if (accept(L',')) {
            max = looksAt(L'}') ? kUnbounded : parseNumber();
        }
        if (take() != L'}' || (max != kUnbounded && max < min)) {
            throw "a quantifier isn't {n}, {n,} or {n,m}";
        }
        return repeat(inner, min, max);
    }

    constexpr int parseNumber()
    {
        constexpr int kLimit = 1000;
        int number = 0;
        bool any = false;
        while (!atEnd() && m_text[m_at] >= L'0' && m_text[m_at] <= L'9' && number < kLimit) {
            number = number * 10 + static_cast<int>(m_text[m_at++] - L'0');
            any = true;
        }
        if (!any) {
            throw "a quantifier without a number";
        }
        return number;
    }

    constexpr int repeat(int inner, int min, int max)
    {
        if (looksAt(L'?') || looksAt(L'*') || looksAt(L'+') || looksAt(L'{')) {
            throw "no lazy and no doubled quantifiers";
        }
        return m_tree.add({.part = Part::Repeat, .left = inner, .min = min, .max = max});
    }

    std::wstring_view m_text;
    std::size_t m_at = 0;
    Tree<Capacity> m_tree;
};

} // namespace aviation::pattern

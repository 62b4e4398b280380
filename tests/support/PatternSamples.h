#pragma once

#include "aviation/pattern/Syntax.h"
#include "aviation/support/RandomSource.h"

#include <string>

/// Makes texts that a pattern matches, by walking its syntax tree with random choices, and spoils
/// texts a little, so that near misses come up as well.
class PatternSamples
{
public:
    explicit PatternSamples(std::wstring_view pattern);

    std::wstring sample(aviation::RandomSource& random) const;

private:
    static constexpr std::size_t kCapacity = 1024;

    void append(int part, aviation::RandomSource& random, std::wstring& text) const;

    aviation::pattern::Tree<kCapacity> m_tree;
};

/// Replaces, drops, doubles or inserts one character.
std::wstring spoiled(std::wstring text, aviation::RandomSource& random);

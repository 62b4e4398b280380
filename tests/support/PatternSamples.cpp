#include "tests/support/PatternSamples.h"

using aviation::RandomSource;
using namespace aviation::pattern;

namespace {

std::size_t below(std::size_t limit, RandomSource& random)
{
    return static_cast<std::size_t>(random.next()) % limit;
}

wchar_t memberOf(const CharSet& set, RandomSource& random)
{
    std::wstring members;
    for (std::uint32_t c = 0; c < CharSet::kSize; ++c) {
        if (set.has(c)) {
            members.push_back(static_cast<wchar_t>(c));
        }
    }
    return members[below(members.size(), random)];
}

} // namespace

PatternSamples::PatternSamples(std::wstring_view pattern)
    : m_tree(Parser<kCapacity>(pattern).parse())
{}

std::wstring PatternSamples::sample(RandomSource& random) const
{
    std::wstring text;
    append(m_tree.root, random, text);
    return text;
}

void PatternSamples::append(int part, RandomSource& random, std::wstring& text) const
{
    constexpr int kMostTurnsMore = 3;
    const PartNode& node = m_tree.at(part);
    switch (node.part) {
    case Part::Empty:
    case Part::Begin:
        break;
    case Part::Class:
        text.push_back(memberOf(node.set, random));
        break;
    case Part::Sequence:
        append(node.left, random, text);
        append(node.right, random, text);
        break;
    case Part::Either:
        append(below(2, random) == 0 ? node.left : node.right, random, text);
        break;
    case Part::Group:
        append(node.left, random, text);
        break;
    case Part::Repeat:
        const int most = node.max == kUnbounded ? node.min + kMostTurnsMore : node.max;
        for (int turn = node.min + random.next() % (most - node.min + 1); turn > 0; --turn) {
            append(node.left, random, text);
        }
        break;
    }
}

std::wstring spoiled(std::wstring text, RandomSource& random)
{
    constexpr std::wstring_view kAlphabet(L"0123456789/ANSMKTPQRVGCFUBDEWLXYZ +-[_\t\0\u00B0\u0141",
                                          43);
    const wchar_t other = kAlphabet[below(kAlphabet.size(), random)];
    const std::size_t at = below(text.size() + 1, random);
    if (at == text.size()) {
        return text + other;
    }
    switch (below(4, random)) {
    case 0:
        text[at] = other;
        break;
    case 1:
        text.erase(at, 1);
        break;
    case 2:
        text.insert(at, 1, text[at]);
        break;
    default:
        text.insert(at, 1, other);
        break;
    }
    return text;
}

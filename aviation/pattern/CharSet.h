#pragma once

#include <cstddef>
#include <cstdint>

namespace aviation::pattern {

/// A set of ASCII characters, as a bitmap: what one class or one literal of a pattern accepts.
/// Characters above 127 belong to no set.
struct CharSet
{
    static constexpr std::uint32_t kSize = 128;
    static constexpr std::uint32_t kWordBits = 64;

    std::uint64_t low = 0;  ///< characters 0 to 63
    std::uint64_t high = 0; ///< characters 64 to 127

    constexpr void add(std::uint32_t c)
    {
        (c < kWordBits ? low : high) |= std::uint64_t{1} << (c % kWordBits);
    }

    constexpr bool has(std::uint32_t c) const
    {
        return c < kSize && (((c < kWordBits ? low : high) >> (c % kWordBits)) & 1U) != 0;
    }

    constexpr bool overlaps(const CharSet& other) const
    {
        return (low & other.low) != 0 || (high & other.high) != 0;
    }

    constexpr bool operator==(const CharSet&) const = default;

    constexpr std::uint32_t first() const
    {
        std::uint32_t c = 0;
        while (c < kSize && !has(c)) {
            ++c;
        }
        return c;
    }

    constexpr std::uint32_t last() const
    {
        std::uint32_t c = kSize;
        while (c > 0 && !has(c - 1)) {
            --c;
        }
        return c - 1;
    }

    constexpr std::uint32_t span() const { return last() - first(); }

    constexpr bool isOneRange() const
    {
        for (std::uint32_t c = first(); c <= last(); ++c) {
            if (!has(c)) {
                return false;
            }
        }
        return true;
    }

    /// The bits of up to 64 characters from first() on.
    constexpr std::uint64_t window() const
    {
        std::uint64_t bits = 0;
        for (std::uint32_t at = 0; at < kWordBits; ++at) {
            bits |= has(first() + at) ? std::uint64_t{1} << at : 0;
        }
        return bits;
    }
};

/// Membership in a set known at compile time: a comparison or one shift.
template <CharSet Set>
constexpr bool contains(wchar_t c)
{
    constexpr std::uint32_t kFirst = Set.first();
    constexpr std::uint32_t kSpan = Set.span();
    const std::uint32_t offset = static_cast<std::uint32_t>(c) - kFirst;
    if constexpr (Set.isOneRange()) {
        return offset <= kSpan;
    } else if constexpr (kSpan < CharSet::kWordBits) {
        constexpr std::uint64_t kWindow = Set.window();
        return offset <= kSpan && ((kWindow >> offset) & 1U) != 0;
    } else {
        return Set.has(static_cast<std::uint32_t>(c));
    }
}

} // namespace aviation::pattern

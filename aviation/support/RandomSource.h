#pragma once

#include <cstdint>
#include <random>

namespace aviation {

/// The one way to draw a random number; handed to whoever needs chance, so tests give a list.
class RandomSource
{
public:
    RandomSource() = default;
    RandomSource(const RandomSource&) = delete;
    RandomSource& operator=(const RandomSource&) = delete;
    virtual ~RandomSource() = default;

    /// A whole number from 0 to 2147483647. Used by one thread at a time.
    virtual std::int32_t next() = 0;
};

/// Random numbers from a seed: equal seeds give equal rows on every platform.
class SeededRandom final : public RandomSource
{
public:
    explicit SeededRandom(std::uint32_t seed) : m_engine(seed) {}
    std::int32_t next() override { return static_cast<std::int32_t>(m_engine() & 0x7FFFFFFFU); }

private:
    std::mt19937 m_engine;
};

} // namespace aviation

#pragma once

#include "aviation/support/RandomSource.h"

#include <cstddef>
#include <utility>
#include <vector>

/// Gives the numbers of a list, over and over; an empty list gives zeros.
class FakeRandom final : public aviation::RandomSource
{
public:
    explicit FakeRandom(std::vector<std::int32_t> numbers = {}) : m_numbers(std::move(numbers)) {}
    void setNumbers(std::vector<std::int32_t> numbers)
    {
        m_numbers = std::move(numbers);
        m_at = 0;
    }
    std::int32_t next() override
    {
        return m_numbers.empty() ? 0 : m_numbers[m_at++ % m_numbers.size()];
    }

private:
    std::vector<std::int32_t> m_numbers;
    std::size_t m_at = 0;
};

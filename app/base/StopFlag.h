#pragma once

#include <atomic>

/// Raised once when the program ends; whoever waits for an answer looks at it at least ten times a
/// second and gives way. Callable from any thread; owned by whoever outlives all waiters.
class StopFlag
{
public:
    void raise() { m_raised.store(true, std::memory_order_release); }
    bool raised() const { return m_raised.load(std::memory_order_acquire); }

private:
    std::atomic<bool> m_raised{false};
};

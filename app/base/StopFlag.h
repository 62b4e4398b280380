#pragma once

#include <atomic>
#include <functional>
#include <utility>

/// Raised once when the program ends; whoever waits for an answer looks at it at least ten times a
/// second and gives way. Callable from any thread; owned by whoever outlives all waiters.
class StopFlag
{
public:
    StopFlag() = default;
    /// A flag that counts as raised as well while `also` is true, which is asked on the thread of
    /// whoever looks.
    explicit StopFlag(std::function<bool()> also) : m_also(std::move(also)) {}

    void raise() { m_raised.store(true, std::memory_order_release); }
    bool raised() const { return m_raised.load(std::memory_order_acquire) || (m_also && m_also()); }

private:
    const std::function<bool()> m_also;
    std::atomic<bool> m_raised{false};
};

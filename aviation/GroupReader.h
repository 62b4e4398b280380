#pragma once

#include <optional>
#include <string_view>

namespace aviation::weather {

/// The part of a report that isn't read yet. A group that matches at the front is cut off together
/// with the blanks after it; nothing is copied, so the views that it gives live as long as the
/// report text. Blanks at the far end stay unless trimEnd takes them: few groups look that far.
class GroupReader
{
public:
    explicit GroupReader(std::wstring_view text) : m_rest(text) {}

    /// The groups of a match, which is cut off; a false result when the pattern doesn't match.
    template <class Pattern>
    typename Pattern::Result take()
    {
        const auto match = Pattern::matchFront(m_rest);
        if (match) {
            cut(match.length());
        }
        return match;
    }

    /// The same for a pattern whose groups nobody wants: the whole match.
    template <class Pattern>
    std::optional<std::wstring_view> takeWhole()
    {
        const auto length = Pattern::frontLength(m_rest);
        if (!length) {
            return std::nullopt;
        }
        const std::wstring_view whole = m_rest.substr(0, *length);
        cut(*length);
        return whole;
    }

    /// Cuts off that many characters, and the blanks after them.
    void cut(std::size_t length)
    {
        m_rest.remove_prefix(length);
        while (!m_rest.empty() && m_rest.front() == L' ') {
            m_rest.remove_prefix(1);
        }
    }

    /// Cuts off the blanks at the far end.
    void trimEnd()
    {
        while (!m_rest.empty() && m_rest.back() == L' ') {
            m_rest.remove_suffix(1);
        }
    }

    std::wstring_view rest() const { return m_rest; }

    /// Cuts off each of the groups that is there, in this order, without looking at its value.
    template <class... Patterns>
    void pass()
    {
        (static_cast<void>(takeWhole<Patterns>()), ...);
    }

private:
    std::wstring_view m_rest;
};

} // namespace aviation::weather

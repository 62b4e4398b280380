#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace aviation::weather {

/// Walks the pieces of a text between separators without a copy. A separator at the very end starts
/// no further piece, so a text of n closed lines has n pieces and an empty text has none.
class TextPieces
{
public:
    TextPieces(std::wstring_view text, wchar_t separator) : m_rest(text), m_separator(separator) {}

    /// Pieces from here to the end.
    std::size_t count() const
    {
        const auto separators = std::count(m_rest.begin(), m_rest.end(), m_separator);
        const bool isOpen = !m_rest.empty() && m_rest.back() != m_separator;
        return static_cast<std::size_t>(separators) + (isOpen ? 1 : 0);
    }
    std::optional<std::wstring_view> next()
    {
        if (m_rest.empty()) {
            return std::nullopt;
        }
        const std::size_t length = std::min(m_rest.find(m_separator), m_rest.size());
        const std::wstring_view piece = m_rest.substr(0, length);
        m_rest.remove_prefix(std::min(length + 1, m_rest.size()));
        return piece;
    }

private:
    std::wstring_view m_rest;
    wchar_t m_separator;
};

/// The text without its line feeds and carriage returns.
inline std::wstring withoutLineEnds(std::wstring_view text)
{
    std::wstring joined;
    joined.reserve(text.size());
    TextPieces lines(text, L'\n');
    while (const auto line = lines.next()) {
        joined += *line;
    }
    if (joined.find(L'\r') != std::wstring::npos) {
        std::erase(joined, L'\r');
    }
    return joined;
}

} // namespace aviation::weather

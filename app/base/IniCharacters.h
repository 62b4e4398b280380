#pragma once

#include <array>
#include <string_view>

/// What reading and writing of INI texts share.
namespace initext {

/// Characters that stand for others after a backslash, and these.
inline constexpr std::array<std::array<char, 2>, 11> kEscapes{{{'a', '\a'},
                                                               {'b', '\b'},
                                                               {'f', '\f'},
                                                               {'n', '\n'},
                                                               {'r', '\r'},
                                                               {'t', '\t'},
                                                               {'v', '\v'},
                                                               {'"', '"'},
                                                               {'?', '?'},
                                                               {'\'', '\''},
                                                               {'\\', '\\'}}};

inline constexpr int kHexBase = 16;

inline bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

/// -1 if the character is no digit of that base.
inline int digitValue(char c, int base)
{
    int value = -1;
    if (c >= '0' && c <= '9') {
        value = c - '0';
    } else if (c >= 'a' && c <= 'f') {
        value = c - 'a' + 10;
    } else if (c >= 'A' && c <= 'F') {
        value = c - 'A' + 10;
    }
    return value < base ? value : -1;
}

inline std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

inline std::string_view withoutByteOrderMark(std::string_view text)
{
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    return text.substr(
        text.substr(0, kByteOrderMark.size()) == kByteOrderMark ? kByteOrderMark.size() : 0);
}

} // namespace initext

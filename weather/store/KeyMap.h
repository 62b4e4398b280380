#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

namespace aviation::weather {

/// Keys that come straight out of a downloaded text. Ordered on purpose: a hash could be attacked
/// with colliding keys. Looks up by view without a copy.
using KeyMap = std::map<std::wstring, std::size_t, std::less<>>;

struct KeyHash
{
    using is_transparent = void;
    std::size_t operator()(std::wstring_view key) const
    {
        return std::hash<std::wstring_view>()(key);
    }
};

/// Keys of our own tables, and reports' keys that a table has confirmed. Several times as fast.
using TableKeyMap = std::unordered_map<std::wstring, std::size_t, KeyHash, std::equal_to<>>;

} // namespace aviation::weather

#pragma once

#include <QString>

/// "abc"_q is a QString of UTF-8.
inline QString operator""_q(const char* utf8, std::size_t size)
{
    return QString::fromUtf8(utf8, static_cast<int>(size));
}

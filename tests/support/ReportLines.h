#pragma once

#include <string>
#include <vector>

/// The lines of a text file, each byte as one character of the same number, without line ends and
/// empty lines. Every `step`-th line only. Empty when the file can't be read.
std::vector<std::wstring> reportLines(const std::string& path, std::size_t step = 1);

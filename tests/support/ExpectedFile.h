#pragma once

#include <string>

/// Compares with the whole reference file, named below tests/data. A miss says which line differs
/// first and leaves what came in the build folder. With CIRRILON_UPDATE_EXPECTED set the
/// reference is replaced instead: that is how a wanted change is accepted, for every such file.
void expectFile(const std::string& actual, const std::string& reference);

/// Byte by byte, empty when it can't be read.
std::string fileContents(const std::string& path);

#include "tests/support/ExpectedFile.h"

#include <gtest/gtest.h>

#include <TestPaths.h>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

void writeFile(const std::string& path, const std::string& contents)
{
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << contents;
}

/// Of the line around a place: lines of JSON are long.
std::string around(const std::string& text, std::size_t at)
{
    constexpr std::size_t kBefore = 80;
    constexpr std::size_t kMost = 160;
    const std::size_t lineEnd = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
    const std::size_t begin = std::max(lineEnd + 1, at - std::min(at, kBefore));
    return text.substr(begin, std::min(kMost, text.find('\n', at) - begin));
}

std::string firstDifference(const std::string& actual, const std::string& expected)
{
    const auto place =
        std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    const auto line = std::count(actual.begin(), place.first, '\n') + 1;
    const auto at = static_cast<std::size_t>(std::distance(actual.begin(), place.first));
    return "line " + std::to_string(line) + "\nis       " + around(actual, at) + "\nexpected "
           + around(expected, at);
}

} // namespace

std::string fileContents(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void expectFile(const std::string& actual, const std::string& reference)
{
    const std::string path = CIRRILON_TEST_DATA "/" + reference;
    if (std::getenv("CIRRILON_UPDATE_EXPECTED") != nullptr) {
        writeFile(path, actual);
    }
    const std::string expected = fileContents(path);
    if (actual != expected) {
        const std::string left = CIRRILON_TEST_ACTUAL "/" + reference;
        writeFile(left, actual);
        ADD_FAILURE() << reference << " differs in " << firstDifference(actual, expected)
                      << "\nWhat came is in " << left << "; CIRRILON_UPDATE_EXPECTED=1 accepts it.";
    }
}

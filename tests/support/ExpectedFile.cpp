#include "tests/support/ExpectedFile.h"

#include <gtest/gtest.h>

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

std::string lineAt(const std::string& text, std::size_t at)
{
    const std::size_t end = text.find('\n', at);
    const std::size_t before = at == 0 ? std::string::npos : text.rfind('\n', at - 1);
    return text.substr(before + 1, end == std::string::npos ? end : end - before - 1);
}

std::string firstDifference(const std::string& actual, const std::string& expected)
{
    const auto place =
        std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    const auto line = std::count(actual.begin(), place.first, '\n') + 1;
    const auto at = static_cast<std::size_t>(std::distance(actual.begin(), place.first));
    return "line " + std::to_string(line) + "\nis       " + lineAt(actual, at) + "\nexpected "
           + lineAt(expected, at);
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

#include "tests/support/ReportLines.h"

#include <algorithm>
#include <fstream>

namespace {

std::wstring OneForOne(const std::string& bytes)
{
    std::wstring text;
    text.reserve(bytes.size());
    std::transform(bytes.begin(), bytes.end(), std::back_inserter(text), [](char byte) {
        return static_cast<wchar_t>(static_cast<unsigned char>(byte));
    });
    return text;
}

} // namespace

std::vector<std::wstring> ReportLines(const std::string& path, std::size_t step)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<std::wstring> lines;
    std::size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        while (!line.empty() && (line.back() == '\r' || line.back() == '\n')) {
            line.pop_back();
        }
        if (!line.empty() && number++ % step == 0) {
            lines.push_back(OneForOne(line));
        }
    }
    return lines;
}

#include "tests/support/ReportLines.h"

#include <fstream>

std::vector<std::wstring> reportLines(const std::string& path, std::size_t step)
{
    std::ifstream file(path, std::ios::binary);
    std::vector<std::wstring> lines;
    std::size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        line.erase(line.find_last_not_of("\r\n") + 1);
        if (!line.empty() && number++ % step == 0) {
            std::wstring& text = lines.emplace_back();
            for (const char byte : line) {
                text.push_back(static_cast<unsigned char>(byte));
            }
        }
    }
    return lines;
}

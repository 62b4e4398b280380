#include "cli/ReportPrefix.h"

namespace {

bool takeWord(std::wstring_view& line, std::wstring_view word)
{
    if (!line.starts_with(word) || line.size() == word.size() || line[word.size()] != L' ') {
        return false;
    }
    line.remove_prefix(word.size());
    while (line.starts_with(L' ')) {
        line.remove_prefix(1);
    }
    return true;
}

} // namespace

std::wstring_view withoutReportPrefix(std::wstring_view line)
{
    if (takeWord(line, L"METAR") || takeWord(line, L"SPECI")) {
        takeWord(line, L"COR");
    }
    return line;
}

#include "weather/store/TafManager.h"

#include "weather/store/TextPieces.h"

#include <utility>

namespace aviation::weather {

namespace {

constexpr std::wstring_view kHead = L"TAF";
constexpr std::wstring_view kEmptyLine = L"\n\n";
constexpr std::size_t kHeadLength = 4; ///< with its blank
constexpr std::size_t kKeyLength = 4;
constexpr std::size_t kShortestTaf = 10;

} // namespace

std::vector<std::wstring_view> splitTafs(std::wstring_view text)
{
    std::vector<std::wstring_view> reports;
    std::size_t start = text.find(kHead);
    while (start != std::wstring_view::npos) {
        const std::size_t end = text.find(kEmptyLine, start);
        if (end == std::wstring_view::npos) {
            break;
        }
        reports.push_back(text.substr(start, end - start));
        start = text.find(kHead, end + kEmptyLine.size());
    }
    return reports;
}

void TafManager::add(std::wstring_view report)
{
    std::wstring taf = withoutLineEnds(report);
    if (taf.size() < kShortestTaf) {
        return;
    }
    taf.erase(0, kHeadLength);
    std::wstring key = taf.substr(0, kKeyLength);
    m_tafs.push_back(std::move(taf));
    m_index.insert_or_assign(std::move(key), m_tafs.size());
}

std::wstring TafManager::taf(std::wstring_view icao) const
{
    const auto found = m_index.find(icao);
    return found == m_index.end() ? std::wstring() : m_tafs[found->second - 1];
}

} // namespace aviation::weather

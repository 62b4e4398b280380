#include "aviation/GribPatterns.h"
#include "aviation/MetarPatterns.h"
#include "aviation/SynopPatterns.h"

#include <cstdlib>
#include <memory>
#include <string>

using namespace aviation::weather;

namespace {

void require(bool held)
{
    if (!held) {
        std::abort();
    }
}

/// A view whose memory ends where the text ends, so that the address sanitizer sees one character
/// too many.
struct TightCopy
{
    explicit TightCopy(std::wstring_view text)
        : memory(std::make_unique<wchar_t[]>(text.size()))
        , view(memory.get(), text.size())
    {
        text.copy(memory.get(), text.size());
    }
    std::unique_ptr<wchar_t[]> memory;
    std::wstring_view view;
};

template <class Result>
void checkGroups(const Result& match, std::wstring_view text, std::size_t groups)
{
    for (std::size_t at = 0; at < groups; ++at) {
        const std::wstring_view group = match[at];
        require(group.data() == nullptr
                || (group.data() >= text.data()
                    && group.data() + group.size() <= text.data() + text.size()));
    }
}

template <class P>
void checkFront(std::wstring_view text, std::wstring_view longer)
{
    const auto match = P::matchFront(text);
    checkGroups(match, text, P::kGroups);
    require(!match || match[0].data() == text.data());
    // What the match took matches by itself.
    if (match) {
        const auto again = P::matchFront(text.substr(0, match.length()));
        require(again && again.length() == match.length());
    }
    const auto copy = P::matchFront(longer.substr(0, text.size()));
    require(static_cast<bool>(copy) == static_cast<bool>(match) && copy.length() == match.length());
}

template <class P>
void checkSearch(std::wstring_view text)
{
    const auto match = P::Search(text);
    checkGroups(match, text, P::kGroups);
    if (match) {
        const auto offset = static_cast<std::size_t>(match[0].data() - text.data());
        require(!P::Search(text.substr(0, offset + match.length() - 1)));
    }
}

} // namespace

/// Groups lie within the text, a match doesn't depend on what stands after it, and no character
/// after the end is looked at.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::wstring longer = std::wstring(data, data + size) + L"99/ 12345";
    const TightCopy text(std::wstring_view(longer).substr(0, size));
    const auto front = [&]<class P>() {
        checkFront<P>(text.view, longer);
    };
    const auto search = [&]<class P>() {
        checkSearch<P>(text.view);
    };
    metarpatterns::FrontPatterns::forEach(front);
    metarpatterns::SearchedPatterns::forEach(search);
    synoppatterns::AllSynopPatterns::forEach(front);
    gribpatterns::AllGribPatterns::forEach(front);
    return 0;
}

#include "aviation/AircraftLoad.h"

#include <array>
#include <cstddef>

namespace aviation::structs {

std::wstring fuelTankName(std::int32_t id)
{
    static constexpr std::array<const wchar_t*, 11> kNames{
        L"Left Tip",   L"Left Aux",  L"Left Main", L"Center",    L"Center2",  L"Center3",
        L"Right Main", L"Right Aux", L"Right Tip", L"External1", L"External2"};
    if (id < 1 || id > static_cast<std::int32_t>(kNames.size())) {
        return {};
    }
    return kNames[static_cast<std::size_t>(id) - 1];
}

} // namespace aviation::structs

#pragma once

#include <string_view>

/// A METAR line without the words "METAR" or "SPECI" and "COR" that bulletins begin it with: the
/// decoder reads from the station on.
std::wstring_view withoutReportPrefix(std::wstring_view line);

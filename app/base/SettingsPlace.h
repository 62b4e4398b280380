#pragma once

#include <QString>

/// Where the settings of the window program lie. Main thread.
namespace settingsplace {

/// Name of the main settings file; always in the current folder.
inline constexpr char kFileName[] = "cirrilon.ini";

/// Makes the folder of the settings the current one: the current folder itself if a settings file
/// lies there or `portable` asks for it, otherwise the user's configuration folder, which is made.
/// So a start from a menu or from "/" finds the same settings each time. False if that folder can't
/// be made or entered; the current one then stays.
[[nodiscard]] bool enterFolder(bool portable);

} // namespace settingsplace

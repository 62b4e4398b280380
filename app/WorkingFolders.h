#pragma once

#include "app/base/Reporting.h"

class Settings;

/// The folders that the program works in, as the settings name them.
namespace workingfolders {

/// Creates those that are missing. False for one that can't be created; those that come after it in
/// the list aren't looked at then.
bool create(const Settings& settings, const LogFunction& log);

/// Removes the files that earlier runs left in the temporary folder.
void sweepTemporary(const Settings& settings, const LogFunction& log);

} // namespace workingfolders

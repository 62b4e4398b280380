#pragma once

#include "app/base/Reporting.h"
#include "aviation/Metar.h"

#include <QString>

#include <vector>

class UserDialogs;

/// Writes the texts of all METARs, a line each, to "metar.txt" in a folder, and says how it went.
void exportMetars(const QString& folder, const std::vector<aviation::weather::Metar>& metars,
                  const LogFunction& log, UserDialogs& dialogs);

#pragma once

#include "app/base/Reporting.h"
#include "aviation/Metar.h"

#include <QString>

#include <vector>

/// Writes the texts of all METARs, a line each, to "metar.txt" in a folder, and logs how it went.
/// Empty, or why the file couldn't be written.
QString exportMetars(const QString& folder, const std::vector<aviation::weather::Metar>& metars,
                     const LogFunction& log);

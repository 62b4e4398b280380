#pragma once

#include <QString>

#include <vector>

/// The result of saveXPlaneFiles.
struct XPlaneFilesResult
{
    bool written = false;
    QString failedFile; ///< the first file that couldn't be written, with its path
    QString error;      ///< the reason
};

/// Writes METAR.rwx and WINDS.rwx, the real weather files of X-Plane, into a folder: each entry and
/// a line feed. Each file is complete or left as it was.
XPlaneFilesResult saveXPlaneFiles(const QString& folder, const std::vector<QString>& metarLines,
                                  const std::vector<QString>& windLines);

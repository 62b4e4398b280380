#include "app/jobs/XPlaneFiles.h"

#include "app/base/WriteFault.h"

#include <QSaveFile>

namespace {

bool writeLines(const QString& name, const std::vector<QString>& lines, XPlaneFilesResult& result)
{
    QSaveFile file(name);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text)) {
        for (const QString& line : lines) {
            file.write(line.toUtf8());
            file.write("\n");
        }
        if (file.flush() && file.commit()) {
            return true;
        }
    }
    result.failedFile = name;
    result.error = writeFault(file);
    return false;
}

} // namespace

XPlaneFilesResult saveXPlaneFiles(const QString& folder, const std::vector<QString>& metarLines,
                                  const std::vector<QString>& windLines)
{
    XPlaneFilesResult result;
    result.written = writeLines(folder + QStringLiteral("/METAR.rwx"), metarLines, result)
                     && writeLines(folder + QStringLiteral("/WINDS.rwx"), windLines, result);
    return result;
}

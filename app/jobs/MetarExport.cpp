#include "app/jobs/MetarExport.h"

#include "app/base/LogLevel.h"

#include <QSaveFile>

using aviation::weather::Metar;

namespace {

bool writeMetars(const QString& name, const std::vector<Metar>& metars, QString& error)
{
    QSaveFile file(name);
    bool good = file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    for (const Metar& metar : metars) {
        const QByteArray line = QString::fromStdWString(metar.reportText()).toUtf8() + '\n';
        good = good && file.write(line) == line.size();
    }
    good = good && file.commit();
    error = file.errorString();
    return good;
}

} // namespace

QString exportMetars(const QString& folder, const std::vector<Metar>& metars,
                     const LogFunction& log)
{
    const QString name = folder + QStringLiteral("/metar.txt");
    QString error;
    if (writeMetars(name, metars, error)) {
        log(QStringLiteral("(Controller Weather) - Export Metar, file written ")
                + name.toHtmlEscaped(),
            loglevel::kNotification);
        return {};
    }
    log(QStringLiteral("(Controller Weather) - Export Metar, Can not open file. ")
            + error.toHtmlEscaped(),
        loglevel::kError);
    return error;
}

#include "app/jobs/SimulatorStations.h"

#include <QDir>
#include <QFile>

SimulatorStations readSimulatorStations(const QString& simPath)
{
    constexpr int kIcaoLength = 4;
    constexpr qint64 kLargest = 4LL * 1024 * 1024; // the world has some ten thousand stations
    const QString folder = simPath + QStringLiteral("/Weather/");
    QFile file(folder + QStringLiteral("wxstationlist.bin"));
    SimulatorStations stations;
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        stations.errors << QStringLiteral("(WeatherWorker)  - FS Station File: ")
                               + file.errorString();
        if (simPath.isEmpty() || !QDir(simPath).exists()) {
            stations.errors << QStringLiteral("(WeatherWorker)  - Path to Sim not found: ")
                                   + simPath;
        }
        return stations;
    }
    const QString text = QString::fromLatin1(file.read(kLargest));
    for (int at = 0; at < text.size(); at += kIcaoLength) {
        stations.icaos.insert(text.mid(at, kIcaoLength));
        ++stations.count;
    }
    return stations;
}

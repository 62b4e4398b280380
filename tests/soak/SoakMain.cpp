#include "app/base/Platform.h"
#include "tests/soak/ProcessSize.h"
#include "tests/soak/SoakRun.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

/// cirrilon-soak [CYCLES [SEED [calm]]]; "calm" leaves the faults out. The exit status is 0 when no
/// rule was broken.
int main(int argc, char** argv)
{
    platform::keepLargeBuffersApart();
    const QTemporaryDir folder;
    // Settings and documents of the user stay out of it.
    qputenv("HOME", QFile::encodeName(folder.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    SoakOptions options;
    options.folder = folder.path();
    options.cycles = arguments.value(1, QStringLiteral("1000")).toInt();
    options.seed = arguments.value(2, QStringLiteral("1")).toUInt();
    options.faults = arguments.value(3) != QLatin1String("calm");
    SoakRun run(options);
    const int broken = run.run();
    std::printf("seed %u: %d rules broken\n", options.seed, broken);
    return broken == 0 ? 0 : 1;
}

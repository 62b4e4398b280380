#include "app/base/ProgramArguments.h"

ProgramArguments ProgramArguments::read(const QStringList& arguments)
{
    ProgramArguments result;
    for (const QString& argument : arguments) {
        if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            result.help = true;
        } else if (argument == QLatin1String("--version")) {
            result.version = true;
        } else if (argument == QLatin1String("--portable")) {
            result.portable = true;
        } else if (result.unknown.isEmpty()) {
            result.unknown = argument;
        }
    }
    return result;
}

QString ProgramArguments::helpText()
{
    return QStringLiteral("Usage: cirrilon [--portable]\n"
                          "Sets real weather in a flight simulator.\n"
                          "\n"
                          "  --portable  settings in the current folder (used as well if "
                          "\"cirrilon.ini\" lies there);\n"
                          "              otherwise in the user's configuration folder\n"
                          "  --version   prints the version\n"
                          "  --help      prints this\n"
                          "\n"
                          "Options of Qt such as -platform and -style are taken as well.\n");
}

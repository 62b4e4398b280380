#pragma once

#include "cli/Cli.h"

#include <QString>
#include <QStringList>

#include <sstream>
#include <string>

struct CliResult
{
    int status;
    std::string out;
    std::string err;
};

/// The headless program in this process.
inline CliResult runCli(const QStringList& arguments, const std::string& input = {})
{
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    const int status = runCli(arguments, in, out, err);
    return {status, out.str(), err.str()};
}

inline QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

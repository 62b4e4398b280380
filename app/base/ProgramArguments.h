#pragma once

#include <QString>
#include <QStringList>

/// What the window program was asked for at its start.
struct ProgramArguments
{
    bool help = false;
    bool version = false;
    bool portable = false; ///< the settings lie in the current folder, wherever that is
    QString unknown;       ///< the first argument that means nothing; empty without one

    /// `arguments` without the program's own name.
    static ProgramArguments read(const QStringList& arguments);
    static QString helpText();
};

#pragma once

#include <QByteArray>

/// Makes the built-in files (":/files/airports", ":/files/wxstations") readable; a static library's
/// resources stay hidden until somebody asks. May be called more than once.
void initCirrilonResources();

/// The contents of a built-in file, empty if there is none of that name.
QByteArray builtInFile(const char* name);

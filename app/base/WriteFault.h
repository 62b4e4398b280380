#pragma once

#include <QFileDevice>
#include <QString>

/// Why a file couldn't be opened or written, before it is closed. A write that was cut short, as on
/// a full disk, knows no reason; the next try has it.
inline QString writeFault(QFileDevice& file)
{
    if (file.isOpen()) {
        file.flush();
    }
    return file.errorString();
}

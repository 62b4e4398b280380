#pragma once

#include <QLabel>
#include <QString>
#include <QWidget>

/// The text of the first NoteLabel below a window, or of the one that is handed in.
inline QString noteIn(const QWidget& window)
{
    return window.findChild<QLabel*>(QStringLiteral("label_note"))->text();
}

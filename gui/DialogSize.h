#pragma once

#include <QSize>

class QDialog;

/// Gives a dialog its first size, or less on a screen that is too small for it.
void resizeToScreen(QDialog& dialog, const QSize& wanted);

#pragma once

#include <QSize>

class QDialog;

/// Gives a dialog its first size, or less on a screen that is too small for it.
void ResizeToScreen(QDialog& dialog, const QSize& wanted);

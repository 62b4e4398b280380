#include "gui/DialogSize.h"

#include <QDialog>
#include <QGuiApplication>
#include <QScreen>

void resizeToScreen(QDialog& dialog, const QSize& wanted)
{
    constexpr int kFrame = 40; // title bar and borders of the window
    const QScreen* screen =
        dialog.parentWidget() != nullptr ? dialog.parentWidget()->screen() : dialog.screen();
    const QSize free = screen != nullptr ? screen->availableSize() : wanted;
    dialog.resize(wanted.boundedTo(free - QSize(kFrame, kFrame)));
}

#include "gui/PlainButtons.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDialogButtonBox>
#include <QIcon>

void usePlainButtons(QDialog& dialog)
{
    for (const QDialogButtonBox* box : dialog.findChildren<QDialogButtonBox*>()) {
        for (QAbstractButton* button : box->buttons()) {
            button->setIcon(QIcon());
        }
    }
}

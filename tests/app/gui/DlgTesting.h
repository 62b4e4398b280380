#pragma once

#include "gui/NoteLabel.h"
#include "tests/support/NoteText.h"
#include "tests/support/Text.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSet>
#include <QStringList>
#include <QTextEdit>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

/// True for what the user can operate by itself, not for the inside of such a control.
inline bool isControl(const QWidget& widget)
{
    const auto isOneOf = [](const QObject* object, std::initializer_list<const char*> kinds) {
        return std::any_of(kinds.begin(), kinds.end(), [object](const char* kind) {
            return object != nullptr && object->inherits(kind);
        });
    };
    return isOneOf(&widget, {"QAbstractButton", "QAbstractSpinBox", "QComboBox", "QLineEdit",
                             "QAbstractItemView", "QTextEdit", "QPlainTextEdit", "QProgressBar"})
           && !isOneOf(&widget, {"QHeaderView", "QComboBoxListView"})
           && !isOneOf(widget.parent(), {"QAbstractSpinBox", "QAbstractItemView", "QLineEdit"})
           && widget.objectName() != "qt_spinbox_lineedit"_q;
}

/// The controls below a window that a screen reader has no name for.
inline QStringList namelessControls(const QWidget& window)
{
    QStringList nameless;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        const bool named =
            !widget->accessibleName().isEmpty() || (button != nullptr && !button->text().isEmpty());
        if (isControl(*widget) && !named) {
            nameless << QString::fromLatin1(widget->metaObject()->className()) + QLatin1Char(' ')
                            + widget->objectName();
        }
    }
    return nameless;
}

/// The text of a dialog's own note, not of those within its controls.
inline QString noteOf(const QWidget& dialog)
{
    return noteIn(*dialog.findChild<NoteLabel*>(QString(), Qt::FindDirectChildrenOnly));
}

/// Clicks the button of the message box that comes up next, by its text without the mnemonic. A box
/// without it is closed, so that a test fails and doesn't hang.
inline void answerNextBox(const QString& text)
{
    QTimer::singleShot(0, qApp, [text] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        for (QAbstractButton* button : box->buttons()) {
            if (button->text().remove(QLatin1Char('&')) == text) {
                button->click();
                return;
            }
        }
        ADD_FAILURE() << "no button " << text.toStdString();
        box->reject();
    });
}

/// The letter after the mark of a mnemonic, in lower case; null without one.
inline QChar mnemonic(const QString& text)
{
    const int mark = text.indexOf(QLatin1Char('&'));
    return mark >= 0 && mark + 1 < text.size() ? text.at(mark + 1).toLower() : QChar();
}

/// The texts below a window whose mnemonic another text, or one of `taken`, has as well.
inline QStringList clashingMnemonics(const QWidget& window, QSet<QChar> taken = {})
{
    QStringList texts;
    for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        texts << button->text();
    }
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        texts << (label->buddy() != nullptr ? label->text() : QString());
    }
    QStringList clashing;
    for (const QString& text : texts) {
        const QChar letter = mnemonic(text);
        if (!letter.isNull() && taken.contains(letter)) {
            clashing << text;
        }
        taken.insert(letter);
    }
    return clashing;
}

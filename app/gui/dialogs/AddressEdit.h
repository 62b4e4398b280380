#pragma once

#include "app/download/ConnectionProbe.h"

#include <QString>
#include <QWidget>

#include <functional>

class NoteLabel;
class QLabel;
class QLineEdit;
class QPushButton;

/// An address on the web with a button that tests it in the background. Below it stand what the
/// address becomes when its date tokens are filled in, and what the test found.
class AddressEdit : public QWidget
{
    Q_OBJECT
public:
    /// `name` says whose address it is, for screen readers.
    AddressEdit(const QString& name, const NetworkFactory& network, QWidget* parent = nullptr);

    void setAddress(const QString& address);
    QString address() const;
    void setReadOnly(bool readOnly);
    /// What the button fetches instead of the address itself.
    void setTestAddress(std::function<QString()> address) { m_testAddress = std::move(address); }
    /// Why the address can't be taken; empty for a good one and for none.
    QString fault() const;
    QLineEdit* lineEdit() const { return m_edit; }

Q_SIGNALS:
    void addressChanged();
    void sigTested(bool ok);

private:
    void onTextChanged();
    void test();
    void onTested(bool ok, const QString& text);

    QLineEdit* m_edit;
    QPushButton* m_button;
    QLabel* m_preview;
    NoteLabel* m_note;
    ConnectionProbe* m_probe;
    std::function<QString()> m_testAddress;
};

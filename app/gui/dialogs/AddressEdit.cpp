#include "app/gui/dialogs/AddressEdit.h"

#include "app/base/UrlTemplate.h"
#include "gui/Icons.h"
#include "gui/NoteLabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

AddressEdit::AddressEdit(const QString& name, const NetworkFactory& network, QWidget* parent)
    : QWidget(parent)
    , m_edit(new QLineEdit(this))
    , m_button(new QPushButton(Icons::appIcon(Icons::Name::TestConnection), tr("Test"), this))
    , m_preview(new QLabel(this))
    , m_note(new NoteLabel(this))
    , m_probe(new ConnectionProbe(network, this))
{
    setFocusProxy(m_edit);
    m_edit->setAccessibleName(name);
    m_button->setAccessibleName(tr("Test the address: %1").arg(name));
    m_button->setAutoDefault(false);
    m_preview->setTextFormat(Qt::PlainText);
    m_preview->setWordWrap(true);
    m_preview->hide();
    auto* row = new QHBoxLayout;
    row->addWidget(m_edit, 1);
    row->addWidget(m_button);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(row);
    column->addWidget(m_preview);
    column->addWidget(m_note);
    connect(m_edit, &QLineEdit::textChanged, this, &AddressEdit::onTextChanged);
    connect(m_button, &QPushButton::clicked, this, &AddressEdit::test);
    connect(m_probe, &ConnectionProbe::sigFinished, this, &AddressEdit::onTested);
    onTextChanged();
}

void AddressEdit::setAddress(const QString& address)
{
    m_edit->setText(address);
    m_edit->setCursorPosition(0);
}

QString AddressEdit::address() const
{
    return m_edit->text().trimmed();
}

void AddressEdit::setReadOnly(bool readOnly)
{
    m_edit->setReadOnly(readOnly);
}

QString AddressEdit::fault() const
{
    const bool good = address().isEmpty() || isWebAddress(QUrl(expandUrlTemplate(address())));
    return good ? QString()
                : tr("An address begins with http:// or https:// and the name of a server.");
}

void AddressEdit::onTextChanged()
{
    const QString expanded = expandUrlTemplate(address());
    m_preview->setText(tr("Now: %1").arg(expanded));
    m_preview->setVisible(expanded != address());
    m_button->setEnabled(!address().isEmpty());
    m_probe->cancel();
    m_note->setNote(NoteLabel::Kind::Warning, fault());
    Q_EMIT addressChanged();
}

void AddressEdit::test()
{
    m_note->setNote(NoteLabel::Kind::Info, tr("Testing..."));
    m_probe->testAddress(QUrl(m_testAddress ? m_testAddress() : expandUrlTemplate(address())));
}

void AddressEdit::onTested(bool ok, const QString& text)
{
    m_note->setNote(ok ? NoteLabel::Kind::Good : NoteLabel::Kind::Bad, text);
    Q_EMIT sigTested(ok);
}

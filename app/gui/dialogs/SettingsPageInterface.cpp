#include "app/gui/dialogs/SettingsPageInterface.h"

#include "aviation/FsId.h"
#include "gui/Icons.h"
#include "gui/NoteLabel.h"
#include "sim/OwnAddress.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHostAddress>
#include <QLabel>
#include <QLineEdit>
#include <QNetworkInterface>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

namespace {

constexpr int kHighestPort = 65535;

QStringList ownAddresses()
{
    QStringList list;
    for (const QHostAddress& address : QNetworkInterface::allAddresses()) {
        if (address.protocol() == QAbstractSocket::IPv4Protocol) {
            list << address.toString();
        }
    }
    return list;
}

} // namespace

bool isIpAddress(const QString& text)
{
    QHostAddress address;
    const bool parses = address.setAddress(text);
    // Short forms such as "127.1" would parse as well.
    return parses
           && (address.protocol() == QAbstractSocket::IPv6Protocol
               || text.count(QLatin1Char('.')) == 3);
}

SettingsPage::Choices interfaceChoices()
{
    return {{SettingsPageInterface::tr("Automatic"), aviation::interfaceid::kAuto},
            {QStringLiteral("FSUIPC"), aviation::interfaceid::kFsuipc},
            {QStringLiteral("SimConnect"), aviation::interfaceid::kSimConnect},
            {SettingsPageInterface::tr("FSUIPC and SimConnect"),
             aviation::interfaceid::kFsuipcSimConnect},
            {SettingsPageInterface::tr("Bridge or X-Plane plug-in (network)"),
             aviation::interfaceid::kBridge}};
}

SettingsPageInterface::SettingsPageInterface(const NetworkFactory& network, QWidget* parent)
    : SettingsPage(parent)
    , m_probe(new ConnectionProbe(network, this))
{
    buildInterface();
    buildServer();
    buildTest();
    buildPolling();
}

bool SettingsPageInterface::usesBridge() const
{
    return m_type->currentData().toInt() == aviation::interfaceid::kBridge;
}

void SettingsPageInterface::buildInterface()
{
    QFormLayout* form = addGroup(tr("Interface"));
    m_type = addChoice(form, tr("&Interface:"), interfaceChoices(), option::interfaceType);
}

void SettingsPageInterface::buildServer()
{
    QFormLayout* form = addGroup(tr("Bridge server"));
    m_address = addText(form, tr("&Server's IP address:"), option::serverIp);
    addRule(m_address, [this] {
        const bool good = !usesBridge() || isIpAddress(m_address->text().trimmed());
        return good ? QString() : tr("The server's address is no IP address.");
    });
    m_port = addNumber(form, tr("&Port:"), {1, kHighestPort, 1, {}, {}}, option::serverPort);
    m_ownAddress = new QComboBox(form->parentWidget());
    m_ownAddress->setObjectName(QLatin1String(option::myIp.key));
    m_ownAddress->setEditable(true);
    m_ownAddress->addItems(ownAddresses());
    m_ownAddress->lineEdit()->setAccessibleName(tr("Own IP address"));
    addLabelled(form, tr("&Own IP address:"), m_ownAddress);
    bindText(
        option::myIp, [this] { return m_ownAddress->currentText().trimmed(); },
        [this](const QString& text) { m_ownAddress->setEditText(text); });
    addRule(m_ownAddress, [this] {
        const QString text = m_ownAddress->currentText().trimmed();
        const bool good = !usesBridge() || text.isEmpty() || isIpAddress(text);
        return good ? QString() : tr("The own address is no IP address.");
    });
    connect(m_ownAddress, &QComboBox::editTextChanged, this, &SettingsPage::sigEdited);
    m_proposal = new QLabel(form->parentWidget());
    m_proposal->setObjectName(QStringLiteral("label_ownAddress"));
    m_proposal->setTextFormat(Qt::PlainText);
    m_proposal->setWordWrap(true);
    m_proposal->hide();
    form->addRow(m_proposal);
    connect(m_address, &QLineEdit::textChanged, this, &SettingsPageInterface::proposeOwnAddress);
    connect(m_ownAddress, &QComboBox::editTextChanged, this,
            &SettingsPageInterface::proposeOwnAddress);
    addHint(form, tr("The server sends the aircraft's data to the own address. Without one the "
                     "data is asked for."));
}

/// The address that reaches the server stands first in the list; it is said where the field holds
/// one that the server can't send to.
void SettingsPageInterface::proposeOwnAddress()
{
    const QString server = m_address->text().trimmed();
    const QString reaching = isIpAddress(server) ? ownaddress::reaching(server) : QString();
    const int row = m_ownAddress->findText(reaching);
    if (!reaching.isEmpty() && row != 0) {
        const QSignalBlocker quiet(m_ownAddress); // the text of the field stays
        const QString text = m_ownAddress->currentText();
        if (row > 0) {
            m_ownAddress->removeItem(row);
        }
        m_ownAddress->insertItem(0, reaching);
        m_ownAddress->setEditText(text);
    }
    const QHostAddress chosen(m_ownAddress->currentText().trimmed());
    const bool unreachable = !reaching.isEmpty() && chosen.isLoopback();
    m_proposal->setText(tr("The server can't send to %1. This computer reaches it by %2, which is "
                           "used instead.")
                            .arg(chosen.toString(), reaching));
    m_proposal->setVisible(unreachable);
}

void SettingsPageInterface::buildTest()
{
    QFormLayout* form = addGroup(tr("Test"));
    auto* button = new QPushButton(Icons::appIcon(Icons::Name::TestConnection),
                                   tr("&Test the connection"), form->parentWidget());
    button->setObjectName(QStringLiteral("button_testConnection"));
    button->setAutoDefault(false);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_note = new NoteLabel(form->parentWidget());
    form->addRow(button);
    form->addRow(m_note);
    connect(button, &QPushButton::clicked, this, &SettingsPageInterface::test);
    connect(m_probe, &ConnectionProbe::sigFinished, this, &SettingsPageInterface::onTested);
}

void SettingsPageInterface::buildPolling()
{
    QFormLayout* form = addGroup(tr("Reading the aircraft's data"));
    const QString milliseconds = tr("ms", "milliseconds");
    auto* fast = addNumber(form, tr("Near the &ground, every:"), {50, 10000, 50, milliseconds, {}},
                           option::serverUpdateTimeMin);
    auto* slow = addNumber(form, tr("Ot&herwise, every:"), {50, 10000, 100, milliseconds, {}},
                           option::serverUpdateTimeMax);
    addRule(slow, [fast, slow] {
        return fast->value() <= slow->value()
                   ? QString()
                   : tr("Near the ground the data is read more often than otherwise.");
    });
}

void SettingsPageInterface::test()
{
    if (!usesBridge()) {
        m_probe->cancel();
        m_note->setNote(NoteLabel::Kind::Info,
                        tr("This interface is tried when connecting; the log tells what was "
                           "found. Only the bridge can be tested here."));
        return;
    }
    const QString address = m_address->text().trimmed();
    if (!isIpAddress(address)) {
        onTested(false, tr("The server's address is no IP address."));
        return;
    }
    m_note->setNote(NoteLabel::Kind::Info, tr("Testing..."));
    m_probe->testBridge(address, m_port->value());
}

void SettingsPageInterface::onTested(bool ok, const QString& text)
{
    m_note->setNote(ok ? NoteLabel::Kind::Good : NoteLabel::Kind::Bad, text);
    Q_EMIT sigTested(ok);
}

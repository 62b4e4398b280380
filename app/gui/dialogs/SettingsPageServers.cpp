#include "app/gui/dialogs/SettingsPageServers.h"

#include "app/base/SettingsValues.h"
#include "app/gui/dialogs/AddressEdit.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>

#include <utility>

namespace {

QString withPath(QString base, const QString& path)
{
    while (base.endsWith(QLatin1Char('/'))) {
        base.chop(1);
    }
    return base + path;
}

} // namespace

SettingsPageServers::SettingsPageServers(const Settings& settings, NetworkFactory network,
                                         QWidget* parent)
    : SettingsPage(parent)
    , m_network(std::move(network))
{
    buildSource();
    buildServers(settings);
    buildExternal();
}

void SettingsPageServers::buildSource()
{
    QFormLayout* form = addGroup(tr("Reports"));
    m_source = addChoice(form, tr("&Source:"),
                         {{QStringLiteral("VATSIM"), weathersource::kVatsim},
                          {QStringLiteral("IVAO"), weathersource::kIvao},
                          {QStringLiteral("NOAA"), weathersource::kNoaa}},
                         option::weatherSource);
    m_type = addChoice(form, tr("Ser&ver:"),
                       {{tr("Automatic"), wxservertype::kAuto},
                        {tr("First server"), wxservertype::kFirst},
                        {tr("Second server"), wxservertype::kSecond},
                        {tr("External addresses"), wxservertype::kExternal}},
                       option::wxServerType);
}

QString SettingsPageServers::listPath() const
{
    switch (m_source->currentData().toInt()) {
    case weathersource::kVatsim:
        return QStringLiteral("/weather_vatsim.gz");
    case weathersource::kIvao:
        return QStringLiteral("/weather_ivao.gz");
    default:
        return QStringLiteral("/weather_noaa.gz");
    }
}

void SettingsPageServers::buildServers(const Settings& settings)
{
    QFormLayout* form = addGroup(tr("Weather servers"));
    const QVector<QPair<QString, QString>> servers{{tr("&First server:"), settings.serverOne()},
                                                   {tr("S&econd server:"), settings.serverTwo()}};
    for (const auto& [label, base] : servers) {
        auto* edit = new AddressEdit(spokenName(label), m_network, form->parentWidget());
        edit->setReadOnly(true);
        edit->setAddress(base);
        edit->setTestAddress([this, url = base] { return withPath(url, listPath()); });
        addLabelled(form, label, edit);
    }
    addHint(form, tr("The test fetches the list of the chosen source. The addresses are set by the "
                     "keys url/wxdata1 and url/wxdata2 of the settings file."));
}

void SettingsPageServers::buildExternal()
{
    QFormLayout* form = addGroup(tr("External addresses"));
    m_metar = addAddress(form, tr("&METAR:"), option::urlExternMetar);
    m_synop = addAddress(form, tr("S&YNOP:"), option::urlExternSynop);
    m_grib = addAddress(form, tr("&Upper air (GRIB):"), option::urlExternGrib);
    addHint(form, tr("The present UTC date and time stand for: %d day, %m month, %Y year, %y year "
                     "of two digits, %h hour, %i minute, %s second."));
    addHint(form, tr("If there is a SYNOP address, only its reports are used. Upper-air files need "
                     "the program wgrib2."));
    addRule(m_metar, [this] {
        const bool missing =
            usesExternal() && m_metar->address().isEmpty() && m_synop->address().isEmpty();
        return missing ? tr("The external server needs a METAR or a SYNOP address.") : QString();
    });
    const auto enable = [this] {
        for (AddressEdit* edit : {m_metar, m_synop, m_grib}) {
            edit->setEnabled(usesExternal());
        }
    };
    connect(m_type, QOverload<int>::of(&QComboBox::currentIndexChanged), this, enable);
    enable();
}

AddressEdit* SettingsPageServers::addAddress(QFormLayout* form, const QString& label,
                                             const TextOption& option)
{
    auto* edit = new AddressEdit(spokenName(label), m_network, form->parentWidget());
    edit->setObjectName(QLatin1String(option.key));
    edit->lineEdit()->setPlaceholderText(QStringLiteral("https://"));
    addLabelled(form, label, edit);
    bindText(
        option, [edit] { return edit->address(); },
        [edit](const QString& text) { edit->setAddress(text); });
    addRule(edit, [this, edit] { return usesExternal() ? edit->fault() : QString(); });
    connect(edit, &AddressEdit::addressChanged, this, &SettingsPage::sigEdited);
    return edit;
}

bool SettingsPageServers::usesExternal() const
{
    return m_type->currentData().toInt() == wxservertype::kExternal;
}

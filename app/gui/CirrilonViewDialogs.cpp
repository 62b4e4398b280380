#include "app/Controller.h"
#include "app/gui/CirrilonView.h"
#include "app/gui/RadarLink.h"
#include "app/gui/dialogs/BasicSettings.h"
#include "app/gui/dialogs/DlgAbout.h"
#include "app/gui/dialogs/DlgAirportList.h"
#include "app/gui/dialogs/DlgSettings.h"
#include "maps/gui/WidgetRadar.h"

#include <type_traits>

using Id = MainActions::Id;

void CirrilonView::addSubWindows()
{
    using Kind = SubWindows::Kind;
    const auto add = [this](Id id, Kind kind, const SubWindows::Make& make) {
        m_windows.add(id, actions().action(id), kind, make);
    };
    const auto savesSettings = [this](auto* dialog) {
        using Dialog = std::remove_pointer_t<decltype(dialog)>;
        connect(dialog, &Dialog::sigSettingsChanged, this, &CirrilonView::settingsChanged);
        return dialog;
    };
    add(Id::About, Kind::Dialog, [this] { return new DlgAbout(this); });
    add(Id::Settings, Kind::Dialog,
        [=, this] { return savesSettings(new DlgSettings(m_settings, m_network, this)); });
    add(Id::BasicSettings, Kind::Dialog,
        [=, this] { return savesSettings(new BasicSettings(m_settings, m_network, this)); });
    add(Id::AirportList, Kind::Dialog, [this] {
        auto* dialog = new DlgAirportList(m_settings.workFolder(), this);
        connect(dialog, &DlgAirportList::sigAirportsChanged, m_controller.get(),
                &Controller::onAirportListChanged);
        return dialog;
    });
    add(Id::WeatherRadar, Kind::Beside, [this] {
        auto* radar = new WidgetRadar(this);
        connectRadar(*radar, *m_controller);
        return radar;
    });
}

void CirrilonView::OnDlgAbout()
{
    m_windows.open(Id::About);
}

void CirrilonView::OnOpenOptionDlg()
{
    m_windows.open(Id::Settings);
}

void CirrilonView::OnOpenBasicSettings()
{
    m_windows.open(Id::BasicSettings);
}

void CirrilonView::OnDialogAirportList()
{
    m_windows.open(Id::AirportList);
}

void CirrilonView::OnTestFunction()
{
    m_windows.open(Id::WeatherRadar);
}

void CirrilonView::settingsChanged()
{
    saveSettings(); // not only at the end, so that they outlive a crash
    updateSettingsViews();
}

#include "app/Controller.h"
#include "app/gui/CirrilonView.h"
#include "app/gui/RadarLink.h"
#include "app/gui/WidgetRadar.h"
#include "app/gui/dialogs/BasicSettings.h"
#include "app/gui/dialogs/DlgAbout.h"
#include "app/gui/dialogs/DlgAirportList.h"
#include "app/gui/dialogs/DlgSettings.h"

// The dialogs and windows that the window opens. None is waited for, so the program can end below
// them.

namespace {

void Open(QDialog* dialog)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->open();
}

} // namespace

void CirrilonView::OnDlgAbout()
{
    Open(new DlgAbout(this));
}

void CirrilonView::OnOpenOptionDlg()
{
    auto* dialog = new DlgSettings(m_settings, m_network, this);
    connect(dialog, &DlgSettings::sigSettingsChanged, this, &CirrilonView::settingsChanged);
    Open(dialog);
}

void CirrilonView::OnOpenBasicSettings()
{
    auto* dialog = new BasicSettings(m_settings, m_network, this);
    connect(dialog, &BasicSettings::sigSettingsChanged, this, &CirrilonView::settingsChanged);
    Open(dialog);
}

void CirrilonView::OnDialogAirportList()
{
    auto* dialog = new DlgAirportList(m_settings.workFolder(), this);
    connect(dialog, &DlgAirportList::sigAirportsChanged, m_controller.get(),
            &Controller::OnAirportListChanged);
    Open(dialog);
}

void CirrilonView::OnTestFunction()
{
    if (m_radar == nullptr) {
        m_radar = new WidgetRadar(this);
        connectRadar(*m_radar, *m_controller);
    }
    m_radar->show();
    m_radar->raise();
    m_radar->activateWindow();
}

void CirrilonView::settingsChanged()
{
    saveSettings(); // not only at the end, so that they outlive a crash
    updateSettingsViews();
}

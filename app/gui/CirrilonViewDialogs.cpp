#include "app/Controller.h"
#include "app/base/IniFile.h"
#include "app/base/LogLevel.h"
#include "app/gui/CirrilonView.h"
#include "app/gui/RadarLink.h"
#include "app/gui/SupportReport.h"
#include "app/gui/TrayIcon.h"
#include "app/gui/dialogs/BasicSettings.h"
#include "app/gui/dialogs/DlgAbout.h"
#include "app/gui/dialogs/DlgAirportList.h"
#include "app/gui/dialogs/DlgSettings.h"
#include "maps/gui/WidgetRadar.h"
#include "sim/ConnectWorker.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QSaveFile>

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

void CirrilonView::sayHowSettingsWereRead(bool folderFailed)
{
    if (folderFailed) {
        m_controller->OnDebugString(
            QStringLiteral("(Main) - can not make the folder of the settings"), loglevel::kWarning);
        showNotice(Notice::Settings,
                   tr("The folder of the settings can't be made, so they are kept in %1.")
                       .arg(QDir::toNativeSeparators(QDir::currentPath())));
    }
    m_saver.replaceDamaged();
}

void CirrilonView::closeWithoutBoxes()
{
    m_mayAsk = false;
    rejectBox();
    close();
}

/// One that stands holds up what waits for its answer, such as the end of the program.
void CirrilonView::rejectBox()
{
    if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        box->reject();
    }
}

/// The session may go on after all, so the window closes only if it does already.
void CirrilonView::sessionEnds()
{
    saveSettings();
    if (m_closed) {
        rejectBox();
    }
}

void CirrilonView::comeUp()
{
    if (isHidden() || isMinimized()) {
        m_tray->showWindow();
    }
    raise();
    activateWindow();
}

void CirrilonView::OnSaveReport()
{
    auto* dialog =
        new QFileDialog(this, tr("Save report for support"), QDir::homePath(), tr("Text (*.txt)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    dialog->selectFile(QStringLiteral("cirrilon-report.txt"));
    connect(dialog, &QFileDialog::fileSelected, this, &CirrilonView::writeReport);
    dialog->open();
}

void CirrilonView::writeReport(const QString& file)
{
    IniFile saved;
    static_cast<void>(saved.read(m_settingsFile)); // without it, what holds now is enough
    constexpr bool kMain = true;
    const IniFile options = m_settings.mergedInto(saved, kMain);
    const ConnectWorker& worker = m_controller->connectWorker();
    const QString simulator =
        m_controller->IsConnected()
            ? QStringLiteral("%1 by %2").arg(worker.fsName(), worker.interfaceName())
            : QString();
    const QByteArray text =
        supportreport::text({simulator, options, m_log.path(), QDir::homePath()}).toUtf8();
    QSaveFile out(file);
    const bool written = out.open(QIODevice::WriteOnly | QIODevice::Text)
                         && out.write(text) == text.size() && out.commit();
    const QString shown = QDir::toNativeSeparators(file);
    if (written) {
        m_controller->OnDebugString(
            QStringLiteral("(Main) - report for support: %1").arg(shown.toHtmlEscaped()),
            loglevel::kNotification);
    } else {
        m_dialogs.warning(
            tr("Save report for support"),
            tr("The report can't be written to %1: %2").arg(shown, out.errorString()));
    }
}

#include "app/gui/dialogs/SettingsPagesPlain.h"

#include "app/base/LogLevel.h"
#include "app/base/SettingsValues.h"
#include "gui/NoteLabel.h"

#include <QCheckBox>
#include <QDir>
#include <QFormLayout>
#include <QSpinBox>

namespace {

constexpr auto kFolder = FolderEdit::Rule::Optional;

bool hasFolders(const QDir& folder, const char* first, const char* second)
{
    return folder.exists(QLatin1String(first)) && folder.exists(QLatin1String(second));
}

void addFlightPlanPaths(SettingsPage* page)
{
    QFormLayout* form = page->addGroup(SettingsPagesPlain::tr("Flight plans"));
    page->addFolder(form, QStringLiteral("&Prepar3D:"), kFolder, option::flightplanPathP3D);
    page->addFolder(form, QStringLiteral("FS&X:"), kFolder, option::flightplanPathFSX);
    page->addFolder(form, QStringLiteral("FS&2004:"), kFolder, option::flightplanPathFS9);
    page->addFolder(form, QStringLiteral("X-P&lane:"), kFolder, option::flightplanPathXPlane);
    page->addFolder(form, QStringLiteral("PM&DG:"), kFolder, option::exportPmdg);
    page->addFolder(form, QStringLiteral("Aerosoft &Airbus:"), kFolder,
                    option::exportAerosoftAirbus);
    page->addHint(form, SettingsPagesPlain::tr("{FS} stands for the simulator's main folder."));
    page->addText(form, SettingsPagesPlain::tr("Flight plan database &key:"),
                  option::flightplanDatabaseAuthKey);
}

} // namespace

QString simulatorFolderText(const QString& path)
{
    const QDir folder(path);
    if (path.isEmpty()) {
        return SettingsPagesPlain::tr(
            "Without a folder the simulator is taken to be on another computer.");
    }
    if (!folder.exists()) {
        return QString();
    }
    if (hasFolders(folder, "Output", "Resources")) {
        return SettingsPagesPlain::tr("It looks like the main folder of X-Plane.");
    }
    if (hasFolders(folder, "SimObjects", "Weather")) {
        return SettingsPagesPlain::tr("It looks like the main folder of FSX or Prepar3D.");
    }
    return SettingsPagesPlain::tr(
        "No simulator is recognised there. The main folder of X-Plane holds "
        "\"Output\" and \"Resources\", that of FSX and Prepar3D \"SimObjects\" and "
        "\"Weather\".");
}

void SettingsPagesPlain::addSimulator(SettingsPage* page)
{
    QFormLayout* form = page->addGroup(tr("Simulator"));
    auto* folder = page->addFolder(form, tr("&Main folder:"), kFolder, option::simPath);
    auto* note = new NoteLabel(form->parentWidget());
    form->addRow(note);
    const auto describe = [note](const QString& path) {
        note->setNote(NoteLabel::Kind::Info, simulatorFolderText(path));
    };
    QObject::connect(folder, &FolderEdit::folderChanged, note, describe);
    describe(QString());
}

SettingsPage* SettingsPagesPlain::paths(QWidget* parent)
{
    auto* page = new SettingsPage(parent);
    addSimulator(page);
    QFormLayout* reports = page->addGroup(tr("Reports"));
    page->addFolder(reports, tr("&Export METARs to:"), kFolder, option::exportMetarFile);
    page->addHint(reports, tr("With a folder here all METARs are written to a file in it "
                              "after each download."));
    addFlightPlanPaths(page);
    return page;
}

SettingsPage* SettingsPagesPlain::messages(QWidget* parent)
{
    auto* page = new SettingsPage(parent);
    QFormLayout* sim = page->addGroup(tr("In the simulator"));
    auto* show = page->addCheck(sim, tr("Show &messages"), option::fsMessage);
    auto* seconds = page->addNumber(sim, tr("&For:"), {1, 60, 1, tr("s", "seconds"), {}},
                                    option::fsMessageTime);
    seconds->setEnabled(false);
    QObject::connect(show, &QCheckBox::toggled, seconds, &QWidget::setEnabled);
    QFormLayout* window = page->addGroup(tr("In the window"));
    page->addCheck(window, tr("Show the &TAF below a METAR"), option::showTaf);
    QFormLayout* tray = page->addGroup(tr("System tray"));
    page->addCheck(tray, tr("M&inimise to the tray"), option::minimizeToTray);
    page->addCheck(tray, tr("Show messages at the tr&ay icon"), option::showSystemTrayMessage);
    return page;
}

SettingsPage* SettingsPagesPlain::recorder(QWidget* parent)
{
    auto* page = new SettingsPage(parent);
    QFormLayout* form = page->addGroup(tr("Flight recorder"));
    page->addCheck(form, tr("&Record flights"), option::recorderEnable);
    page->addText(form, tr("&Callsign:"), option::callsign);
    page->addCheck(form, tr("Use the &simulator's time"), option::useFsTime);
    page->addText(form, tr("&User name:"), option::recorderUserName);
    page->addHint(form, tr("The recorder comes with a later version; its options are kept."));
    return page;
}

SettingsPage* SettingsPagesPlain::units(QWidget* parent)
{
    auto* page = new SettingsPage(parent);
    QFormLayout* form = page->addGroup(tr("Units"));
    page->addChoice(
        form, tr("&Weight:"),
        {{tr("pounds (lbs)"), weightunit::kPounds}, {tr("kilograms (kg)"), weightunit::kKilograms}},
        option::unitWeight);
    page->addChoice(
        form, tr("&Volume:"),
        {{tr("gallons (gal)"), volumeunit::kGallons}, {tr("litres (l)"), volumeunit::kLitres}},
        option::unitVolume);
    return page;
}

SettingsPage* SettingsPagesPlain::map(QWidget* parent)
{
    auto* page = new SettingsPage(parent);
    QFormLayout* form = page->addGroup(tr("Map"));
    page->addChoice(form, tr("&Type:"),
                    {{tr("Built-in map"), maptype::kShapefiles},
                     {QStringLiteral("OpenStreetMap"), maptype::kOpenStreetMap}},
                    option::mapType);
    page->addCheck(form, tr("&Follow the aircraft"), option::mapCenter);
    page->addCheck(form, tr("Show the &wind"), option::mapWind);
    page->addCheck(form, tr("Show &airports"), option::mapAirports);
    page->addHint(form, tr("The maps come with a later version; their options are kept."));
    return page;
}

SettingsPage* SettingsPagesPlain::airac(QWidget* parent)
{
    auto* page = new SettingsPage(parent);
    QFormLayout* form = page->addGroup(tr("Navigation data"));
    page->addCheck(form, tr("&Use AIRAC data"), option::airacUse);
    page->addCheck(form, QStringLiteral("&PMDG"), option::airacPmdg);
    page->addFolder(form, tr("P&MDG folder:"), kFolder, option::airacPmdgPath);
    page->addCheck(form, QStringLiteral("&Carenado"), option::airacCarenado);
    page->addFolder(form, tr("Carena&do folder:"), kFolder, option::airacCarenadoPath);
    page->addCheck(form, QStringLiteral("&Aerosoft"), option::airacAerosoft);
    page->addFolder(form, tr("Aeroso&ft folder:"), kFolder, option::airacAerosoftPath);
    page->addCheck(form, tr("Keep the data in a data&base"), option::airacUseDb);
    page->addHint(form, tr("AIRAC data comes with a later version; the options are kept."));
    return page;
}

SettingsPage* SettingsPagesPlain::logging(QWidget* parent)
{
    auto* page = new SettingsPage(parent);
    QFormLayout* form = page->addGroup(tr("Debug output"));
    page->addChoice(form, tr("&Show lines from level:"),
                    {{tr("Debug"), loglevel::kDebug},
                     {tr("Notification"), loglevel::kNotification},
                     {tr("Warning"), loglevel::kWarning},
                     {tr("Error"), loglevel::kError}},
                    option::loggerLevel);
    page->addHint(form, tr("The log file in the work folder always holds all lines."));
    return page;
}

#include "app/gui/dialogs/DlgSettings.h"

#include "app/gui/dialogs/AddressEdit.h"
#include "app/gui/dialogs/BasicSettings.h"
#include "app/gui/dialogs/FolderEdit.h"
#include "app/gui/dialogs/OptionTable.h"
#include "app/gui/dialogs/SettingsPageGeneral.h"
#include "app/gui/dialogs/SettingsPageInterface.h"
#include "app/gui/dialogs/WordSpinBox.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/gui/DlgTesting.h"
#include "tests/support/FakeClock.h"
#include "tests/support/LoopbackHttp.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QWizardPage>

#include <functional>
#include <map>
#include <memory>
#include <set>

namespace {

constexpr int kPatienceMs = 10000;

/// All options by their keys, as text.
std::map<std::string, QString> optionsOf(const Settings& settings)
{
    std::map<std::string, QString> values;
#define CIRRILON_ROW(type, getter, Setter, key, value, optionClass)                                \
    values[key] = QVariant(settings.getter()).toString();
    CIRRILON_OPTIONS(CIRRILON_ROW)
#undef CIRRILON_ROW
    return values;
}

/// Options that other parts of the program keep, or that have a test of their own.
const std::set<std::string> kNotInTheDialog = {
    "main/windowstate",
    "main/windowgeometry",
    "main/flightplannerwindowstate",
    "main/flightplannerwindowgeometry",
    "map/lastpos",
    "rec/userhash",
    "main/profile",
    "paths/workfolder",
};

class DlgSettingsTest : public SettingsFixture
{
protected:
    QWidget* control(const char* key) const
    {
        return m_dialog->findChild<QWidget*>(QLatin1String(key));
    }
    QLineEdit* text(const char* key) const
    {
        QWidget* widget = control(key);
        auto* edit = qobject_cast<QLineEdit*>(widget);
        return edit != nullptr ? edit : widget->findChild<QLineEdit*>();
    }
    QSpinBox* number(const char* key) const { return qobject_cast<QSpinBox*>(control(key)); }
    void choose(const char* key, int value)
    {
        auto* box = qobject_cast<QComboBox*>(control(key));
        box->setCurrentIndex(box->findData(value));
    }
    /// Gives a control another good value.
    void change(const std::string& key)
    {
        QWidget* widget = control(key.c_str());
        ASSERT_NE(widget, nullptr) << key;
        if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
            button->toggle();
        } else if (auto* box = qobject_cast<QSpinBox*>(widget)) {
            box->setValue(box->value() == box->maximum() ? box->value() - 1 : box->value() + 1);
        } else if (qobject_cast<FolderEdit*>(widget) != nullptr) {
            text(key.c_str())->setText(path("."));
        } else if (qobject_cast<AddressEdit*>(widget) != nullptr) {
            text(key.c_str())->setText(QStringLiteral("https://a.example/%Y"));
        } else if (key == "interface/ip" || key == "interface/myip") {
            text(key.c_str())->setText(QStringLiteral("10.0.0.7"));
        } else if (auto* choice = qobject_cast<QComboBox*>(widget)) {
            choice->setCurrentIndex((choice->currentIndex() + 1) % choice->count());
        } else {
            text(key.c_str())->setText(QStringLiteral("another"));
        }
    }

    FakeClock m_clock{2019, 7, 1, 12, 10, 0};
    Settings m_settings{QString(), m_random};
    std::unique_ptr<DlgSettings> m_dialog =
        std::make_unique<DlgSettings>(m_settings, HostNetwork());
};

TEST_F(DlgSettingsTest, EveryOptionIsShownAndWrittenOnOkAndOnlyThen)
{
    const auto before = optionsOf(m_settings);
    for (const auto& option : before) {
        if (kNotInTheDialog.count(option.first) == 0) {
            change(option.first);
        }
    }
    EXPECT_EQ(optionsOf(m_settings), before) << "written before OK";
    QSignalSpy changed(m_dialog.get(), &DlgSettings::sigSettingsChanged);
    m_dialog->accept();
    EXPECT_EQ(m_dialog->problem(), QString());
    EXPECT_EQ(changed.size(), 1);
    const auto after = optionsOf(m_settings);
    DlgSettings again(m_settings, HostNetwork());
    for (const auto& [key, value] : after) {
        EXPECT_EQ(value == before.at(key), kNotInTheDialog.count(key) == 1) << key;
    }
    EXPECT_EQ(again.findChild<QSpinBox*>(QStringLiteral("weather/range"))->value(), 101);
    again.reject();
    m_settings.setRange(1000); // out of what the box shows: not touched
    DlgSettings wide(m_settings, HostNetwork());
    EXPECT_TRUE(wide.apply());
    EXPECT_EQ(m_settings.range(), 1000);
}

TEST_F(DlgSettingsTest, CancelWritesNothing)
{
    const auto before = optionsOf(m_settings);
    change("weather/range");
    text("paths/workfolder")->setText(path("elsewhere"));
    QSignalSpy changed(m_dialog.get(), &DlgSettings::sigSettingsChanged);
    m_dialog->reject();
    EXPECT_EQ(optionsOf(m_settings), before);
    EXPECT_TRUE(changed.isEmpty());
    EXPECT_FALSE(QDir(path("elsewhere")).exists());
}

TEST_F(DlgSettingsTest, BadValuesBringUpTheirPage)
{
    using Page = DlgSettings::Page;
    const auto set = [this](const char* key, const QString& value) {
        text(key)->setText(value);
    };
    const auto bridge = [this] {
        choose("interface/interfacetype", 4);
    };
    const auto external = [this] {
        choose("weather/wxservertype", 3);
    };
    struct
    {
        const char* name;
        Page page;
        std::function<void()> spoil;
    } const rows[] = {
        {"no work folder", Page::General,
         [&] {
             set("paths/workfolder", QString());
         }},
        {"relative work folder", Page::General,
         [&] {
             set("paths/workfolder", QStringLiteral("a/b"));
         }},
        {"lowest above highest", Page::Weather,
         [&] {
             number("weather/vis_min")->setValue(5000);
             number("weather/vis_max")->setValue(4000);
         }},
        {"no external address", Page::Servers, external},
        {"not a web address", Page::Servers,
         [&] {
             external();
             set("waather/urlexternmetar", QStringLiteral("ftp://a/b"));
         }},
        {"not an IP", Page::Interface,
         [&] {
             bridge();
             set("interface/ip", QStringLiteral("127.1"));
         }},
        {"not an own IP", Page::Interface,
         [&] {
             bridge();
             set("interface/myip", QStringLiteral("1.2.3.256"));
         }},
        {"fast above slow", Page::Interface,
         [&] {
             number("interface/serverupdatetimemin")->setValue(1001);
         }},
        {"missing folder", Page::Paths,
         [&] {
             set("paths/sim", path("gone"));
         }},
        {"missing AIRAC folder", Page::Airac,
         [&] {
             set("airac/pmdg_path", path("gone"));
         }},
    };
    const auto before = optionsOf(m_settings);
    for (const auto& row : rows) {
        m_dialog = std::make_unique<DlgSettings>(m_settings, HostNetwork());
        row.spoil();
        m_dialog->showPage(Page::Logging);
        EXPECT_FALSE(m_dialog->apply()) << row.name;
        EXPECT_EQ(m_dialog->page(), row.page) << row.name;
        EXPECT_FALSE(m_dialog->problem().isEmpty()) << row.name;
    }
    EXPECT_EQ(optionsOf(m_settings), before);
}

TEST_F(DlgSettingsTest, AStoredFolderThatHasGoneIsNoFault)
{
    m_settings.setSimPath(path("gone"));
    m_dialog = std::make_unique<DlgSettings>(m_settings, HostNetwork());
    change("weather/range");
    EXPECT_TRUE(m_dialog->apply()) << qPrintable(m_dialog->problem());
    EXPECT_EQ(m_settings.simPath(), path("gone"));
}

TEST_F(DlgSettingsTest, AChangedWorkFolderTakesItsFilesAlongIfWanted)
{
    using Files = DlgSettings::Files;
    m_settings.setWorkFolder(path("old/"));
    write(path("old/profiles/a.ini"), "x");
    struct
    {
        Files answer;
        const char* folder;
        const char* file;
    } const rows[] = {
        {Files::Cancel, "old/", "old/profiles/a.ini"},
        {Files::Leave, "left/", "old/profiles/a.ini"},
    };
    for (const auto& row : rows) {
        m_dialog = std::make_unique<DlgSettings>(m_settings, HostNetwork());
        m_dialog->setFilesQuestion([&](const QString&, const QString&) { return row.answer; });
        text("paths/workfolder")->setText(path("left"));
        EXPECT_EQ(m_dialog->apply(), row.answer != Files::Cancel);
        EXPECT_EQ(m_settings.workFolder(), path(row.folder));
        EXPECT_TRUE(QFile::exists(path(row.file)));
    }
    m_settings.setWorkFolder(path("old/"));
    m_dialog = std::make_unique<DlgSettings>(m_settings, HostNetwork());
    m_dialog->setFilesQuestion([](const QString&, const QString&) { return Files::Move; });
    text("paths/workfolder")->setText(path("new/deep"));
    EXPECT_TRUE(m_dialog->apply());
    EXPECT_EQ(read(m_settings.profilesFolder() + QStringLiteral("a.ini")), "x");
    EXPECT_EQ(m_settings.workFolder(), path("new/deep/"));
}

TEST_F(DlgSettingsTest, ProfilesAreMadeAndChanged)
{
    m_settings.setWorkFolder(path("work/"));
    m_dialog = std::make_unique<DlgSettings>(m_settings, HostNetwork());
    auto* page = m_dialog->findChild<SettingsPageGeneral*>();
    for (const char* bad : {"", "../x", "a/b", "cirrilon"}) {
        EXPECT_FALSE(page->addProfile(QLatin1String(bad)).isEmpty()) << bad;
    }
    number("weather/range")->setValue(77);
    EXPECT_EQ(page->addProfile(QStringLiteral("Xplane")), QString());
    EXPECT_TRUE(m_dialog->apply());
    EXPECT_EQ(m_settings.profile(), QStringLiteral("Xplane.ini"));
    EXPECT_EQ(page->addProfile(QStringLiteral("FSX")), QString());
    number("weather/range")->setValue(55);
    EXPECT_TRUE(m_dialog->apply()) << "55 goes to Xplane and to the new one";
    number("weather/range")->setValue(44);
    auto* profiles = qobject_cast<QComboBox*>(control("main/profile"));
    profiles->setCurrentIndex(profiles->findData(QStringLiteral("Xplane.ini")));
    EXPECT_TRUE(m_dialog->apply());
    EXPECT_EQ(m_settings.range(), 55);
    EXPECT_EQ(number("weather/range")->value(), 55);
    m_settings.changeProfile(QStringLiteral("FSX.ini"));
    EXPECT_EQ(m_settings.range(), 44);
}

TEST_F(DlgSettingsTest, AddressesShowTheirTokensAndTellWhatTheTestFound)
{
    LoopbackHttp server;
    server.serve("/2019/metar", "[METAR]\nKMSP 011153Z AUTO\n[/METAR]");
    choose("weather/wxservertype", 3);
    auto* address = qobject_cast<AddressEdit*>(control("waather/urlexternmetar"));
    address->setAddress(server.url(QStringLiteral("/%Y/metar")));
    QSignalSpy tested(address, &AddressEdit::sigTested);
    address->findChild<QPushButton*>()->click();
    ASSERT_TRUE(tested.wait(kPatienceMs));
    EXPECT_TRUE(address->result().contains(QLatin1String("a METAR block with 1 reports")))
        << qPrintable(address->result());

    auto* button = m_dialog->findChild<QPushButton*>(QStringLiteral("button_testConnection"));
    auto* page = m_dialog->findChild<SettingsPageInterface*>();
    button->click();
    EXPECT_TRUE(page->testResult().contains(QLatin1String("tried when connecting")));
    choose("interface/interfacetype", 4);
    number("interface/port")->setValue(1);
    QSignalSpy bridge(page, &SettingsPageInterface::sigTested);
    button->click();
    ASSERT_TRUE(bridge.wait(kPatienceMs));
    EXPECT_TRUE(page->testResult().contains(QLatin1String("refused")));
}

TEST_F(DlgSettingsTest, TheHighestValueIsAWord)
{
    WordSpinBox box(QStringLiteral("random"));
    box.setRange(0, 10000);
    const std::map<const char*, int> rows = {
        {"random", 10000}, {"RANDOM", 10000}, {"500", 500}, {"10000", 10000}};
    for (const auto& [typed, value] : rows) {
        box.setValue(0);
        box.findChild<QLineEdit*>()->setText(QLatin1String(typed));
        EXPECT_EQ(box.value(), value) << typed;
    }
    box.setValue(0);
    box.setValue(10000);
    EXPECT_EQ(box.text(), QStringLiteral("random"));
}

TEST_F(DlgSettingsTest, TheAssistantKeepsItsStepsGoodAndWritesAtTheEnd)
{
    BasicSettings assistant(m_settings, HostNetwork());
    assistant.restart();
    QSignalSpy changed(&assistant, &BasicSettings::sigSettingsChanged);
    EXPECT_EQ(NamelessControls(assistant), QStringList());
    auto* type = assistant.findChild<QComboBox*>(QLatin1String(option::interfaceType.key));
    type->setCurrentIndex(type->findData(4));
    auto* ip = assistant.findChild<QLineEdit*>(QLatin1String(option::serverIp.key));
    ip->setText(QStringLiteral("nowhere"));
    assistant.next();
    EXPECT_FALSE(assistant.validateCurrentPage());
    ip->setText(QStringLiteral("10.0.0.9"));
    while (assistant.nextId() >= 0) {
        ASSERT_TRUE(assistant.validateCurrentPage());
        assistant.next();
    }
    EXPECT_EQ(m_settings.interfaceType(), 1) << "written before the end";
    assistant.accept();
    EXPECT_EQ(m_settings.interfaceType(), 4);
    EXPECT_EQ(m_settings.serverIp(), QStringLiteral("10.0.0.9"));
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(DlgSettingsTest, EveryControlHasANameAndAMnemonicOfItsOwn)
{
    EXPECT_EQ(NamelessControls(*m_dialog), QStringList());
    for (const SettingsPage* page : m_dialog->findChildren<SettingsPage*>()) {
        EXPECT_EQ(ClashingMnemonics(*page), QStringList());
    }
}

} // namespace

#include "app/gui/dialogs/DlgSettings.h"

#include "app/gui/dialogs/AddressEdit.h"
#include "app/gui/dialogs/BasicSettings.h"
#include "app/gui/dialogs/OptionTable.h"
#include "app/gui/dialogs/SettingsPageGeneral.h"
#include "app/gui/dialogs/SettingsPageInterface.h"
#include "gui/FolderEdit.h"
#include "gui/WordSpinBox.h"
#include "sim/OwnAddress.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/app/gui/DlgTesting.h"
#include "tests/support/FakeClock.h"
#include "tests/support/LoopbackHttp.h"

#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QWizardPage>

#include <map>
#include <memory>
#include <set>

namespace {

constexpr int kPatienceMs = 10000;

/// Options that other parts of the program set, or that have a test of their own.
const std::set<std::string> kNotInTheDialog = {
    "main/windowstate", "main/windowgeometry",
    "map/lastpos",      "main/flightplannerwindowstate",
    "rec/userhash",     "main/flightplannerwindowgeometry",
    "main/profile",     "paths/workfolder",
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
    /// A dialog over the settings as they are now.
    void remake() { m_dialog = std::make_unique<DlgSettings>(m_settings, hostNetwork()); }
    /// Gives a control the value that is written so.
    void set(const char* key, const QString& value)
    {
        if (auto* box = qobject_cast<QSpinBox*>(control(key))) {
            box->setValue(value.toInt());
        } else if (auto* choice = qobject_cast<QComboBox*>(control(key));
                   choice != nullptr && !choice->isEditable())
        {
            choice->setCurrentIndex(choice->findData(value.toInt()));
        } else {
            text(key)->setText(value);
        }
    }
    /// Gives a control another good value.
    void change(const std::string& key)
    {
        QWidget* widget = control(key.c_str());
        ASSERT_NE(widget, nullptr) << key;
        auto* choice = qobject_cast<QComboBox*>(widget);
        if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
            button->toggle();
        } else if (auto* box = qobject_cast<QSpinBox*>(widget)) {
            box->setValue(box->value() == box->maximum() ? box->value() - 1 : box->value() + 1);
        } else if (choice != nullptr && key != "interface/ip" && key != "interface/myip") {
            choice->setCurrentIndex((choice->currentIndex() + 1) % choice->count());
        } else {
            const bool folder = qobject_cast<FolderEdit*>(widget) != nullptr;
            const bool address = qobject_cast<AddressEdit*>(widget) != nullptr;
            text(key.c_str())
                ->setText(folder    ? path(".")
                          : address ? "https://a.example/%Y"_q
                                    : "10.0.0.7"_q);
        }
    }

    FakeClock m_clock{2019, 7, 1, 12, 10, 0};
    Settings m_settings{QString(), m_random};
    std::unique_ptr<DlgSettings> m_dialog =
        std::make_unique<DlgSettings>(m_settings, hostNetwork());
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
    EXPECT_EQ(noteOf(*m_dialog), QString());
    EXPECT_EQ(changed.size(), 1);
    const auto after = optionsOf(m_settings);
    DlgSettings again(m_settings, hostNetwork());
    for (const auto& [key, value] : after) {
        EXPECT_EQ(value == before.at(key), kNotInTheDialog.count(key) == 1) << key;
    }
    EXPECT_EQ(again.findChild<QSpinBox*>("weather/range"_q)->value(), 101);
    again.reject();
    m_settings.setRange(1000); // out of what the box shows: not touched
    DlgSettings wide(m_settings, hostNetwork());
    EXPECT_TRUE(wide.apply());
    EXPECT_EQ(m_settings.range(), 1000);
}

TEST_F(DlgSettingsTest, CancelWritesNothing)
{
    const auto before = optionsOf(m_settings);
    change("weather/range");
    set("paths/workfolder", path("elsewhere"));
    QSignalSpy changed(m_dialog.get(), &DlgSettings::sigSettingsChanged);
    m_dialog->reject();
    EXPECT_EQ(optionsOf(m_settings), before);
    EXPECT_TRUE(changed.isEmpty());
    EXPECT_FALSE(QDir(path("elsewhere")).exists());
}

TEST_F(DlgSettingsTest, BadValuesBringUpTheirPage)
{
    const std::pair<const char*, QString> bridge{"interface/interfacetype", "4"_q};
    const std::pair<const char*, QString> external{"weather/wxservertype", "3"_q};
    const std::pair<const char*, QVector<std::pair<const char*, QString>>> rows[] = {
        {"General", {{"paths/workfolder", QString()}}},
        {"General", {{"paths/workfolder", "a/b"_q}}},
        {"Weather", {{"weather/vis_min", "5000"_q}, {"weather/vis_max", "4000"_q}}},
        {"Servers", {external}},
        {"Servers", {external, {"waather/urlexternmetar", "ftp://a/b"_q}}},
        {"Interface", {bridge, {"interface/ip", "127.1"_q}}},
        {"Interface", {bridge, {"interface/myip", "1.2.3.256"_q}}},
        {"Interface", {{"interface/serverupdatetimemin", "1001"_q}}},
        {"Folders", {{"paths/sim", path("gone")}}},
        {"AIRAC", {{"airac/pmdg_path", path("gone")}}},
    };
    const auto before = optionsOf(m_settings);
    for (const auto& [page, values] : rows) {
        SCOPED_TRACE(values.last().first);
        remake();
        for (const auto& [key, value] : values) {
            set(key, value);
        }
        auto* pages = m_dialog->findChild<QListWidget*>();
        pages->setCurrentRow(pages->count() - 1);
        EXPECT_FALSE(m_dialog->apply());
        EXPECT_EQ(pages->currentItem()->text(), QLatin1String(page));
        EXPECT_FALSE(noteOf(*m_dialog).isEmpty());
    }
    EXPECT_EQ(optionsOf(m_settings), before);
}

TEST_F(DlgSettingsTest, AStoredFolderThatHasGoneIsNoFault)
{
    m_settings.setSimPath(path("gone"));
    remake();
    change("weather/range");
    EXPECT_TRUE(m_dialog->apply()) << qPrintable(noteOf(*m_dialog));
    EXPECT_EQ(m_settings.simPath(), path("gone"));
}

TEST_F(DlgSettingsTest, AChangedWorkFolderTakesItsFilesAlongIfWanted)
{
    const std::tuple<QString, const char*, const char*> rows[] = {
        {"Cancel"_q, "old/", "old/profiles/a.ini"},
        {"Leave them there"_q, "new/deep/", "old/profiles/a.ini"},
        {"Move the files"_q, "new/deep/", "new/deep/profiles/a.ini"},
    };
    write(path("old/profiles/a.ini"), "x");
    for (const auto& [answer, folder, file] : rows) {
        m_settings.setWorkFolder(path("old/"));
        remake();
        set("paths/workfolder", path("new/deep"));
        answerNextBox(answer);
        EXPECT_EQ(m_dialog->apply(), answer != "Cancel"_q);
        EXPECT_EQ(m_settings.workFolder(), path(folder));
        EXPECT_EQ(read(path(file)), "x");
    }
}

TEST_F(DlgSettingsTest, ProfilesAreMadeAndChanged)
{
    m_settings.setWorkFolder(path("work/"));
    remake();
    auto* page = m_dialog->findChild<SettingsPageGeneral*>();
    for (const char* bad : {"", "../x", "a/b", "cirrilon"}) {
        EXPECT_FALSE(page->addProfile(QLatin1String(bad)).isEmpty()) << bad;
    }
    set("weather/range", "77"_q);
    EXPECT_EQ(page->addProfile("Xplane"_q), QString());
    EXPECT_TRUE(m_dialog->apply());
    EXPECT_EQ(m_settings.profile(), "Xplane.ini"_q);
    EXPECT_EQ(page->addProfile("FSX"_q), QString());
    set("weather/range", "55"_q);
    EXPECT_TRUE(m_dialog->apply()) << "55 goes to Xplane and to the new one";
    set("weather/range", "44"_q);
    auto* profiles = qobject_cast<QComboBox*>(control("main/profile"));
    profiles->setCurrentIndex(profiles->findData("Xplane.ini"_q));
    EXPECT_TRUE(m_dialog->apply());
    EXPECT_EQ(m_settings.range(), 55);
    EXPECT_EQ(number("weather/range")->value(), 55);
    m_settings.changeProfile("FSX.ini"_q);
    EXPECT_EQ(m_settings.range(), 44);
}

TEST_F(DlgSettingsTest, AddressesShowTheirTokensAndTellWhatTheTestFound)
{
    LoopbackHttp server;
    server.serve("/2019/metar", "[METAR]\nKMSP 011153Z AUTO\n[/METAR]");
    set("weather/wxservertype", "3"_q);
    auto* address = qobject_cast<AddressEdit*>(control("waather/urlexternmetar"));
    address->setAddress(server.url("/%Y/metar"_q));
    QSignalSpy tested(address, &AddressEdit::sigTested);
    address->findChild<QPushButton*>()->click();
    ASSERT_TRUE(tested.wait(kPatienceMs));
    EXPECT_TRUE(noteOf(*address).contains("a METAR block with 1 reports"_q))
        << qPrintable(noteOf(*address));

    auto* button = m_dialog->findChild<QPushButton*>("button_testConnection"_q);
    auto* page = m_dialog->findChild<SettingsPageInterface*>();
    button->click();
    EXPECT_TRUE(noteIn(*page).contains("tried when connecting"_q));
    set("interface/interfacetype", "4"_q);
    set("interface/port", "1"_q);
    QSignalSpy bridge(page, &SettingsPageInterface::sigTested);
    button->click();
    ASSERT_TRUE(bridge.wait(kPatienceMs));
    EXPECT_TRUE(noteIn(*page).contains("refused"_q));
}

TEST_F(DlgSettingsTest, AnOwnAddressThatReachesTheServerIsProposed)
{
    const QString elsewhere = "198.51.100.7"_q;
    const QString way = ownaddress::reaching(elsewhere);
    if (way.isEmpty()) {
        GTEST_SKIP() << "no way leads out of this computer";
    }
    set("interface/ip", "127.0.0.1"_q);
    set("interface/myip", "127.0.0.1"_q);
    const auto& note = *m_dialog->findChild<QLabel*>("label_ownAddress"_q);
    EXPECT_TRUE(note.isHidden()) << "the server is on this computer";
    set("interface/ip", elsewhere);
    EXPECT_FALSE(note.isHidden());
    EXPECT_TRUE(note.text().contains(way));
    auto* own = qobject_cast<QComboBox*>(control("interface/myip"));
    EXPECT_EQ(own->itemText(0), way);
    EXPECT_EQ(own->currentText(), "127.0.0.1"_q) << "only proposed";
    own->setCurrentIndex(0);
    EXPECT_TRUE(note.isHidden());
    EXPECT_EQ(own->findText(way, Qt::MatchExactly), 0);
    EXPECT_TRUE(m_dialog->apply());
    EXPECT_EQ(m_settings.myIp(), way);
}

TEST_F(DlgSettingsTest, TheHighestValueIsAWord)
{
    WordSpinBox box("random"_q);
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
    EXPECT_EQ(box.text(), "random"_q);
}

TEST_F(DlgSettingsTest, TheAssistantKeepsItsStepsGoodAndWritesAtTheEnd)
{
    BasicSettings assistant(m_settings, hostNetwork());
    assistant.restart();
    QSignalSpy changed(&assistant, &BasicSettings::sigSettingsChanged);
    EXPECT_EQ(namelessControls(assistant), QStringList());
    auto* type = assistant.findChild<QComboBox*>(QLatin1String(option::interfaceType.key));
    type->setCurrentIndex(type->findData(4));
    auto* ip = assistant.findChild<QLineEdit*>(QLatin1String(option::serverIp.key));
    ip->setText("nowhere"_q);
    assistant.next();
    EXPECT_FALSE(assistant.validateCurrentPage());
    ip->setText("10.0.0.9"_q);
    while (assistant.nextId() >= 0) {
        ASSERT_TRUE(assistant.validateCurrentPage());
        assistant.next();
    }
    EXPECT_EQ(m_settings.interfaceType(), 1) << "written before the end";
    assistant.accept();
    EXPECT_EQ(m_settings.interfaceType(), 4);
    EXPECT_EQ(m_settings.serverIp(), "10.0.0.9"_q);
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(DlgSettingsTest, EveryControlHasANameAndAMnemonicOfItsOwn)
{
    EXPECT_EQ(namelessControls(*m_dialog), QStringList());
    for (const SettingsPage* page : m_dialog->findChildren<SettingsPage*>()) {
        EXPECT_EQ(clashingMnemonics(*page), QStringList());
    }
}

} // namespace

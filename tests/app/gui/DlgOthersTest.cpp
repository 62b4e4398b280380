#include "app/gui/dialogs/AirportListModel.h"
#include "app/gui/dialogs/DlgAbout.h"
#include "app/gui/dialogs/DlgAirportList.h"
#include "app/gui/dialogs/DlgUpdater.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/app/gui/DlgTesting.h"
#include "tests/support/LoopbackHttp.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr int kPatienceMs = 10000;

class DlgOthersTest : public SettingsFixture
{
protected:
    static void fill(AirportListModel& model, int row, const char* fields)
    {
        const QStringList texts = QString::fromUtf8(fields).split(QLatin1Char('|'));
        for (int field = 0; field < texts.size(); ++field) {
            model.setData(model.index(row, field), texts.at(field), Qt::EditRole);
        }
    }
    QString added() const { return path("airportsadd.dat"); }
    QString renamed() const { return path("icaosoldnew.dat"); }
    /// The button whose text begins so, mnemonics aside.
    static QPushButton* button(const QWidget& window, const char* begin)
    {
        for (QPushButton* found : window.findChildren<QPushButton*>()) {
            if (found->text().remove(QLatin1Char('&')).startsWith(QLatin1String(begin))) {
                return found;
            }
        }
        return nullptr;
    }

    Settings m_settings{QString(), m_random};
    DownloadContext m_context{&m_settings, hostNetwork(), nullptr, nullptr, {}};
};

TEST_F(DlgOthersTest, AirportsAreEditedAndSavedWithWhatElseStandsInTheFile)
{
    write(added(),
          "# icao;name;country;elev;lat;lon;\n# mine\nZZ1;a;b;1;2;3\n???\nZZ2;a;b;1;2;3\n");
    DlgAirportList dialog(path("."));
    QSignalSpy changed(&dialog, &DlgAirportList::sigAirportsChanged);
    AirportListModel& airports = dialog.airports();
    airports.removeRow(0);
    fill(airports, airports.addRow(), "zz1|Field|DE|100|50,5|-8");
    EXPECT_TRUE(dialog.save()) << qPrintable(dialog.problem());
    EXPECT_EQ(read(added()).toStdString(), "# icao;name;country;elev;lat;lon;\n# mine\n???\n"
                                           "ZZ2;a;b;1;2;3\nZZ1;Field;DE;100;50.5;-8\n");
    EXPECT_EQ(changed.size(), 1);
    EXPECT_FALSE(QFile::exists(renamed())) << "the other list wasn't changed";

    fill(dialog.oldIcaos(), dialog.oldIcaos().addRow(), "eddt|eddb");
    dialog.OnWriteOldIcaos();
    EXPECT_EQ(read(renamed()), "#old icao,new icao\nEDDT,EDDB\n");
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(namelessControls(dialog), QStringList());
    EXPECT_EQ(namelessControls(DlgAbout()), QStringList());
}

TEST_F(DlgOthersTest, BadRowsAreNotSavedAndChangesNotLost)
{
    DlgAirportList dialog(path("."));
    AirportListModel& airports = dialog.airports();
    fill(airports, airports.addRow(), "ZZ1|a|b|1|2|3");
    for (const char* bad : {"ZZ1|a|b|1|2|3", "ZZ2|a;b|b|1|2|3", "ZZ2|a|b|1|95|3", "||||| "}) {
        const int row = airports.addRow();
        fill(airports, row, bad);
        EXPECT_FALSE(dialog.save()) << bad;
        EXPECT_FALSE(dialog.problem().isEmpty()) << bad;
        airports.removeRow(row);
    }
    EXPECT_FALSE(QFile::exists(added()));
    int asked = 0;
    dialog.setDiscardQuestion([&asked] { return ++asked > 1; });
    dialog.setVisible(true);
    dialog.reject();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(dialog.save());
    dialog.reject();
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(DlgOthersTest, AFileThatCanNotBeReadIsNotOverwritten)
{
    write(added(), "ZZ1;a;b;1;2;3\n");
    ASSERT_TRUE(QFile(added()).resize(17LL * 1024 * 1024));
    DlgAirportList dialog(path("."));
    EXPECT_FALSE(dialog.problem().isEmpty());
    fill(dialog.airports(), dialog.airports().addRow(), "ZZ9|a|b|1|2|3");
    EXPECT_FALSE(dialog.save());
    EXPECT_EQ(QFileInfo(added()).size(), 17LL * 1024 * 1024);
}

UpdateOffer offerOf(const QString& automatic, const QString& manual = QString())
{
    UpdateOffer offer;
    offer.info = "New:<br><b>much</b>"_q;
    offer.automaticUrl = automatic;
    offer.manualUrl = manual;
    return offer;
}

TEST_F(DlgOthersTest, TheUpdaterFetchesTheInstaller)
{
    LoopbackHttp server;
    server.serve("/setup.exe", "installer");
    DlgUpdater dialog(offerOf(server.url("/setup.exe"_q)), m_context);
    EXPECT_EQ(dialog.findChild<QPlainTextEdit*>()->toPlainText(), "New:\n<b>much</b>"_q);
    EXPECT_EQ(namelessControls(dialog), QStringList());
    QSignalSpy accepted(&dialog, &QDialog::accepted);
    button(dialog, "Download")->click();
    ASSERT_TRUE(accepted.wait(kPatienceMs)) << qPrintable(dialog.problem());
    EXPECT_EQ(read(dialog.installerPath()), "installer");
    EXPECT_TRUE(dialog.installerPath().startsWith(m_settings.tmpFolder()));
}

TEST_F(DlgOthersTest, TheUpdaterTellsFailuresAndGivesWay)
{
    LoopbackHttp server;
    server.stall("/setup.exe", "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf");
    DlgUpdater dialog(offerOf(server.url("/setup.exe"_q)), m_context);
    QSignalSpy rejected(&dialog, &QDialog::rejected);
    button(dialog, "Download")->click();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !server.requests.isEmpty(); }, kPatienceMs));
    dialog.reject();
    EXPECT_TRUE(rejected.isEmpty()) << "the first one ends the download only";
    EXPECT_TRUE(button(dialog, "Download")->isEnabled());
    dialog.reject();
    EXPECT_EQ(rejected.size(), 1);

    DlgUpdater missing(offerOf(server.url("/gone.exe"_q)), m_context);
    button(missing, "Download")->click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !missing.problem().isEmpty(); }, kPatienceMs));
    EXPECT_EQ(missing.installerPath(), QString());
}

TEST_F(DlgOthersTest, TheUpdaterTakesWebAddressesOnly)
{
    for (const QString& url :
         {"file:///etc/passwd"_q, "ftp://a/b"_q, "javascript:1"_q, QString(), "https://"_q})
    {
        DlgUpdater dialog(offerOf(url, url), m_context);
        EXPECT_FALSE(button(dialog, "Download")->isEnabled()) << qPrintable(url);
        EXPECT_FALSE(button(dialog, "Open")->isEnabled()) << qPrintable(url);
    }
    DlgUpdater dialog(offerOf(QString(), "https://a.example/page"_q), m_context);
    QUrl opened;
    dialog.setPageOpener([&opened](const QUrl& url) {
        opened = url;
        return true;
    });
    button(dialog, "Open")->click();
    EXPECT_EQ(opened, QUrl("https://a.example/page"_q));
    EXPECT_EQ(dialog.installerPath(), QString());
}

} // namespace

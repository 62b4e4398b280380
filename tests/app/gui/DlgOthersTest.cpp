#include "app/gui/dialogs/AirportListModel.h"
#include "app/gui/dialogs/DlgAbout.h"
#include "app/gui/dialogs/DlgAirportList.h"
#include "app/gui/dialogs/DlgUpdater.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/app/gui/DlgTesting.h"
#include "tests/support/LoopbackHttp.h"

#include <QDesktopServices>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>

#include <stdexcept>

namespace {

constexpr int kPatienceMs = 10000;

/// In place of the host's.
class Browser : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void open(const QUrl& url) { opened = url; }

    QUrl opened;
};

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
    /// The model of a table by its accessible name.
    static AirportListModel& listOf(const QWidget& dialog, const char* name)
    {
        for (const QTableView* table : dialog.findChildren<QTableView*>()) {
            if (table->accessibleName() == QLatin1String(name)) {
                return *qobject_cast<AirportListModel*>(table->model());
            }
        }
        throw std::out_of_range(name);
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
    AirportListModel& airports = listOf(dialog, "Additional airports");
    airports.removeRow(0);
    fill(airports, airports.addRow(), "zz1|Field|DE|100|50,5|-8");
    EXPECT_TRUE(dialog.save()) << qPrintable(noteOf(dialog));
    EXPECT_EQ(read(added()).toStdString(), "# icao;name;country;elev;lat;lon;\n# mine\n???\n"
                                           "ZZ2;a;b;1;2;3\nZZ1;Field;DE;100;50.5;-8\n");
    EXPECT_EQ(changed.size(), 1);
    EXPECT_FALSE(QFile::exists(renamed())) << "the other list wasn't changed";

    AirportListModel& renamings = listOf(dialog, "Renamed ICAO codes");
    fill(renamings, renamings.addRow(), "eddt|eddb");
    dialog.OnWriteOldIcaos();
    EXPECT_EQ(read(renamed()), "#old icao,new icao\nEDDT,EDDB\n");
    EXPECT_EQ(changed.size(), 2);
    EXPECT_EQ(namelessControls(dialog), QStringList());
    EXPECT_EQ(namelessControls(DlgAbout()), QStringList());
}

TEST_F(DlgOthersTest, BadRowsAreNotSavedAndChangesNotLost)
{
    DlgAirportList dialog(path("."));
    AirportListModel& airports = listOf(dialog, "Additional airports");
    fill(airports, airports.addRow(), "ZZ1|a|b|1|2|3");
    for (const char* bad : {"ZZ1|a|b|1|2|3", "ZZ2|a;b|b|1|2|3", "ZZ2|a|b|1|95|3", "||||| "}) {
        const int row = airports.addRow();
        fill(airports, row, bad);
        EXPECT_FALSE(dialog.save()) << bad;
        EXPECT_TRUE(noteOf(dialog).startsWith("Row "_q)) << bad;
        airports.removeRow(row);
    }
    EXPECT_FALSE(QFile::exists(added()));
    dialog.show();
    answerNextBox("No"_q);
    dialog.reject();
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(dialog.save());
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible()) << "nothing to ask";
    dialog.show();
    fill(airports, airports.addRow(), "ZZ2|a|b|1|2|3");
    answerNextBox("Yes"_q);
    dialog.reject();
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(DlgOthersTest, AFileThatCanNotBeReadIsNotOverwritten)
{
    write(added(), "ZZ1;a;b;1;2;3\n");
    ASSERT_TRUE(QFile(added()).resize(17LL * 1024 * 1024));
    DlgAirportList dialog(path("."));
    EXPECT_TRUE(noteOf(dialog).startsWith("Can not read "_q));
    AirportListModel& airports = listOf(dialog, "Additional airports");
    fill(airports, airports.addRow(), "ZZ9|a|b|1|2|3");
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
    ASSERT_TRUE(accepted.wait(kPatienceMs)) << qPrintable(noteOf(dialog));
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
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return noteOf(missing).startsWith("The download failed: "_q); }, kPatienceMs));
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
    Browser browser;
    QDesktopServices::setUrlHandler("https"_q, &browser, "open");
    button(dialog, "Open")->click();
    QDesktopServices::unsetUrlHandler("https"_q);
    EXPECT_EQ(browser.opened, QUrl("https://a.example/page"_q));
    EXPECT_EQ(dialog.installerPath(), QString());
}

} // namespace

#include "DlgOthersTest.moc"

#include "app/download/WeatherDownload.h"

#include "tests/app/download/ServerFixture.h"

#include <QTimer>

namespace {

const QByteArray kList("[METAR]\nEDDF 011150Z 24012KT 9999 FEW030 22/12 Q1015\n[/METAR]\n");

class WeatherDownloadTest : public ServerFixture
{
protected:
    void SetUp() override
    {
        ServerFixture::SetUp();
        make();
    }
    void TearDown() override
    {
        source.reset();
        ServerFixture::TearDown();
    }
    void make()
    {
        texts.clear();
        DownloadContext quick = context();
        quick.limits.retryPausesMs = pauses;
        source = std::make_unique<WeatherDownload>(
            *settings, view, quick, [this] { return simulator; }, reporting());
        QObject::connect(source.get(), &WeatherDownload::sigList,
                         [this](const WeatherList& list) { texts << list.text; });
        QObject::connect(source.get(), &WeatherDownload::sigFailed, [this] { ++failures; });
    }
    void waitForTexts(int count)
    {
        ASSERT_TRUE(wait([&] { return texts.size() == count; })) << texts.size();
    }

    /// What the store says of a list that came in.
    void decoded(bool good, WeatherList::Origin origin = WeatherList::Origin::Live)
    {
        WeatherList list;
        list.origin = origin;
        source->takeOutcome({list, good, good});
    }
    QString notice() const
    {
        const auto found = view.notices.find(Notice::Download);
        return found == view.notices.end() ? QString() : found->second;
    }

    std::vector<int> pauses{0, 0, 0, 0, 0, 0};
    int failures = 0;
    aviation::FsId simulator = aviation::fsid::kNone;
    std::unique_ptr<WeatherDownload> source;
    QStringList texts;
};

TEST_F(WeatherDownloadTest, FetchesOnceAndExports)
{
    settings->setExportMetarFile(path("export"));
    write(path("export/weather.wx"), "of yesterday");
    server.serve("/one/weather_ivao.gz", packed(kList));
    source->download(2);
    EXPECT_TRUE(source->isUnderWay());
    source->download(2);
    waitForTexts(1);
    source->download(2, WeatherDownload::Asked::ByPilot);
    EXPECT_TRUE(source->isUnderWay()) << "until the list is decoded";
    EXPECT_EQ(view.linesWith("being downloaded already"_q), 2);
    EXPECT_EQ(server.count("/one/weather_ivao.gz"), 1);
    EXPECT_EQ(texts.first().toUtf8(), kList);
    EXPECT_EQ(read(settings->tmpFolder() + "weather.txt"_q), kList);
    decoded(true);
    EXPECT_FALSE(source->isUnderWay());
    ASSERT_TRUE(wait([this] { return read(path("export/weather.wx")) == kList; }));
}

TEST_F(WeatherDownloadTest, TheListOfFs2020IsTakenAsItIs)
{
    settings->setExportMetarFile(path("work"));
    simulator = aviation::fsid::kFs2020;
    const QByteArray address = QUrl(settings->fs2020Url(true)).path().toLatin1();
    write(path("work/weather.wx"), "of before");
    server.serve(address, "<!DOCTYPE html><html><b>502</b></html>");
    source->download(1);
    waitForTexts(1);
    EXPECT_EQ(read(path("work/weather.wx")), "of before");
    server.serve(address, kList);
    decoded(false);
    waitForTexts(2);
    EXPECT_EQ(texts.last().toUtf8(), kList);
    EXPECT_EQ(server.count(address), 2);
    EXPECT_EQ(view.levelOf("Download weather from MSFS2020"_q), 1);
    EXPECT_EQ(read(path("work/weather.wx")), "of before") << "nobody has judged the list yet";
    decoded(true);
    ASSERT_TRUE(wait([this] { return read(path("work/weather.wx")) == kList; }));
}

TEST_F(WeatherDownloadTest, SixMoreTriesFollowAFailureUntilAGoodListCame)
{
    settings->setExportMetarFile(path("work"));
    const QString failure = "Network error: 203 \n"_q + settings->tmpFolder() + "weather_noaa.gz"_q;
    source->download(3);
    waitForLine("Automatic weather download stopped"_q);
    EXPECT_EQ(view.linesWith("(Controller) - Switch to Weather server: wxdata2"_q), 4);
    EXPECT_EQ(server.count("/one/weather_noaa.gz") + server.count("/two/weather_noaa.gz"), 7);
    EXPECT_EQ(failures, 7);
    EXPECT_TRUE(notice().startsWith(failure)) << qPrintable(notice());
    EXPECT_TRUE(notice().endsWith("Please contact the developers of Cirrilon."_q));

    for (const int count : {8, 9}) {
        source->download(3); // the next one that is due
        ASSERT_TRUE(wait([&] { return failures == count; }));
        EXPECT_FALSE(source->isUnderWay());
    }
    EXPECT_EQ(server.count("/two/weather_noaa.gz"), 4) << "the servers take turns";

    server.serve("/two/weather_noaa.gz", packed(kList));
    source->download(3);
    waitForTexts(1);
    decoded(true);
    EXPECT_EQ(notice(), QString());
    server.serve("/two/weather_noaa.gz", "gone", "404 Not Found");
    source->download(3);
    ASSERT_TRUE(wait([&] { return failures == 16; })) << "the row of tries begins anew";
    EXPECT_EQ(texts.size(), 1);
    EXPECT_TRUE(dialogs.warnings().isEmpty());
}

TEST_F(WeatherDownloadTest, PausesStandBetweenTheTriesAndThePilotDoesntWaitForThem)
{
    EXPECT_EQ(DownloadLimits().retryPausesMs,
              (std::vector<int>{0, 2000, 5000, 10000, 30000, 60000}));
    pauses = {0, 3600000};
    make();
    source->download(3);
    ASSERT_TRUE(wait([&] { return failures == 2; }));
    source->download(3); // as the download interval does
    EXPECT_FALSE(source->isUnderWay()) << "the next try is due after its pause";
    source->download(3, WeatherDownload::Asked::ByPilot);
    EXPECT_TRUE(source->isUnderWay());
    EXPECT_EQ(notice(), QString()) << "it is under way again";
    ASSERT_TRUE(wait([&] { return failures == 3; }));
    EXPECT_TRUE(view.linesWith("Automatic weather download stopped"_q) == 1);
}

TEST_F(WeatherDownloadTest, OnlyThePilotsOwnDownloadEndsInABox)
{
    source->download(3);
    source->download(3, WeatherDownload::Asked::ByPilot); // waits for the one under way
    waitForLine("Automatic weather download stopped"_q);
    ASSERT_EQ(dialogs.warnings().size(), 1) << "one, whatever follows";
    EXPECT_EQ(dialogs.warnings().first(), "Cirrilon - Download error|Network error: 203 \n"_q
                                              + settings->tmpFolder() + "weather_noaa.gz"_q);
}

TEST_F(WeatherDownloadTest, ADamagedListIsAFailedDownload)
{
    const std::pair<QByteArray, QString> rows[] = {
        {"", "it is empty"_q},
        {"<!DOCTYPE html><html><b>502</b></html>", "it is a web page"_q},
        {"Error: no <b>data</b>\n", "the server says Error: no &lt;b&gt;data&lt;/b&gt;"_q},
        {packed(QByteArray(500, '\n') + kList).left(40), "truncated"_q},
        {QByteArray(100, '\xff'), "damaged"_q},
        {packed(kList + "[SYNOP]AAXX 01124 10637 42960="), "a block has no end"_q},
    };
    settings->setExportMetarFile(path("work"));
    write(path("work/weather.wx"), "of before");
    pauses = {3600000};
    for (const auto& [answer, reason] : rows) {
        view.log.clear();
        failures = 0;
        settings->setWeatherServer(settings->serverOne());
        server.serve("/one/weather_vatsim.gz", answer);
        make();
        source->download(1);
        ASSERT_TRUE(wait([&] { return failures == 1; }));
        EXPECT_EQ(view.levelOf(reason), 3) << qPrintable(reason);
        EXPECT_EQ(view.linesWith("The weather file can't be used"_q), 1);
        EXPECT_EQ(notice(), "The weather list is damaged and can't be used."_q);
        EXPECT_TRUE(texts.isEmpty()) << "nothing to decode";
        EXPECT_EQ(read(path("work/weather.wx")), "of before");
    }
}

TEST_F(WeatherDownloadTest, AnotherSourceIsTriedUntilAllHaveBeen)
{
    settings->setExportMetarFile(path("work"));
    settings->setWeatherSource(2);
    source->download(2);
    ASSERT_TRUE(wait([&] { return failures == 7; })) << "of the network: no source is used up";
    for (const QByteArray name : {"noaa.gz", "vatsim.gz", "ivao.gz"}) {
        server.serve("/one/weather_" + name, packed(kList));
        server.serve("/two/weather_" + name, packed(kList));
    }
    int count = 0;
    for (const int row : {1, 2}) {
        source->download(2); // as the interval does
        waitForTexts(++count);
        for (const QByteArray next : {"noaa.gz", "vatsim.gz", "ivao.gz"}) {
            decoded(false);
            waitForTexts(++count);
            EXPECT_TRUE(server.requests.last().contains("weather_" + next)) << next.constData();
        }
        decoded(false);
        decoded(false); // an outcome that is taken already
        EXPECT_FALSE(source->isUnderWay());
        EXPECT_EQ(view.levelOf("no metars founded. Download stopped"_q), 3);
        EXPECT_EQ(failures, 7 + row);
        EXPECT_EQ(notice(), "No source has enough METARs. Download stopped."_q);
    }
}

TEST_F(WeatherDownloadTest, ExternalAddressesAreToldOneByOne)
{
    settings->setWxServerType(3);
    settings->setUrlExternMetar(server.url("/m%Y.txt"_q));
    server.serve("/m2019.txt", "EDDF");
    source->download(1);
    EXPECT_EQ(texts, QStringList("[METAR]EDDF[/METAR]\n"_q));
    EXPECT_EQ(view.linesWith("Synop"_q), 0) << "left empty on purpose";
    decoded(true, WeatherList::Origin::External);

    settings->setUrlExternSynop(server.url("/s"_q));
    server.serve("/s", "AAXX");
    QTimer::singleShot(0, source.get(), [this] { source->download(1); });
    source->download(1);
    EXPECT_EQ(texts.mid(1), QStringList("[SYNOP]AAXX[/SYNOP]\n"_q)) << "instead of the METARs";
    EXPECT_EQ(view.linesWith("being downloaded already"_q), 1);
    decoded(true, WeatherList::Origin::External);

    settings->setUrlExternSynop("s"_q);
    source->download(1);
    EXPECT_EQ(texts.mid(2), QStringList("[METAR]EDDF[/METAR]\n"_q)) << "what arrived";
    EXPECT_EQ(view.levelOf("(Controller) - Download Synop - Url-Error"_q), 3);
    decoded(true, WeatherList::Origin::External);

    settings->setUrlExternMetar(server.url("/none"_q));
    source->download(1);
    EXPECT_EQ(texts.size(), 3) << "nothing arrived";
    EXPECT_EQ(failures, 1);
    EXPECT_EQ(view.levelOf("(Controller) - Download Metar Error: "_q), 3);
    EXPECT_NE(notice(), QString());
}

} // namespace

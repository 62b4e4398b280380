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
        source = std::make_unique<WeatherDownload>(
            *settings, context(), [this] { return simulator; }, reporting());
        QObject::connect(source.get(), &WeatherDownload::sigText,
                         [this](const QString& text) { texts << text; });
    }
    void waitForTexts(int count)
    {
        ASSERT_TRUE(wait([&] { return texts.size() == count; })) << texts.size();
    }

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
    EXPECT_FALSE(source->isUnderWay());
    EXPECT_EQ(view.linesWith("being downloaded already"_q), 1);
    EXPECT_EQ(server.count("/one/weather_ivao.gz"), 1);
    EXPECT_EQ(texts.first().toUtf8(), kList);
    EXPECT_EQ(read(settings->tmpFolder() + "weather.txt"_q), kList);
    EXPECT_EQ(read(path("export/weather.wx")), kList);
}

TEST_F(WeatherDownloadTest, TheListOfFs2020IsTakenAsItIs)
{
    settings->setExportMetarFile(path("work"));
    simulator = aviation::fsid::kFs2020;
    const QByteArray address = QUrl(settings->fs2020Url(true)).path().toLatin1();
    server.serve(address, kList);
    source->download(1);
    waitForTexts(1);
    EXPECT_EQ(texts.first().toUtf8(), kList);
    EXPECT_EQ(server.count(address), 1);
    EXPECT_EQ(view.levelOf("Download weather from MSFS2020"_q), 1);
}

TEST_F(WeatherDownloadTest, NetworkErrorsAreToldUntilTheLimitThatStays)
{
    source->download(3);
    waitForLine("Automatic weather download stopped"_q);
    EXPECT_EQ(view.linesWith("(Controller) - Switch to Weather server: wxdata2"_q), 3);
    EXPECT_EQ(dialogs.warnings().size(), 8);
    EXPECT_EQ(dialogs.warnings().first(), "Cirrilon - Download error|Network error: 203 \n"_q
                                              + settings->tmpFolder() + "weather_noaa.gz"_q);
    // The counter isn't reset: the next failure stops at once.
    source->download(3);
    ASSERT_TRUE(wait([&] { return dialogs.warnings().size() == 10; }));
    EXPECT_TRUE(texts.isEmpty());
}

TEST_F(WeatherDownloadTest, SaysWhyAnAnswerIsNoWeather)
{
    const std::pair<QByteArray, QString> rows[] = {
        {"", "it is empty"_q},
        {"<!DOCTYPE html><html><b>502</b></html>", "it is a web page"_q},
        {"Error: no <b>data</b>\n", "the server says Error: no &lt;b&gt;data&lt;/b&gt;"_q},
        {packed(QByteArray(500, '\n') + kList).left(40), "truncated"_q},
        {QByteArray(100, '\xff'), "damaged"_q},
    };
    settings->setExportMetarFile(path("work"));
    for (const auto& [answer, reason] : rows) {
        view.log.clear();
        server.serve("/one/weather_vatsim.gz", answer);
        make();
        source->download(1);
        waitForTexts(1); // an empty one, for which the next source is tried
        EXPECT_EQ(view.levelOf(reason), 3) << qPrintable(reason);
        EXPECT_EQ(view.linesWith("The weather file can't be used"_q), 1);
    }
}

TEST_F(WeatherDownloadTest, AnotherSourceIsTriedUntilAllHaveBeen)
{
    settings->setExportMetarFile(path("work"));
    settings->setWeatherSource(2);
    source->useSourceOfSettings();
    int count = 0;
    for (const QByteArray next :
         {"/one/weather_noaa.gz", "/one/weather_vatsim.gz", "/one/weather_ivao.gz"})
    {
        server.serve(next, packed(kList));
        source->tryAnotherSource();
        waitForTexts(++count);
        EXPECT_EQ(server.count(next), 1) << next.constData();
    }
    source->tryAnotherSource();
    EXPECT_FALSE(source->isUnderWay());
    EXPECT_EQ(view.levelOf("no metars founded. Download stopped"_q), 3);
}

TEST_F(WeatherDownloadTest, ExternalAddressesAreToldOneByOne)
{
    settings->setWxServerType(3);
    settings->setUrlExternMetar(server.url("/m%Y.txt"_q));
    server.serve("/m2019.txt", "EDDF");
    source->download(1);
    EXPECT_EQ(texts, QStringList("[METAR]EDDF[/METAR]\n"_q));
    EXPECT_EQ(view.levelOf("(Controller) - Download Synop - Url-Error"_q), 3);

    settings->setUrlExternSynop(server.url("/none"_q));
    QTimer::singleShot(0, source.get(), [this] { source->download(1); });
    source->download(1);
    EXPECT_EQ(texts.mid(1), QStringList("[SYNOP][/SYNOP]\n"_q)) << "instead of the METARs";
    EXPECT_EQ(view.linesWith("being downloaded already"_q), 1);
    EXPECT_EQ(view.levelOf("(Controller) - Download Synop Error: "_q), 3);
}

} // namespace

#include "weather/output/WeatherWrapper.h"

#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRandom.h"
#include "weather/output/records/NewWeatherText.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using aviation::Position;
using aviation::weather::Grib;
using aviation::weather::Metar;
using aviation::weather::Station;
using aviation::weather::Synop;

namespace {

class WeatherWrapperTest : public ::testing::Test
{
protected:
    WeatherWrapperTest()
    {
        wrapper.addAirports({{QStringLiteral("Frankfurt"), QStringLiteral("EDDF"),
                              QStringLiteral("Germany"), 50.03, 8.57, 364},
                             {QStringLiteral("Hahn"), QStringLiteral("EDFH"),
                              QStringLiteral("Germany"), 49.95, 7.26, 1650}});
        wrapper.addAirport({QString::fromUtf8("Zürich \xF0\x9D\x94\xB8"), QStringLiteral("LSZH"),
                            QStringLiteral("Switzerland"), 47.46, 8.55, 1416});
    }

    /// True if a signal of the spy carried this text.
    static bool Told(const QSignalSpy& spy, int argument, const QString& text)
    {
        return std::any_of(spy.begin(), spy.end(), [&](const QList<QVariant>& arguments) {
            return arguments.at(argument).toString() == text;
        });
    }

    const Position atFrankfurt{50.0, 8.6};
    FakeClock clock{2019, 7, 1, 12, 30};
    FakeRandom random;
    Settings settings{QString(), random};
    WeatherWrapper wrapper{settings, random};
    QSignalSpy debugSpy{&wrapper, &WeatherWrapper::sigDebugString};
    QSignalSpy progressSpy{&wrapper, &WeatherWrapper::sigProgress};
};

TEST_F(WeatherWrapperTest, keepsAirportsWithTheirFullNames)
{
    Station station;
    EXPECT_EQ(wrapper.airportCount(), 3U);
    ASSERT_TRUE(wrapper.getStation(QStringLiteral("LSZH"), station));
    EXPECT_EQ(station.icao(), L"LSZH");
    EXPECT_EQ(station.name(), L"Z\u00FCrich \U0001D538");
    EXPECT_EQ(station.country(), L"Switzerland");
    EXPECT_EQ(station.elevation(), 1416);
    EXPECT_EQ(station.latitude(), 47.46);
    EXPECT_FALSE(wrapper.getStation(QStringLiteral("KJFK"), station));
    EXPECT_EQ(station.icao(), L"LSZH");

    wrapper.NearestAirport(atFrankfurt, station);
    EXPECT_EQ(station.icao(), L"EDDF");
    std::vector<Station> stations;
    wrapper.StationsInRange(atFrankfurt, 60, stations);
    ASSERT_EQ(stations.size(), 2U);
    EXPECT_EQ(stations[1].icao(), L"EDFH");
}

TEST_F(WeatherWrapperTest, fillsAndSearchesTheStore)
{
    wrapper.setWeatherStations(
        QStringLiteral("106370 EDDF   FRANKFURT/MAIN-AIRP DL 5003N 00836E 0112   \r\n"));
    EXPECT_EQ(wrapper.stationCount(), 1U);
    EXPECT_TRUE(
        wrapper.initializeWeather(QStringLiteral("EDDF 011220Z 27010KT 9999 FEW030 15/08 Q1013\n"
                                                 "XXXX 011220Z 27010KT 9999 FEW030 15/08 Q1013\n"),
                                  1));
    EXPECT_TRUE(wrapper.initializeWeather(
        QStringView(u"AAXX 01123 10637 46/99 /0909=AAXX 01123 99999 46/99 /0909="), 2));
    EXPECT_TRUE(wrapper.initializeWeather(
        QStringLiteral("GRIB 01120 00000 99500 10085 99013 15250 18007\n"), 3));
    EXPECT_TRUE(
        wrapper.initializeWeather(QStringLiteral("TAF EDDF 011100Z 0112/0218 W\u00FCrzig\n\n"), 5));
    EXPECT_FALSE(wrapper.initializeWeather(QStringLiteral("text"), 4));
    EXPECT_EQ(wrapper.metarCount(), 1U);
    EXPECT_EQ(wrapper.synopCount(), 1U);
    EXPECT_EQ(wrapper.gribCount(), 1U);
    EXPECT_EQ(wrapper.tafCount(), 1U);
    EXPECT_EQ(wrapper.getMetars().size(), 1U);
    EXPECT_EQ(wrapper.failedMetarStations(), QStringList(QStringLiteral("XXXX")));
    EXPECT_EQ(wrapper.failedSynopStations(), QStringList(QStringLiteral("99999")));
    EXPECT_EQ(wrapper.GetTaf(QStringLiteral("EDDF")),
              QStringLiteral("EDDF 011100Z 0112/0218 W\u00FCrzig"));
    EXPECT_TRUE(wrapper.GetTaf(QStringLiteral("EDFH")).isEmpty());

    Metar metar;
    Synop synop;
    Grib grib;
    EXPECT_TRUE(wrapper.SearchMetar(atFrankfurt, metar));
    EXPECT_TRUE(wrapper.SearchSynop(atFrankfurt, synop));
    EXPECT_TRUE(wrapper.SearchGrib(atFrankfurt, grib));
    EXPECT_EQ(metar.elevation(), 364);
    EXPECT_EQ(synop.name().substr(0, 9), L"FRANKFURT");
    EXPECT_EQ(grib.wind().Speed, 7.0F);

    clock.Advance(std::chrono::hours(8));
    EXPECT_EQ(wrapper.deleteOldSynops(25200), 1);
    EXPECT_EQ(wrapper.synopCount(), 0U);
}

TEST_F(WeatherWrapperTest, passesProgressAndLogOn)
{
    wrapper.initializeWeather(QStringLiteral("EDDF 011220Z 27010KT 9999 15/08 Q1013\n"), 1);
    EXPECT_TRUE(Told(progressSpy, 2, QStringLiteral("Initialize of metar data")));
    EXPECT_TRUE(
        Told(debugSpy, 0, QStringLiteral("(WeatherManager) - metar initialization completed: 1")));
    EXPECT_EQ(debugSpy.last().at(1).toInt(), loglevel::kNotification);
    EXPECT_EQ(progressSpy.last().at(0).toLongLong(), 0);
    EXPECT_EQ(progressSpy.last().at(1).toLongLong(), 0);
}

TEST_F(WeatherWrapperTest, keepsTheFirstReportOfAStationFromTheNoaaSourceOnly)
{
    const QString text = QStringLiteral("EDDF 011220Z 27010KT 9999 15/08 Q1013\n"
                                        "EDDF 011150Z 27020KT 9999 15/08 Q1013\n");
    for (const auto& [source, count] : {std::pair(3, 1U), std::pair(2, 2U), std::pair(0, 2U)}) {
        settings.setWeatherSource(source);
        wrapper.initializeWeather(text, 1);
        EXPECT_EQ(wrapper.metarCount(), count) << source;
    }
    EXPECT_EQ(wrapper.getMetars().front().reportText(), L"EDDF 011220Z 27010KT 9999 15/08 Q1013");
}

TEST_F(WeatherWrapperTest, composesWithTheOptionsAsTheyStandAndLogsTheRecord)
{
    Metar metar(L"EDDF 011220Z 27010KT 9999 FEW030 15/08 Q1013");
    metar.Decode();
    random.setNumbers({0, 5});
    NewWeather record;
    EXPECT_EQ(wrapper.GenerateWeather(metar, {}, {}, record, 3.0, atFrankfurt), 0);
    EXPECT_EQ(record.Wind[0].Dir, 49698);
    EXPECT_EQ(record.nCloudCtr, 2);
    ASSERT_EQ(debugSpy.size(), 1);
    EXPECT_EQ(debugSpy[0].at(0).toString().toStdString(), NewWeatherText(record));
    EXPECT_EQ(debugSpy[0].at(1).toInt(), loglevel::kDebug);

    settings.setGenerateCirrus(false);
    settings.setSimVersion(aviation::fsid::kFsx);
    settings.setVisMax(50000);
    wrapper.GenerateWeather(metar, {}, {}, record, 3.0, atFrankfurt);
    EXPECT_EQ(record.nCloudCtr, 1);
    EXPECT_TRUE(Told(debugSpy, 0, QStringLiteral("(WeatherWrapper) - set max vis: 50km")));
}

TEST_F(WeatherWrapperTest, readsEveryCompositionOption)
{
    settings.setSimVersion(aviation::fsid::kXPlaneId8);
    settings.setInterfaceType(4);
    settings.setWeatherMode(1);
    settings.setVis9999(11);
    settings.setVisMin(12);
    settings.setVisMax(13);
    settings.setCavokCover(5);
    settings.setCavokHeight(14);
    const CompositionOptions numbers = CompositionOptions::FromSettings(settings);
    EXPECT_EQ(numbers.simulator, aviation::fsid::kXPlaneId8);
    EXPECT_EQ(numbers.interfaceType, 4);
    EXPECT_EQ(numbers.weatherMode, 1);
    EXPECT_EQ(numbers.vis9999, 11);
    EXPECT_EQ(numbers.visMin, 12);
    EXPECT_EQ(numbers.visMax, 13);
    EXPECT_EQ(numbers.cavokCover, 5);
    EXPECT_EQ(numbers.cavokHeight, 14);

    struct Switch
    {
        void (Settings::*set)(bool);
        bool CompositionOptions::*option;
    };
    const Switch switches[] = {
        {&Settings::setGustySurfaceWind, &CompositionOptions::gustySurfaceWind},
        {&Settings::setFsWindDwc, &CompositionOptions::directWindControl},
        {&Settings::setTurbulenceInCloud, &CompositionOptions::turbulenceInCloud},
        {&Settings::setGenerateStratus, &CompositionOptions::generateStratus},
        {&Settings::setMixedClouds, &CompositionOptions::mixedClouds},
        {&Settings::setGenerateCirrus, &CompositionOptions::generateCirrus},
        {&Settings::setIcingInClouds, &CompositionOptions::icingInClouds},
    };
    for (const Switch& one : switches) {
        for (const bool value : {false, true}) {
            (settings.*one.set)(value);
            EXPECT_EQ(CompositionOptions::FromSettings(settings).*one.option, value);
        }
    }
}

TEST(CompositionOptionsTest, drawsTheCavokCloudOnlyWhereTheSettingMeansRandom)
{
    struct Row
    {
        int cover;
        int height;
        int drawnCover;
        int drawnHeight;
    };
    for (const Row& row : {Row{7, 9999, 7, 9999}, Row{8, 5000, 4, 5000}, Row{1, 10000, 1, 5010},
                           Row{8, 10000, 4, 5022}})
    {
        FakeRandom random({10, 22});
        CompositionOptions options;
        options.cavokCover = row.cover;
        options.cavokHeight = row.height;
        options.drawRandomCavok(random);
        EXPECT_EQ(options.cavokCover, row.drawnCover);
        EXPECT_EQ(options.cavokHeight, row.drawnHeight);
    }
}

} // namespace

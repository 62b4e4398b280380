#include "weather/output/WeatherWrapper.h"

#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRandom.h"
#include "weather/output/records/NewWeatherText.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using aviation::Position;
using aviation::weather::Metar;
using aviation::weather::Station;

namespace {

class WeatherWrapperTest : public ::testing::Test
{
protected:
    /// True if a signal of the spy carried this text.
    static bool told(const QSignalSpy& spy, int argument, const QString& text)
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

TEST_F(WeatherWrapperTest, KeepsTextsWholeOnTheirWayToTheStoreAndBack)
{
    wrapper.addAirport({QString::fromUtf8("Zürich \xF0\x9D\x94\xB8"), QStringLiteral("LSZH"),
                        QStringLiteral("Switzerland"), 47.46, 8.55, 1416});
    Station station;
    ASSERT_TRUE(wrapper.getStation(QStringLiteral("LSZH"), station));
    EXPECT_EQ(station.icao() + station.name() + station.country(),
              L"LSZHZ\u00FCrich \U0001D538Switzerland");
    EXPECT_EQ(station.elevation(), 1416);
    EXPECT_EQ(station.latitude(), 47.46);
    EXPECT_EQ(station.longitude(), 8.55);
    EXPECT_TRUE(
        wrapper.initializeWeather(QStringLiteral("TAF EDDF 011100Z 0112/0218 W\u00FCrzig\n\n"), 5));
    EXPECT_EQ(wrapper.GetTaf(QStringLiteral("EDDF")),
              QStringLiteral("EDDF 011100Z 0112/0218 W\u00FCrzig"));
    EXPECT_FALSE(wrapper.initializeWeather(QStringLiteral("text"), 4));
    wrapper.initializeWeather(QStringLiteral("XXXX 011220Z 27010KT 9999 15/08 Q1013\n"), 1);
    EXPECT_EQ(wrapper.failedMetarStations(), QStringList(QStringLiteral("XXXX")));
    wrapper.initializeWeather(QStringLiteral("AAXX 01123 99999 46/99 /0909="), 2);
    EXPECT_EQ(wrapper.failedSynopStations(), QStringList(QStringLiteral("99999")));
}

TEST_F(WeatherWrapperTest, PassesProgressAndLogOn)
{
    wrapper.addAirports({{QString(), QStringLiteral("EDDF"), QString(), 50.03, 8.57, 364}});
    wrapper.initializeWeather(QStringLiteral("EDDF 011220Z 27010KT 9999 15/08 Q1013\n"), 1);
    EXPECT_TRUE(told(progressSpy, 2, QStringLiteral("Initialize of metar data")));
    EXPECT_TRUE(
        told(debugSpy, 0, QStringLiteral("(WeatherManager) - metar initialization completed: 1")));
    EXPECT_EQ(debugSpy.last().at(1).toInt(), loglevel::kNotification);
    EXPECT_EQ(progressSpy.last().mid(0, 2), QList<QVariant>({0, 0}));
}

TEST_F(WeatherWrapperTest, KeepsTheFirstReportOfAStationFromTheNoaaSourceOnly)
{
    wrapper.addAirports({{QString(), QStringLiteral("EDDF"), QString(), 50.03, 8.57, 364}});
    const QString text = QStringLiteral("EDDF 011220Z 27010KT 9999 15/08 Q1013\n"
                                        "EDDF 011150Z 27020KT 9999 15/08 Q1013\n");
    for (const auto& [source, count] : {std::pair(2, 2U), std::pair(0, 2U), std::pair(3, 1U)}) {
        settings.setWeatherSource(source);
        wrapper.initializeWeather(text, 1);
        EXPECT_EQ(wrapper.metarCount(), count) << source;
    }
    EXPECT_EQ(wrapper.getMetars().front().reportText(), L"EDDF 011220Z 27010KT 9999 15/08 Q1013");
}

TEST_F(WeatherWrapperTest, ComposesWithTheOptionsAsTheyStandAndLogsTheRecord)
{
    Metar metar(L"EDDF 011220Z 27010KT 9999 FEW030 15/08 Q1013");
    metar.Decode();
    random.setNumbers({0, 5});
    NewWeather record;
    EXPECT_EQ(wrapper.GenerateWeather(metar, {}, {}, record, 3.0, atFrankfurt), 0);
    EXPECT_EQ(record.Wind[0].Dir, 49698);
    EXPECT_EQ(record.nCloudCtr, 2);
    ASSERT_EQ(debugSpy.size(), 1);
    EXPECT_EQ(debugSpy[0].at(0).toString().toStdString(), newWeatherText(record));
    EXPECT_EQ(debugSpy[0].at(1).toInt(), loglevel::kDebug);

    settings.setGenerateCirrus(false);
    wrapper.setSimulator(aviation::fsid::kFsx);
    settings.setVisMax(50000);
    wrapper.GenerateWeather(metar, {}, {}, record, 3.0, atFrankfurt);
    EXPECT_EQ(record.nCloudCtr, 1);
    EXPECT_TRUE(told(debugSpy, 0, QStringLiteral("(WeatherWrapper) - set max vis: 50km")));
}

TEST_F(WeatherWrapperTest, LogsTheRecordOnlyWhereDebugLinesAreTaken)
{
    for (const auto& [level, lines] :
         {std::pair(loglevel::kNotification, 0), std::pair(loglevel::kNothing, 0),
          std::pair(loglevel::kDebug, 1)})
    {
        debugSpy.clear();
        wrapper.setLeastLogLevel(level);
        NewWeather record;
        wrapper.GenerateWeather({}, {}, {}, record, 0.0, atFrankfurt);
        EXPECT_EQ(debugSpy.size(), lines) << level;
    }
}

TEST_F(WeatherWrapperTest, ReadsEveryCompositionOption)
{
    const std::tuple<void (Settings::*)(int), int CompositionOptions::*, int> numbers[] = {
        {&Settings::setInterfaceType, &CompositionOptions::interfaceType, 4},
        {&Settings::setWeatherMode, &CompositionOptions::weatherMode, 1},
        {&Settings::setVis9999, &CompositionOptions::vis9999, 11},
        {&Settings::setVisMin, &CompositionOptions::visMin, 12},
        {&Settings::setVisMax, &CompositionOptions::visMax, 13},
        {&Settings::setCavokCover, &CompositionOptions::cavokCover, 5},
        {&Settings::setCavokHeight, &CompositionOptions::cavokHeight, 14},
    };
    for (const auto& [set, option, value] : numbers) {
        (settings.*set)(value);
        EXPECT_EQ(CompositionOptions::fromSettings(settings).*option, value);
    }
    const std::pair<void (Settings::*)(bool), bool CompositionOptions::*> switches[] = {
        {&Settings::setGustySurfaceWind, &CompositionOptions::gustySurfaceWind},
        {&Settings::setFsWindDwc, &CompositionOptions::directWindControl},
        {&Settings::setTurbulenceInCloud, &CompositionOptions::turbulenceInCloud},
        {&Settings::setGenerateStratus, &CompositionOptions::generateStratus},
        {&Settings::setMixedClouds, &CompositionOptions::mixedClouds},
        {&Settings::setGenerateCirrus, &CompositionOptions::generateCirrus},
        {&Settings::setIcingInClouds, &CompositionOptions::icingInClouds},
    };
    for (const auto& [set, option] : switches) {
        for (const bool value : {false, true}) {
            (settings.*set)(value);
            EXPECT_EQ(CompositionOptions::fromSettings(settings).*option, value);
        }
    }
}

TEST(CompositionOptionsTest, DrawsTheCavokCloudOnlyWhereTheSettingMeansRandom)
{
    const std::array<int, 4> rows[] = {
        {7, 9999, 7, 9999}, {8, 5000, 4, 5000}, {1, 10000, 1, 5010}, {8, 10000, 4, 5022}};
    for (const auto& [cover, height, drawnCover, drawnHeight] : rows) {
        FakeRandom random({10, 22});
        CompositionOptions options;
        options.cavokCover = cover;
        options.cavokHeight = height;
        options.drawRandomCavok(random);
        EXPECT_EQ(options.cavokCover, drawnCover);
        EXPECT_EQ(options.cavokHeight, drawnHeight);
    }
}

} // namespace

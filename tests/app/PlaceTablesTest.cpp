#include "app/PlaceTables.h"

#include "nav/NavdataIntern.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeMainView.h"
#include "weather/output/WeatherWrapper.h"

namespace {

class FewAirports final : public NavdataBase
{
public:
    bool readAirports(const QString& /*file*/) override
    {
        Airports = QVector<QAirport>(9);
        return true;
    }
    bool readAirportNames(const QString& file) override { return readAirports(file); }
};

class PlaceTablesTest : public SettingsFixture
{
protected:
    void SetUp() override
    {
        SettingsFixture::SetUp();
        settings = std::make_unique<Settings>(mainFile(), m_random);
        settings->setWorkFolder(path("work/"));
        store = std::make_unique<WeatherWrapper>(*settings, m_random);
    }

    FakeMainView view;
    std::unique_ptr<Settings> settings;
    std::unique_ptr<WeatherWrapper> store;
};

TEST_F(PlaceTablesTest, LoadsTheTablesAndTheUsersAirports)
{
    write(path("work/airportsadd.dat"), "# icao;name\nZZZA;Home;Germany;100;50,5;8,5;\n");
    settings->setAiracUse(true);
    PlaceTables tables(*settings, *store, view, [this](const QString& text, int level) {
        view.OnOutputDebugstring(text, level);
    });
    tables.setNavdata(std::make_unique<FewAirports>());
    tables.load();
    EXPECT_EQ(view.levelOf("Use intern ressource"_q), 3);
    EXPECT_EQ(view.levelOf("AIRAC data aren't read"_q), 2);
    EXPECT_EQ(view.linesWith("read additional airports"_q), 1);
    NavdataIntern intern;
    ASSERT_TRUE(intern.readAirports(QString()));
    const auto builtIn = static_cast<std::size_t>(intern.airports().size());
    const std::size_t airports = store->airportCount();
    EXPECT_EQ(airports, builtIn + 1);
    EXPECT_EQ(view.levelOf("(Controller Weather) - Airports: %1"_q.arg(airports)), 1);
    EXPECT_GT(store->stationCount(), 0U);
    EXPECT_TRUE(view.weatherPage.completer.contains("ZZZA"_q));
    aviation::weather::Station home;
    ASSERT_TRUE(store->getStation("ZZZA"_q, home));
    EXPECT_EQ(home.latitude(), 50.5);

    write(path("work/airportsadd.dat"),
          "ZZZA;Home;Germany;100;50,5;8,5;\nZZZB;New;Germany;100;51,5;8,5;\n");
    tables.readUserAirportsAgain();
    EXPECT_EQ(store->airportCount(), airports + 1) << "the unchanged one isn't added twice";
    EXPECT_TRUE(view.weatherPage.completer.contains("ZZZB"_q));
}

} // namespace

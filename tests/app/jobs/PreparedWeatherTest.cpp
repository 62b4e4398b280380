#include "app/jobs/PreparedWeather.h"

#include "app/base/StopFlag.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeFsInterface.h"
#include "tests/support/FakeMainView.h"
#include "weather/output/WeatherWrapper.h"

#include <QElapsedTimer>
#include <QTest>

#include <vector>

namespace {

class PreparedWeatherTest : public SettingsFixture
{
protected:
    static constexpr int kSettleMs = 40;

    void SetUp() override
    {
        SettingsFixture::SetUp();
        settings = std::make_unique<Settings>(mainFile(), m_random);
        store = std::make_unique<WeatherWrapper>(*settings, m_random);
        worker = std::make_unique<WeatherWorker>(*store, *settings, nullptr);
        connectWorker = std::make_unique<ConnectWorker>(*settings, interfaces, stop);
        prepared = std::make_unique<PreparedWeather>(PreparedWeather::Parts{
            *settings, view, *worker, *connectWorker, stop,
            [this](const QString& text, int level) { view.OnOutputDebugstring(text, level); },
            [this](const Job& job) { posted.push_back(job.id); }, [] { return false; }, kSettleMs});
    }
    void TearDown() override
    {
        prepared.reset();
        connectWorker.reset();
        worker.reset();
        store.reset();
        settings.reset();
        SettingsFixture::TearDown();
    }

    FakeMainView view;
    FakeSimulator simulator;
    FakeInterfaceFactory interfaces{simulator};
    StopFlag stop;
    std::unique_ptr<Settings> settings;
    std::unique_ptr<WeatherWrapper> store;
    std::unique_ptr<WeatherWorker> worker;
    std::unique_ptr<ConnectWorker> connectWorker;
    std::unique_ptr<PreparedWeather> prepared;
    std::vector<int> posted;
};

TEST_F(PreparedWeatherTest, WhatIsWrittenSettlesBeforeTheSimulatorIsTold)
{
    prepared->take(weatherjob::kFsuipcAll, QString(), 0);
    EXPECT_EQ(posted, std::vector({connectjob::kSetWeather})) << "nothing was written";
    posted.clear();
    QElapsedTimer time;
    time.start();
    prepared->take(weatherjob::kThemeFile, "base"_q, weathererror::kThemeWritten);
    prepared->take(weatherjob::kXPlane12Record, QString(), 0);
    EXPECT_TRUE(posted.empty());
    ASSERT_TRUE(QTest::qWaitFor([this] { return posted.size() == 2; }));
    EXPECT_GE(time.elapsed(), kSettleMs);
    EXPECT_EQ(posted, std::vector({connectjob::kSetTheme, connectjob::kSetXPlane12Weather}));
}

TEST_F(PreparedWeatherTest, WhatSettlesIsForItsOwnConnection)
{
    prepared->take(weatherjob::kXPlane12Record, QString(), 0);
    EXPECT_TRUE(prepared->drop()) << "owed to the next one";
    EXPECT_FALSE(prepared->drop());
    prepared->take(weatherjob::kThemeFile, "base"_q, weathererror::kThemeWritten);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !posted.empty(); }));
    EXPECT_EQ(posted, std::vector({connectjob::kSetTheme}));
}

TEST_F(PreparedWeatherTest, NothingIsPostedOrWrittenOnceTheProgramEnds)
{
    settings->setSimPath(path("xplane"));
    QDir().mkpath(path("xplane"));
    prepared->take(weatherjob::kThemeFile, "base"_q, weathererror::kThemeWritten);
    prepared->take(weatherjob::kXPlaneFiles, QString(), 0);
    stop.raise();
    QTest::qWait(3 * kSettleMs);
    EXPECT_TRUE(posted.empty());
    EXPECT_FALSE(QFile::exists(path("xplane/METAR.rwx")));
}

} // namespace

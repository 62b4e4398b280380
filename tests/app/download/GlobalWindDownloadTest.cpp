#include "app/download/GlobalWindDownload.h"

#include "sim/ConnectJobs.h"
#include "tests/app/download/ServerFixture.h"

#include <QTimer>

#include <vector>

namespace {

class GlobalWindDownloadTest : public ServerFixture
{
protected:
    std::vector<int> postedBy(GlobalWindDownload& source)
    {
        posted.clear();
        source.download();
        return posted;
    }
    GlobalWindDownload make()
    {
        return {context(), reporting(), [this](const Job& job) {
                    posted.push_back(job.id);
                    contents = job.data.isEmpty() ? contents : contents + job.data;
                }};
    }

    std::vector<int> posted;
    QByteArray contents;
};

TEST_F(GlobalWindDownloadTest, FilesGoToARemoteSimulatorOnce)
{
    GlobalWindDownload source = make();
    server.serve("/one/global_turbulence.grib", "turbulence");
    EXPECT_TRUE(postedBy(source).empty()) << "the wind file is missing";
    EXPECT_EQ(view.levelOf("(Controller) - Download XPlane Global grib Error: 203"_q), 3);

    server.serve("/one/global_wind.grib", "wind ");
    QTimer::singleShot(0, [&source] { source.download(); });
    EXPECT_EQ(postedBy(source), std::vector({22, 23})) << "a second call meanwhile does nothing";
    EXPECT_EQ(contents, "wind turbulence");
    EXPECT_EQ(postedBy(source), std::vector({24}));
    EXPECT_EQ(server.count("/one/global_wind.grib"), 2);

    settings->setWeatherServer(settings->serverTwo());
    server.serve("/two/global_wind.grib", "wind");
    EXPECT_EQ(postedBy(source), std::vector({22, 24})) << "without turbulence job 24 has no other";
}

TEST_F(GlobalWindDownloadTest, FilesAreWrittenForALocalSimulator)
{
    GlobalWindDownload source = make();
    server.serve("/one/global_wind.grib", "wind");
    settings->setSimPath(path("xplane"));
    settings->setFlightplanPathXPlane(path("xplane"));
    QDir().mkpath(path("xplane"));
    EXPECT_EQ(postedBy(source), std::vector({24}));
    EXPECT_EQ(read(path("xplane/global_winds.grib")), "wind");

    settings->setSimPath(path("missing"));
    settings->setWeatherServer(settings->serverTwo());
    server.serve("/two/global_wind.grib", "wind");
    EXPECT_EQ(postedBy(source), std::vector({24}));
    EXPECT_EQ(view.levelOf("missing/global_winds.grib: "_q), 3);
}

} // namespace

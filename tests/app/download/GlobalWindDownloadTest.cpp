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
    server.serve("/one/global_wind.grib", "wind ");
    QTimer::singleShot(0, [&source] { source.download(); });
    EXPECT_EQ(postedBy(source), std::vector({22, 23})) << "a second call meanwhile does nothing";
    EXPECT_EQ(contents, "wind turbulence");
    source.tryFailedAgain();
    EXPECT_EQ(postedBy(source), std::vector({24}));
    EXPECT_EQ(server.count("/one/global_wind.grib"), 1) << "nothing has failed";

    settings->setWeatherServer(settings->serverTwo());
    server.serve("/two/global_wind.grib", "wind");
    EXPECT_EQ(postedBy(source), std::vector({22, 24})) << "without turbulence job 24 has no other";
}

TEST_F(GlobalWindDownloadTest, TheWeatherIsLoadedWithoutTheWindWhichTheNextDownloadAsksForAgain)
{
    GlobalWindDownload source = make();
    EXPECT_EQ(postedBy(source), std::vector({24}));
    EXPECT_EQ(view.levelOf("(Controller) - Download XPlane Global grib Error: 203"_q), 3);
    server.serve("/one/global_turbulence.grib", "turbulence");
    server.serve("/one/global_wind.grib", "wind ");
    EXPECT_EQ(postedBy(source), std::vector({24}));
    EXPECT_EQ(server.count("/one/global_wind.grib"), 1) << "the address counts as used";
    source.tryFailedAgain();
    EXPECT_EQ(postedBy(source), std::vector({22, 23}));
}

TEST_F(GlobalWindDownloadTest, FilesAreWrittenWhereTheSimulatorsFolderIsWritable)
{
    GlobalWindDownload source = make();
    server.serve("/one/global_wind.grib", "wind");
    settings->setSimPath(path("xplane"));
    settings->setFlightplanPathXPlane(path("another"));
    EXPECT_EQ(postedBy(source), std::vector({24}));
    EXPECT_EQ(view.levelOf("xplane/global_winds.grib: "_q), 3);

    QDir().mkpath(path("xplane"));
    source.tryFailedAgain();
    EXPECT_EQ(postedBy(source), std::vector({24}));
    EXPECT_EQ(read(path("xplane/global_winds.grib")), "wind");
}

} // namespace

#include "app/download/GlobalWindFile.h"

#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

namespace {

TEST(GlobalWindFileTest, TakesTheLatestRunThatIsOut)
{
    const std::tuple<int, int, const char*, const char*> rows[] = {
        {3, 0, "20240229", "gfs.t18z.wafs_grb45f06.grib2"},
        {5, 59, "20240229", "gfs.t18z.wafs_grb45f06.grib2"},
        {6, 0, "20240301", "gfs.t00z.wafs_grb45f06.grib2"},
        {0, 0, "20240229", "gfs.t18z.wafs_grb45f06.grib2"},
        {12, 30, "20240301", "gfs.t06z.wafs_grb45f06.grib2"},
        {23, 59, "20240301", "gfs.t12z.wafs_grb45f06.grib2"},
    };
    for (const auto& [hour, minute, date, name] : rows) {
        const FakeClock clock(2024, 3, 1, hour, minute);
        const GlobalWindFile file = GlobalWindFile::at(clock.NowUtc());
        EXPECT_EQ(file.date, QLatin1String(date)) << hour;
        EXPECT_EQ(file.name, QLatin1String(name)) << hour;
    }
}

} // namespace

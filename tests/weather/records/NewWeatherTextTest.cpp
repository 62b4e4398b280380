#include "weather/output/records/NewWeatherText.h"

#include <gtest/gtest.h>

namespace {

TEST(NewWeatherTextTest, PrintsEveryFieldInTheOrderOfTheBridge)
{
    NewWeather record;
    record.Command = 2;
    record.setIcao(L"EDDF");
    record.Lat = 50.0333333;
    record.Lon = -8.5;
    record.Elev = 7271936;
    record.Signature = 0xFFFFFFFFU;
    record.Press = 16211;
    record.Vis = {708, -500, 622, 0};
    record.nTempCtr = 2;
    record.Temp[0] = {120, -3, 0, -5};
    record.Temp[1] = {320, -4, 0, -6};
    record.nWindCtr = 1;
    record.Wind[0] = {210, 12, 5, 49152, 1, 0, 3640, 65000, 500};
    record.nCloudCtr = 1;
    record.Cloud[0] = {1800, 1300, 50, 7, 9, 1, 1, -112, 1, 2, 0, 0};
    record.nUpperVisCtr = 1;
    record.UpperVis[0] = {850, 709, 994, 0};
    EXPECT_EQ(newWeatherText(record),
              "Command=2:Flag=0:Signature=-1:Icao=EDDF:Dynamic=0:Seconds=0:Lat=50.033333:"
              "Lon=-8.500000:Elev=7271936:Timestamp=0:Press=16211:Drift=0:"
              "UpperAlt=708:LowerAlt=-500:Range=622:"
              "nTempCtr=2:nWindCtr=1:nCloudCtr=1:nUpperVisCtr=1:"
              "TempLayer{Alt=120:Day=-3:DayNightVar=0:Dew=-5|Alt=320:Day=-4:DayNightVar=0:Dew=-6|}:"
              "WindLayer{UpperAlt=210:Speed=12:Gust=5:Dir=49152:Turbulence=1:Shear=0:Variance=3640:"
              "SpeedFract=65000:CapAbove=500|}:"
              "VisLayer{UpperAlt=850:LowerAlt=709:Range=994|}:"
              "CloudLayer{UpperAlt=1800:LowerAlt=1300:Dev=50:Cover=7:Type=9:Turbulence=1:Icing=1:"
              "PrecipBase=-112:PrecipType=1:PrecipRate=2:TopShape=0|}");
}

TEST(NewWeatherTextTest, CountsBeyondTheSlotsReadNoForeignMemory)
{
    NewWeather record;
    record.nTempCtr = -7;
    record.nWindCtr = 1000;
    const std::string text = newWeatherText(record);
    EXPECT_NE(text.find(":TempLayer{}:"), std::string::npos);
    EXPECT_EQ(std::count(text.begin(), text.end(), '|'), 24);
}

} // namespace

#include "weather/output/records/XPlaneWeatherText.h"

#include <gtest/gtest.h>

namespace {

XPlaneWeather SmallRecord()
{
    XPlaneWeather record;
    record.Press = 29.921F;
    record.Vis = 12000.25F; // a tie, goes to the even digit
    record.Temp = -3.75F;
    record.Dew = -5.0F;
    record.RainPercent = 0.25F;
    record.ThunderstromPercent = 0.8F;
    record.RateChangePercent = 0.6F;
    record.WX = "EDDF 121220Z 27012KT";
    record.Clouds[0] = {2, 0.375F, 1300.5F, 1801.5F};
    XPlaneWindLayer surface;
    surface.Alt = 110.96F;
    surface.Dir = 270.0F;
    surface.Speed = 12.5F;
    surface.Turbulence = 0.4167F;
    surface.ShearDir = 5.0F;
    surface.ShearSpeed = 5.0F;
    surface.Further[0] = 1.5F;
    XPlaneWindLayer blocked;
    blocked.Speed = -1.0F;
    record.Winds = {surface, blocked};
    return record;
}

const std::string kValues =
    "Press=29.92:Vis=12000.2:Temp=-3.8:Dew=-5.0:RainPercent=0.2:ThunderstromPercent=0.800000:"
    "WindTurbulencePercent=0.000000:RateChangePercent=0.6:WaveDir=0:WaveHeight=0.0:WaveSpeed=0.0:"
    "WaveLenght=0.0:TempTropo=-99.0:TropoAltMeter=-99.0";
const std::string kClouds =
    "Cloudlayer{Type=2:Coverage=0.38:Base=1300:Top=1802|"
    "Type=0:Coverage=0.00:Base=0:Top=0|Type=0:Coverage=0.00:Base=0:Top=0|}:";

TEST(XPlaneWeatherText, HasNoColonInFrontOfTheClouds)
{
    EXPECT_EQ(
        XPlaneWeatherText(SmallRecord()),
        kValues + kClouds
            + "WindLayer{Alt=111:Dir=270.0:Speed=12:Turbulence=0.4:ShearDir=5.0:ShearSpeed=5.0|"
              "Alt=0:Dir=0.0:Speed=-1:Turbulence=0.0:ShearDir=0.0:ShearSpeed=0.0|}");
}

TEST(XPlaneWeatherText, FormWithWeatherTextHasShortWinds)
{
    EXPECT_EQ(XPlaneWeatherWxText(SmallRecord()),
              kValues + ":WX=EDDF 121220Z 27012KT:" + kClouds
                  + "WindLayer{111:270.0:12:0.4:5.0:5.0:1.5:0.0|"
                    "0:0.0:-1:0.0:0.0:0.0:0.0:0.0|}");
}

TEST(XPlaneWeatherText, NoWindsLeaveTheFrame)
{
    EXPECT_EQ(WindLayersLongText({}), "WindLayer{}");
    EXPECT_EQ(WindLayersShortText({}), "WindLayer{}");
}

} // namespace

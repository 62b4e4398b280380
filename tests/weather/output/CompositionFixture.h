#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "aviation/support/NumberText.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeRandom.h"
#include "weather/output/WeatherComposition.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

/// Reports for the composition, decoded from their texts, at 12:30 UTC on the first of the month.
class CompositionTest : public ::testing::Test
{
protected:
    static constexpr double kLatitude = 50.0;
    static constexpr double kLongitude = 8.5;

    static aviation::Position here() { return {kLatitude, kLongitude}; }
    /// As many nautical miles north of the METAR.
    static aviation::Position north(double nm) { return {kLatitude + nm / 60.1, kLongitude}; }

    static aviation::weather::Metar metarOf(const std::string& text, std::int32_t elevation = 0,
                                            const aviation::Position& position = here())
    {
        aviation::weather::Metar metar(aviation::widen(text));
        metar.setElevation(elevation);
        metar.setPosition(position);
        metar.Decode();
        return metar;
    }

    static aviation::weather::Synop synopOf(const std::string& text,
                                            const aviation::Position& position = here())
    {
        aviation::weather::Synop synop(aviation::widen(text));
        synop.setPosition(position);
        synop.Decode();
        return synop;
    }

    /// A SYNOP that says nothing but its cloud codes.
    static aviation::weather::Synop cloudCodes(int low, int middle, int high,
                                               const aviation::Position& position = here())
    {
        const std::string codes =
            std::to_string(low) + std::to_string(middle) + std::to_string(high);
        return synopOf("AAXX 01123 10637 46/// /0000 8/" + codes, position);
    }

    /// One level of an upper-air record.
    struct Level
    {
        int code;                          ///< tens of hPa
        int metres;                        ///< height
        const char* temperature = "15050"; ///< TTTDD
        const char* wind = "27010";        ///< dddff
    };

    static aviation::weather::Grib gribOf(const std::vector<Level>& levels,
                                          const char* surfaceWind = "18007")
    {
        std::string text = std::string("GRIB 01120 00000 99500 10085 99013 15250 ") + surfaceWind;
        for (const Level& level : levels) {
            text += " " + aviation::integerText(level.code, 2)
                    + aviation::integerText(level.metres, 5) + " " + level.temperature + " "
                    + level.wind;
        }
        aviation::weather::Grib grib(aviation::widen(text));
        grib.Decode();
        return grib;
    }

    NewWeather compose(const aviation::weather::Metar& metar,
                       const aviation::weather::Synop& synop = {},
                       const aviation::weather::Grib& grib = {}, double magneticVariation = 0.0)
    {
        NewWeather record;
        EXPECT_EQ(
            composition::GenerateWeather(metar, synop, grib, record, magneticVariation, context),
            0);
        return record;
    }

    FakeClock clock{2019, 7, 1, 12, 30};
    FakeRandom random;
    std::vector<std::pair<std::string, int>> logged;
    CompositionContext context{{}, random, [this](const QString& text, int level) {
                                   logged.emplace_back(text.toStdString(), level);
                               }};
    CompositionOptions& options = context.options;
};

#pragma once

#include "aviation/Grib.h"
#include "aviation/Metar.h"
#include "aviation/Synop.h"
#include "tests/support/FakeRandom.h"
#include "weather/output/CompositionOptions.h"

#include <string>
#include <utility>
#include <vector>

/// Real-looking reports around one airport and what composing needs, for the X-Plane tests.
namespace xplanetest {

inline const aviation::Position kAirport(50.0, 8.5);
constexpr int kElevation = 364; ///< feet

inline aviation::Position NorthOfAirport(double nm)
{
    aviation::Position position = kAirport;
    position.MoveBy(0.0, nm);
    return position;
}

inline aviation::weather::Metar DecodedMetar(std::wstring text, double northNm = 0.0)
{
    aviation::weather::Metar metar(std::move(text));
    metar.setPosition(NorthOfAirport(northNm));
    metar.setElevation(kElevation);
    metar.Decode();
    return metar;
}

/// Wind 270/12 with a gust of 25, 25 km, 7 octas at 3333 feet, codes 5 4 1, 1 octa at 28000 feet.
inline const std::wstring kCloudySynop =
    L"AAXX 01123 10637 11575 72712 10050 20020 40132 82541 333 81078 91125";

inline aviation::weather::Synop DecodedSynop(double northNm, std::wstring text = kCloudySynop)
{
    aviation::weather::Synop synop(std::move(text));
    synop.setPosition(NorthOfAirport(northNm));
    synop.Decode();
    return synop;
}

/// Moist up to 4780 feet, dry from 9881 feet on; tropopause at 37729 feet.
inline aviation::weather::Grib DecodedGrib(const std::wstring& clouds = L"")
{
    aviation::weather::Grib grib(L"GRIB 00000 00000 99500 10085 99013 15050 26008 "
                                 L"0000111 12002 27010 9200762 10000 27020 8501457 05002 28025 "
                                 L"7003012 03150 29035 5005574 21150 30050 3009164 45350 31080 "
                                 L"8811500 56355 30090 "
                                 + clouds);
    grib.Decode();
    return grib;
}

/// Options of a fresh installation; the random numbers make a cirrus of 3 octas at 40000 feet.
struct Surroundings
{
    explicit Surroundings(std::vector<std::int32_t> numbers = {7000, 3})
        : random(std::move(numbers))
        , context{{}, random, [this](const QString& line, int level) {
                      log.emplace_back(line.toStdString(), level);
                  }}
    {}

    FakeRandom random;
    std::vector<std::pair<std::string, int>> log;
    CompositionContext context;
};

} // namespace xplanetest

#include "weather/store/NearestIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

using aviation::Position;
using aviation::weather::IndexedPlace;
using aviation::weather::NearestIndex;
using aviation::weather::searchDistanceNm;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// The rules of the search as a plain walk, on its own formula.
double walkDistance(const Position& p, const IndexedPlace& q)
{
    constexpr double kRadians = 3.141592653589793;
    if (q.latitude == 0.0 && q.longitude == 0.0) {
        return 99999.0;
    }
    if (p.latitude() == q.latitude && p.longitude() == q.longitude) {
        return 0.0;
    }
    const double latP = p.latitude() * kRadians / 180.0;
    const double latQ = q.latitude * kRadians / 180.0;
    const double turn = q.longitude * kRadians / 180.0 - p.longitude() * kRadians / 180.0;
    const double x =
        std::sin(latP) * std::sin(latQ) + std::cos(latP) * std::cos(latQ) * std::cos(turn);
    return x > 1.0 ? 0.0 : std::acos(x < -1.0 ? -1.0 : x) * 6378.137 / 1.852;
}

std::vector<double> walkDistances(const std::vector<IndexedPlace>& places, const Position& p)
{
    std::vector<double> distances;
    for (const IndexedPlace& place : places) {
        distances.push_back(walkDistance(p, place));
    }
    return distances;
}

std::vector<std::size_t> walkWithin(const std::vector<double>& distances, double range)
{
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < distances.size(); ++i) {
        if (distances[i] < range) {
            found.push_back(i);
        }
    }
    return found;
}

std::size_t walkNearest(const std::vector<double>& distances, double limit)
{
    std::size_t found = NearestIndex::kNone;
    for (std::size_t i = 0; i < distances.size(); ++i) {
        if (distances[i] < limit) {
            limit = distances[i];
            found = i;
        }
    }
    return found;
}

using Random = std::mt19937;

double between(Random& random, double low, double high)
{
    return low + (high - low) * static_cast<double>(random()) / 4294967295.0;
}

std::vector<IndexedPlace> wholeWorld(Random& random)
{
    std::vector<IndexedPlace> places;
    for (int i = 0; i < 700; ++i) {
        places.push_back({between(random, -90, 90), between(random, -180, 180)});
    }
    return places;
}

/// Half a degree of rounding noise decides nothing here: many places have an exact twin.
std::vector<IndexedPlace> coarseGridWithTwins(Random& random)
{
    std::vector<IndexedPlace> places;
    for (int i = 0; i < 600; ++i) {
        places.push_back(
            {std::floor(between(random, -10, 10)), std::floor(between(random, -10, 10))});
    }
    return places;
}

/// Metres and less apart, where the exact formula rounds to steps.
std::vector<IndexedPlace> crowd(Random& random)
{
    std::vector<IndexedPlace> places;
    for (int i = 0; i < 250; ++i) {
        const double size = std::pow(10.0, between(random, -12, -4));
        places.push_back({50.0 + between(random, -size, size), 8.0 + between(random, -size, size)});
    }
    return places;
}

std::vector<IndexedPlace> polesAndDateLine(Random& random)
{
    std::vector<IndexedPlace> places{{90, 0}, {90, 77}, {-90, 10}, {-90, -10}, {0, 180}, {0, -180}};
    for (int i = 0; i < 300; ++i) {
        const double sign = i % 2 == 0 ? 1.0 : -1.0;
        places.push_back({sign * between(random, 89.99, 90), between(random, -180, 180)});
        places.push_back({between(random, -90, 90), sign * between(random, 179.999, 180.001)});
    }
    return places;
}

/// What broken tables could hold.
std::vector<IndexedPlace> oddPlaces(Random& random)
{
    std::vector<IndexedPlace> places{
        {0, 0},     {kNaN, 5},       {5, kNaN},      {kInfinity, 5}, {0, -0.0},    {-0.0, 30},
        {0.0, 30},  {1e300, -1e300}, {95, 10},       {85, 190},      {-40, 999.9}, {12, 1e6},
        {12, 1e15}, {-1e15, 12},     {5, kInfinity}, {0, 1e-300},    {99.9, 359},  {-99.9, -999.9}};
    for (int i = 0; i < 60; ++i) {
        places.push_back({between(random, -120, 120), between(random, -1500, 1500)});
    }
    return places;
}

std::vector<Position> queriesFor(const std::vector<IndexedPlace>& places, Random& random)
{
    std::vector<Position> queries{{0, 0},         {90, 0},         {-90, 45}, {0, 180},
                                  {0, -180},      {12, 1e6},       {kNaN, 1}, {1, kNaN},
                                  {kInfinity, 5}, {1e300, -1e300}, {95, 370}, {-95, -999}};
    for (int i = 0; i < 60; ++i) {
        const IndexedPlace& a = places[random() % places.size()];
        const IndexedPlace& b = places[random() % places.size()];
        queries.emplace_back(a.latitude, a.longitude);
        queries.emplace_back((a.latitude + b.latitude) / 2, (a.longitude + b.longitude) / 2);
        queries.emplace_back(a.latitude + 0.5, a.longitude + 0.5);
        queries.emplace_back(a.latitude + between(random, -1e-9, 1e-9), a.longitude);
        queries.emplace_back(-a.latitude, a.longitude + 180);
        queries.emplace_back(between(random, -90, 90), between(random, -180, 180));
    }
    return queries;
}

TEST(NearestIndexTest, AnswersAsTheWalkDoes)
{
    for (const auto make : {wholeWorld, coarseGridWithTwins, crowd, polesAndDateLine, oddPlaces}) {
        Random random(20190701);
        const std::vector<IndexedPlace> places = make(random);
        const NearestIndex index(places);
        for (const Position& query : queriesFor(places, random)) {
            SCOPED_TRACE(std::to_string(query.latitude()) + ", "
                         + std::to_string(query.longitude()));
            const std::vector<double> walked = walkDistances(places, query);
            for (const double limit : {3000.0, 1000.0, 250.0, 20.0, 1e-4, 0.0, -1.0, kNaN, 20000.0})
            {
                ASSERT_EQ(index.nearest(query, limit), walkNearest(walked, limit)) << limit;
            }
            for (const double range : {0.0, 1e-4, 20.0, 100.0, 20000.0, 100000.0, -5.0}) {
                ASSERT_EQ(index.within(query, range), walkWithin(walked, range)) << range;
            }
        }
    }
}

TEST(NearestIndexTest, LimitItselfIsTooFar)
{
    const NearestIndex index({{50, 8}});
    const Position away(40, 8);
    const double distance = searchDistanceNm(away, Position(50, 8));
    EXPECT_EQ(index.nearest(away, distance), NearestIndex::kNone);
    EXPECT_EQ(index.nearest(away, std::nextafter(distance, 1e9)), 0U);
    EXPECT_TRUE(index.within(away, distance).empty());
}

} // namespace

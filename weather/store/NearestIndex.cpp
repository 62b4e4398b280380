#include "weather/store/NearestIndex.h"

#include "aviation/Angles.h"
#include "aviation/Units.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

namespace aviation::weather {

namespace {

constexpr double kEarthRadiusKm = 6378.137;
/// Points in a range of the tree that isn't split further.
constexpr std::size_t kLeafSize = 8;
constexpr std::uint32_t kLast = std::numeric_limits<std::uint32_t>::max();
/// Beyond this the sine of an angle in radians loses digits, and such places are walked one by one.
constexpr double kFarDegrees = 1000.0;
/// The cosine of the exact formula and the squared chord between unit vectors, both for angles up
/// to kFarDegrees, differ by less than this from what they would be without rounding. It is some
/// ten times the worst case; near zero it stands for three metres.
constexpr double kChordMargin = 2e-13;
/// The squared chord between antipodes.
constexpr double kWholeSphere = 4.0;

bool isFar(double latitude, double longitude)
{
    return !(std::abs(latitude) <= kFarDegrees && std::abs(longitude) <= kFarDegrees);
}

/// Squared chord that a great-circle distance spans on the unit sphere.
double squaredChord(double nm)
{
    const double angle = std::clamp(nm * kKmPerNm / kEarthRadiusKm, 0.0, kPi);
    const double half = std::sin(angle / 2.0);
    return kWholeSphere * half * half;
}

} // namespace

double searchDistanceNm(const Position& reference, const Position& entry)
{
    if (!entry.isKnown()) {
        return kUnknownDistance;
    }
    if (reference.samePlace(entry)) {
        return 0.0;
    }
    const double phi1 = radiansFromDegrees(reference.latitude());
    const double phi2 = radiansFromDegrees(entry.latitude());
    const double lambda1 = radiansFromDegrees(reference.longitude());
    const double lambda2 = radiansFromDegrees(entry.longitude());
    const double x = std::sin(phi1) * std::sin(phi2)
                     + std::cos(phi1) * std::cos(phi2) * std::cos(lambda2 - lambda1);
    if (x > 1.0) {
        return 0.0;
    }
    // Antipodes may round below -1 just as close points round above 1.
    return std::acos(x < -1.0 ? -1.0 : x) * kEarthRadiusKm / kKmPerNm;
}

/// The answer so far by the exact formula.
struct NearestIndex::Best
{
    double distance = 0.0; ///< NM; the limit while there is no entry
    std::size_t entry = kNone;
};

NearestIndex::Vector NearestIndex::unitVector(const IndexedPlace& place)
{
    const double phi = radiansFromDegrees(place.latitude);
    const double lambda = radiansFromDegrees(place.longitude);
    return {std::cos(phi) * std::cos(lambda), std::cos(phi) * std::sin(lambda), std::sin(phi)};
}

NearestIndex::NearestIndex(std::vector<IndexedPlace> places) : m_places(std::move(places))
{
    sortIn();
    m_axes.resize(m_points.size());
    arrange(0, m_points.size());
}

/// Sorts the entries by where a search looks for them, and joins those at one place.
void NearestIndex::sortIn()
{
    m_nextAtPlace.assign(m_places.size(), kLast);
    std::vector<std::uint32_t> order;
    order.reserve(m_places.size());
    for (std::uint32_t i = 0; i < m_places.size(); ++i) {
        const auto [latitude, longitude] = m_places[i];
        if (isFar(latitude, longitude)) {
            m_far.push_back(i);
        } else if (latitude != 0.0 || longitude != 0.0) {
            order.push_back(i);
        }
    }
    std::sort(order.begin(), order.end(), [this](std::uint32_t a, std::uint32_t b) {
        const IndexedPlace& first = m_places[a];
        const IndexedPlace& second = m_places[b];
        if (first.latitude != second.latitude) {
            return first.latitude < second.latitude;
        }
        return first.longitude != second.longitude ? first.longitude < second.longitude : a < b;
    });
    m_points.reserve(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const IndexedPlace& place = m_places[order[i]];
        if (i > 0 && m_places[order[i - 1]].latitude == place.latitude
            && m_places[order[i - 1]].longitude == place.longitude)
        {
            m_nextAtPlace[order[i - 1]] = order[i];
        } else {
            m_points.push_back({unitVector(place), order[i]});
        }
    }
}

/// Splits a range at its median along the axis of the widest spread, and so on down to the leaves.
void NearestIndex::arrange(std::size_t first, std::size_t last)
{
    if (last - first <= kLeafSize) {
        return;
    }
    Vector low = m_points[first].at;
    Vector high = low;
    for (std::size_t i = first + 1; i < last; ++i) {
        for (std::size_t axis = 0; axis < low.size(); ++axis) {
            low[axis] = std::min(low[axis], m_points[i].at[axis]);
            high[axis] = std::max(high[axis], m_points[i].at[axis]);
        }
    }
    std::size_t widest = 0;
    for (std::size_t axis = 1; axis < low.size(); ++axis) {
        widest = high[axis] - low[axis] > high[widest] - low[widest] ? axis : widest;
    }
    const std::size_t middle = first + (last - first) / 2;
    const auto begin = m_points.begin();
    using Offset = std::vector<Point>::difference_type;
    std::nth_element(begin + static_cast<Offset>(first), begin + static_cast<Offset>(middle),
                     begin + static_cast<Offset>(last), [widest](const Point& a, const Point& b) {
                         return a.at[widest] < b.at[widest];
                     });
    m_axes[middle] = static_cast<std::uint8_t>(widest);
    arrange(first, middle);
    arrange(middle + 1, last);
}

/// Shows the visitor every point within its bound, a squared chord that it may shrink, and some
/// beyond; near branches first.
template <class Visitor>
void NearestIndex::visit(std::size_t first, std::size_t last, Visitor& visitor) const
{
    if (last - first <= kLeafSize) {
        for (std::size_t i = first; i < last; ++i) {
            visitor.see(m_points[i]);
        }
        return;
    }
    const std::size_t middle = first + (last - first) / 2;
    const double beyond = visitor.centre[m_axes[middle]] - m_points[middle].at[m_axes[middle]];
    const bool isLeft = beyond < 0.0;
    isLeft ? visit(first, middle, visitor) : visit(middle + 1, last, visitor);
    if (beyond * beyond <= visitor.bound) {
        visitor.see(m_points[middle]);
        isLeft ? visit(middle + 1, last, visitor) : visit(first, middle, visitor);
    }
}

/// What the visitors share: a place and how far around it they look.
struct NearestIndex::Reach
{
    Vector centre{};
    double bound = 0.0; ///< squared chord

    double squaredChordTo(const Point& point) const
    {
        const double x = centre[0] - point.at[0];
        const double y = centre[1] - point.at[1];
        const double z = centre[2] - point.at[2];
        return x * x + y * y + z * z;
    }
};

/// Narrows the bound to just beyond the nearest point and notes whether another one lies in that
/// rim.
struct NearestIndex::Narrowing : Reach
{
    std::uint32_t entry = kLast;
    double chord = std::numeric_limits<double>::infinity();
    double secondChord = std::numeric_limits<double>::infinity();

    void see(const Point& point)
    {
        const double squared = squaredChordTo(point);
        if (squared < chord) {
            secondChord = chord;
            chord = squared;
            entry = point.entry;
            bound = std::min(bound, chord + kChordMargin);
        } else if (squared < secondChord) {
            secondChord = squared;
        }
    }
    bool isAlone() const { return secondChord > chord + kChordMargin; }
};

/// Lets the exact formula decide among all points within the bound.
struct NearestIndex::Deciding : Reach
{
    const NearestIndex& index;
    const Position& reference;
    Best& best;

    void see(const Point& point)
    {
        if (squaredChordTo(point) <= bound) {
            index.offer(reference, point.entry, best);
        }
    }
};

/// Takes all points within the bound.
struct NearestIndex::Collecting : Reach
{
    std::vector<std::uint32_t> entries;

    void see(const Point& point)
    {
        if (squaredChordTo(point) <= bound) {
            entries.push_back(point.entry);
        }
    }
};

double NearestIndex::distanceTo(const Position& reference, std::size_t entry) const
{
    const auto [latitude, longitude] = m_places[entry];
    return searchDistanceNm(reference, Position(latitude, longitude));
}

void NearestIndex::offer(const Position& reference, std::size_t entry, Best& best) const
{
    const double distance = distanceTo(reference, entry);
    const bool isEarlier = best.entry != kNone && distance == best.distance && entry < best.entry;
    if (distance < best.distance || isEarlier) {
        best = {distance, entry};
    }
}

void NearestIndex::offerNearPoints(const Position& reference, double limitNm, Best& best) const
{
    const Vector centre = unitVector({reference.latitude(), reference.longitude()});
    Narrowing narrowing{{centre, squaredChord(limitNm) + kChordMargin}};
    visit(0, m_points.size(), narrowing);
    if (narrowing.entry == kLast) {
        return;
    }
    if (narrowing.isAlone()) {
        offer(reference, narrowing.entry, best);
        return;
    }
    Deciding deciding{{centre, narrowing.chord + kChordMargin}, *this, reference, best};
    visit(0, m_points.size(), deciding);
}

std::size_t NearestIndex::nearest(const Position& reference, double limitNm) const
{
    Best best{std::min(limitNm, kUnknownDistance)};
    if (isFar(reference.latitude(), reference.longitude())) {
        for (std::size_t entry = 0; entry < m_places.size(); ++entry) {
            offer(reference, entry, best);
        }
        return best.entry;
    }
    offerNearPoints(reference, limitNm, best);
    for (const std::uint32_t entry : m_far) {
        offer(reference, entry, best);
    }
    return best.entry;
}

/// Everything that might lie within the range, in no order.
std::vector<std::size_t> NearestIndex::nearEntries(const Position& reference, double rangeNm) const
{
    std::vector<std::size_t> entries;
    if (isFar(reference.latitude(), reference.longitude()) || rangeNm > kUnknownDistance) {
        entries.resize(m_places.size());
        std::iota(entries.begin(), entries.end(), std::size_t{0});
        return entries;
    }
    Collecting collecting{{unitVector({reference.latitude(), reference.longitude()}),
                           squaredChord(rangeNm) + kChordMargin},
                          {}};
    visit(0, m_points.size(), collecting);
    for (const std::uint32_t first : collecting.entries) {
        for (std::uint32_t entry = first; entry != kLast; entry = m_nextAtPlace[entry]) {
            entries.push_back(entry);
        }
    }
    entries.insert(entries.end(), m_far.begin(), m_far.end());
    return entries;
}

std::vector<std::size_t> NearestIndex::within(const Position& reference, double rangeNm) const
{
    std::vector<std::size_t> entries = nearEntries(reference, rangeNm);
    std::erase_if(entries,
                  [&](std::size_t entry) { return !(distanceTo(reference, entry) < rangeNm); });
    std::sort(entries.begin(), entries.end());
    return entries;
}

} // namespace aviation::weather

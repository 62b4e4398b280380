#pragma once

#include "aviation/Position.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace aviation::weather {

/// Great-circle distance of a table entry from a reference point as every search of the store
/// measures it, in NM: kUnknownDistance for an entry at exactly (0, 0), else 0 for equal points,
/// else the spherical law of cosines. NaN when a coordinate isn't finite.
double searchDistanceNm(const Position& reference, const Position& entry);

/// A place of the index, degrees. Smaller than a Position, which carries a virtual table pointer.
struct IndexedPlace
{
    double latitude = 0.0;
    double longitude = 0.0;
};

/// Spatial index over the positions of a table: a k-d tree over unit vectors. Every answer is the
/// one that a walk over the table in its order with searchDistanceNm would give. The tree only
/// selects; among entries so near to each other that rounding could order them differently, that
/// function decides. Built once, immutable, so any number of threads may ask.
class NearestIndex
{
public:
    /// Returned when no entry lies within the limit.
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    NearestIndex() = default;
    /// Entries are named by their position in `places`. Any coordinates are accepted.
    explicit NearestIndex(std::vector<IndexedPlace> places);

    std::size_t size() const { return m_places.size(); }

    /// The entry strictly nearer than `limitNm` with the smallest distance; the first in table
    /// order of several with equal distance. Entries at (0, 0) or without a finite position are
    /// never found.
    std::size_t nearest(const Position& reference, double limitNm) const;

    /// All entries strictly nearer than `rangeNm`, in table order. A range above kUnknownDistance
    /// takes the entries at (0, 0) too.
    std::vector<std::size_t> within(const Position& reference, double rangeNm) const;

private:
    using Vector = std::array<double, 3>;
    struct Point
    {
        Vector at;           ///< on the unit sphere
        std::uint32_t entry; ///< the first entry at this place
    };
    struct Best;
    struct Reach;
    struct Narrowing;
    struct Deciding;
    struct Collecting;

    static Vector unitVector(const IndexedPlace& place);
    void sortIn();
    void arrange(std::size_t first, std::size_t last);
    template <class Visitor>
    void visit(std::size_t first, std::size_t last, Visitor& visitor) const;

    double distanceTo(const Position& reference, std::size_t entry) const;
    void offer(const Position& reference, std::size_t entry, Best& best) const;
    void offerNearPoints(const Position& reference, double limitNm, Best& best) const;
    std::vector<std::size_t> nearEntries(const Position& reference, double rangeNm) const;

    std::vector<IndexedPlace> m_places;       ///< the table
    std::vector<Point> m_points;              ///< distinct places, in the order of the tree
    std::vector<std::uint8_t> m_axes;         ///< axis of the split at each tree point
    std::vector<std::uint32_t> m_nextAtPlace; ///< next entry at the same place, kLast ends
    std::vector<std::uint32_t> m_far;         ///< entries too far out of range for the tree
};

} // namespace aviation::weather

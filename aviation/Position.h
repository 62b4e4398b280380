#pragma once

namespace aviation {

/// Unit of a distance that Position::DistanceTo returns.
enum class DistanceUnit
{
    NauticalMiles = 0,
    Kilometres = 1
};

/// Distance that stands for "no position known", in either unit.
inline constexpr double kUnknownDistance = 99999.0;

/// A point on the earth, decimal degrees, north and east positive. Exactly (0, 0) means that no
/// position is known. Comparison is exact, without a tolerance.
class Position
{
public:
    Position() = default;
    Position(double latitude, double longitude) : m_latitude(latitude), m_longitude(longitude) {}
    Position(const Position&) = default;
    Position(Position&&) = default;
    Position& operator=(const Position&) = default;
    Position& operator=(Position&&) = default;
    virtual ~Position() = default;

    double latitude() const { return m_latitude; }
    double longitude() const { return m_longitude; }
    void setPosition(const Position& other)
    {
        m_latitude = other.m_latitude;
        m_longitude = other.m_longitude;
    }

    /// False for exactly (0, 0).
    bool isKnown() const { return m_latitude != 0.0 || m_longitude != 0.0; }
    bool samePlace(const Position& other) const
    {
        return m_latitude == other.m_latitude && m_longitude == other.m_longitude;
    }

    /// Great-circle distance; kUnknownDistance when this position (not the other) is (0, 0).
    double DistanceTo(const Position& other, DistanceUnit unit = DistanceUnit::NauticalMiles) const;
    double DistanceTo(double latitude, double longitude,
                      DistanceUnit unit = DistanceUnit::NauticalMiles) const;

    /// Moves along a great circle by a true course in degrees and a distance in NM. The longitude
    /// isn't folded: beyond the date line it exceeds 180.
    void MoveBy(double bearing, double distanceNm);

private:
    double m_latitude = 0.0;  ///< degrees, north positive
    double m_longitude = 0.0; ///< degrees, east positive
};

inline bool operator==(const Position& a, const Position& b)
{
    return a.samePlace(b);
}
inline bool operator!=(const Position& a, const Position& b)
{
    return !a.samePlace(b);
}

/// Great-circle distance in NM by the spherical law of cosines, earth radius 6378.137 km.
double GreatCircleNm(const Position& from, const Position& to);
/// The same for plain numbers in degrees, without any rule for unknown positions.
double DistanceNm(double lat1, double lon1, double lat2, double lon2);

/// Initial true course from the first to the second point in [0, 360); 0 for equal points.
double BearingTo(const Position& from, const Position& to);
double BearingDeg(double lat1, double lon1, double lat2, double lon2);

} // namespace aviation

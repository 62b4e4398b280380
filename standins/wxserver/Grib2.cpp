#include "standins/wxserver/Grib2.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace wxserver {

namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::hours;

constexpr std::uint64_t kMissing = ~std::uint64_t{0};
constexpr double kDegreeUnits = 1e6; // positions are whole millionths of a degree
constexpr int kBitsPerValue = 16;

/// A section or a message: numbers with the high byte first.
class Octets
{
public:
    Octets& put(std::uint64_t number, int octets)
    {
        for (int shift = (octets - 1) * 8; shift >= 0; shift -= 8) {
            m_bytes.append(static_cast<char>((number >> shift) & 0xFFU));
        }
        return *this;
    }
    /// With the sign in the highest bit, as FM 92 has it.
    Octets& putSigned(std::int64_t number, int octets)
    {
        const std::uint64_t sign = number < 0 ? std::uint64_t{1} << (octets * 8 - 1) : 0;
        return put(static_cast<std::uint64_t>(std::abs(number)) | sign, octets);
    }
    Octets& put(const QByteArray& bytes)
    {
        m_bytes += bytes;
        return *this;
    }
    const QByteArray& bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

QByteArray section(int number, const Octets& contents)
{
    Octets head;
    head.put(static_cast<std::uint64_t>(contents.bytes().size()) + 5, 4);
    head.put(static_cast<std::uint64_t>(number), 1);
    return head.bytes() + contents.bytes();
}

QByteArray identification(std::chrono::sys_time<hours> analysis)
{
    const auto day = floor<days>(analysis);
    const std::chrono::year_month_day date(day);
    Octets octets;
    octets.put(7, 2).put(0, 2).put(2, 1).put(1, 1).put(0, 1); // NCEP, tables, an analysis
    octets.put(static_cast<std::uint64_t>(int(date.year())), 2);
    octets.put(unsigned(date.month()), 1).put(unsigned(date.day()), 1);
    octets.put(static_cast<std::uint64_t>((analysis - day).count()), 1).put(0, 2); // hour
    octets.put(0, 1).put(0, 1); // operational, analysis
    return section(1, octets);
}

std::uint64_t eastOf(double degrees)
{
    const double positive = degrees < 0.0 ? degrees + 360.0 : degrees;
    return static_cast<std::uint64_t>(std::llround(positive * kDegreeUnits));
}

QByteArray gridDefinition(const Grib2Grid& grid)
{
    const auto count = static_cast<std::uint64_t>(grid.columns) * std::uint64_t(grid.rows);
    const double south = grid.north - grid.increment * (grid.rows - 1);
    const double east = grid.west + grid.increment * (grid.columns - 1);
    const auto step = static_cast<std::uint64_t>(std::llround(grid.increment * kDegreeUnits));
    Octets octets;
    octets.put(0, 1).put(count, 4).put(0, 1).put(0, 1).put(0, 2);
    octets.put(6, 1).put(kMissing, 1).put(kMissing, 4); // a sphere of 6,371,229 m
    octets.put(kMissing, 1).put(kMissing, 4).put(kMissing, 1).put(kMissing, 4);
    octets.put(std::uint64_t(grid.columns), 4).put(std::uint64_t(grid.rows), 4);
    octets.put(0, 4).put(kMissing, 4); // the unit of angles
    octets.putSigned(std::llround(grid.north * kDegreeUnits), 4).put(eastOf(grid.west), 4);
    octets.put(0x30, 1); // both increments are given
    octets.putSigned(std::llround(south * kDegreeUnits), 4).put(eastOf(east), 4);
    octets.put(step, 4).put(step, 4).put(0, 1);
    return section(3, octets);
}

QByteArray productDefinition(const Grib2Parameter& parameter)
{
    Octets octets;
    octets.put(0, 2).put(0, 2); // template 4.0
    octets.put(std::uint64_t(parameter.category), 1).put(std::uint64_t(parameter.number), 1);
    octets.put(0, 1).put(0, 1).put(81, 1).put(0, 2).put(0, 1); // analysis of the global model
    octets.put(1, 1).put(0, 4);                                // hours, none ahead
    octets.put(100, 1).put(0, 1).put(std::uint64_t(parameter.pressureHpa) * 100, 4);
    octets.put(kMissing, 1).put(kMissing, 1).put(kMissing, 4);
    return section(4, octets);
}

/// Sections 5, 6 and 7: simple packing, Y = reference + X * 2^scale.
QByteArray packedValues(const std::vector<double>& values)
{
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    const auto reference = static_cast<float>(*low);
    const double span = std::max(*high - *low, 1e-6);
    constexpr double kLargest = (1 << kBitsPerValue) - 1;
    const int scale = static_cast<int>(std::ceil(std::log2(span / kLargest)));
    Octets representation;
    representation.put(values.size(), 4).put(0, 2).put(std::bit_cast<std::uint32_t>(reference), 4);
    representation.putSigned(scale, 2).putSigned(0, 2).put(kBitsPerValue, 1).put(0, 1);
    Octets data;
    for (const double value : values) {
        const double packed =
            std::round((value - static_cast<double>(reference)) * std::exp2(-scale));
        data.put(static_cast<std::uint64_t>(std::clamp(packed, 0.0, kLargest)), 2);
    }
    Octets bitMap;
    bitMap.put(255, 1); // none
    return section(5, representation) + section(6, bitMap) + section(7, data);
}

} // namespace

QByteArray grib2Message(const Grib2Grid& grid, const Grib2Parameter& parameter,
                        std::chrono::sys_time<hours> analysis, const std::vector<double>& values)
{
    constexpr std::uint64_t kHeadAndEnd = 16 + 4;
    const QByteArray sections = identification(analysis) + gridDefinition(grid)
                                + productDefinition(parameter) + packedValues(values);
    Octets message;
    message.put("GRIB").put(0, 2).put(0, 1).put(2, 1); // discipline 0, edition 2
    message.put(static_cast<std::uint64_t>(sections.size()) + kHeadAndEnd, 8);
    return message.put(sections).put("7777").bytes();
}

} // namespace wxserver

#pragma once

#include "aviation/GribLevel.h"
#include "aviation/WeatherBase.h"

#include <string>
#include <vector>

namespace aviation::weather {

class GroupReader;

namespace gribstatus {
inline constexpr int kDecoded = 0;
inline constexpr int kFresh = 1; ///< no data at this point yet
inline constexpr int kFailed = 2;
} // namespace gribstatus

/// What an upper-air record says beyond the surface values that all reports share.
struct GribValues
{
    std::wstring key;              ///< latitude digits and longitude group: names the grid point
    std::vector<GribLevel> levels; ///< in the order of the record, from the ground up
    std::vector<bool> levelTemperatures; ///< of each level, whether the record says them
    GribLevel surfaceLevel;              ///< stays fresh
    GribLevel maximumWind;
    GribLevel tropopause;
    Cloud lowCloud;
    Cloud middleCloud;
    Cloud highCloud;
};

/// Upper-air values of one grid point, read from a one-line text record that borrows the groups of
/// TEMP (WMO Manual on Codes, FM 35).
class Grib final : public WeatherBase
{
public:
    Grib() : WeatherBase(ReportKind::Grib, gribstatus::kFresh) {}
    explicit Grib(const Position& position) : Grib() { setPosition(position); }
    explicit Grib(std::wstring reportText) : Grib() { setReportText(std::move(reportText)); }

    /// Reads position and key. Returns 0, or gribstatus::kFailed without a header; the status
    /// stays, since it says whether the levels have been read.
    int DecodeHeader() override;
    /// Reads the whole record once; a second call does nothing and returns the status.
    int Decode() override;

    std::vector<GribLevel> GetLevels() const { return m_grib.levels; }
    /// The same without a copy.
    const std::vector<GribLevel>& levels() const { return m_grib.levels; }
    const std::wstring& key() const { return m_grib.key; }
    const GribValues& grib() const { return m_grib; }
    const GribLevel& maximumWind() const { return m_grib.maximumWind; }
    const GribLevel& tropopause() const { return m_grib.tropopause; }
    const Cloud& lowCloud() const { return m_grib.lowCloud; }
    const Cloud& middleCloud() const { return m_grib.middleCloud; }
    const Cloud& highCloud() const { return m_grib.highCloud; }

private:
    bool readHeader(GroupReader& report);
    void readSurface(GroupReader& report);

    GribValues m_grib;
};

} // namespace aviation::weather

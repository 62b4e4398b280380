#pragma once

#include "aviation/Cloud.h"
#include "aviation/HeldFields.h"
#include "aviation/Station.h"
#include "aviation/Wind.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace aviation::weather {

enum class ReportKind : std::int32_t
{
    Metar = 1,
    Synop = 2,
    Grib = 3
};

/// Level of a decoder's message, the same numbers as those of the log.
inline constexpr unsigned kMessageError = 3;

/// Value of a variable-wind limit that the report doesn't give.
inline constexpr std::int32_t kNoVariableLimit = -1;

/// What every kind of report can say about the surface; starts with the defaults of a fresh report.
struct SurfaceValues
{
    std::int32_t visibility = 30000; ///< metres
    float temperature = 15.0F;       ///< degrees Celsius
    float dewPoint = 0.5F;           ///< degrees Celsius
    float qnh = 1013.2F;             ///< hPa
    Wind wind;
    std::int32_t variableFrom = kNoVariableLimit; ///< degrees
    std::int32_t variableTo = kNoVariableLimit;   ///< degrees
    std::vector<Cloud> clouds;
    bool cloudsSeen = false;     ///< a cloud group or CAVOK was read
    bool visibilitySeen = false; ///< a visibility group was read
    bool windSeen = false;       ///< a usable wind group was read
    HeldFields held;             ///< what isn't held has a default
};

/// Base of the report classes: a station with its report text, decoded surface values and the state
/// of decoding. Decoders never throw; they report by status and message. Used by one thread at a
/// time.
class WeatherBase : public Station
{
public:
    WeatherBase(const WeatherBase&) = default;
    WeatherBase(WeatherBase&&) = default;
    WeatherBase& operator=(const WeatherBase&) = default;
    WeatherBase& operator=(WeatherBase&&) = default;
    ~WeatherBase() override = default;

    /// Reads station and time only, for indexing large files. Returns the status, 0 is good.
    virtual int DecodeHeader() = 0;
    /// Reads the whole report. Returns the status, 0 is good.
    virtual int Decode() = 0;
    virtual std::wstring GetMessage() const { return m_message; }
    /// Replaces the message, or appends after a line feed.
    virtual void SetMessage(std::wstring text, unsigned level, bool append = false);
    /// Sets the outdated flag when `now` minus the report time is above the limit, clears it
    /// otherwise, and returns it. Both times in seconds since 1970 UTC.
    virtual bool CheckAge(std::int64_t now, std::int64_t limitSeconds);

    ReportKind kind() const { return m_kind; }
    int status() const { return m_status; }
    unsigned messageLevel() const { return m_messageLevel; }
    bool isOutdated() const { return m_outdated; }
    void setOutdated(bool outdated) { m_outdated = outdated; }
    bool isHeaderDecoded() const { return m_headerDecoded; }
    bool isDecoded() const { return m_decoded; }
    const std::wstring& reportText() const { return m_reportText; }
    void setReportText(std::wstring text) { m_reportText = std::move(text); }

    float temperature() const { return m_values.temperature; }
    void setTemperature(float celsius) { m_values.temperature = celsius; }
    float dewPoint() const { return m_values.dewPoint; }
    void setDewPoint(float celsius) { m_values.dewPoint = celsius; }
    float qnh() const { return m_values.qnh; }
    void setQnh(float hpa) { m_values.qnh = hpa; }
    std::int32_t visibility() const { return m_values.visibility; }
    void setVisibility(std::int32_t metres) { m_values.visibility = metres; }
    const Wind& wind() const { return m_values.wind; }
    void setWind(const Wind& wind) { m_values.wind = wind; }
    std::int32_t variableFrom() const { return m_values.variableFrom; }
    std::int32_t variableTo() const { return m_values.variableTo; }
    bool hasVariableLimits() const
    {
        return variableFrom() != kNoVariableLimit && variableTo() != kNoVariableLimit;
    }
    void setVariableLimits(std::int32_t from, std::int32_t to)
    {
        m_values.variableFrom = from;
        m_values.variableTo = to;
    }
    const std::vector<Cloud>& clouds() const { return m_values.clouds; }
    void addCloud(const Cloud& cloud) { m_values.clouds.push_back(cloud); }
    bool cloudsSeen() const { return m_values.cloudsSeen; }
    bool visibilitySeen() const { return m_values.visibilitySeen; }
    bool windSeen() const { return m_values.windSeen; }
    /// Whether the report itself says this.
    bool holds(Field field) const { return m_values.held.has(field); }

protected:
    WeatherBase(ReportKind kind, int status) : m_kind(kind), m_status(status) {}

    /// Stores an error message and the status, and returns the status: `return fail(...)`.
    int fail(int status, const wchar_t* message);

    SurfaceValues m_values;
    ReportKind m_kind;
    int m_status;
    bool m_outdated = false;
    bool m_headerDecoded = false; ///< the header step has run
    bool m_decoded = false;       ///< the decoder has passed the header
    std::wstring m_reportText;    ///< the raw line
    std::wstring m_message;       ///< last failure message
    unsigned m_messageLevel = 0;
};

} // namespace aviation::weather

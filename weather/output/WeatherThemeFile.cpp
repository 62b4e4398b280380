#include "app/base/WriteFault.h"
#include "aviation/support/NumberText.h"
#include "aviation/support/ReportTime.h"
#include "weather/output/WeatherTheme.h"

#include <QSaveFile>

#include <algorithm>
#include <bit>
#include <iostream>
#include <iterator>
#include <utility>

namespace {

constexpr const char* kProjectAddress = "https://cirrilon.example";
constexpr float kStationEnd = 3.0F;
constexpr unsigned char kFileHead[] = {0x09, 0x00, 0x00, 0x00, 0x01, 0xFD};
/// Behind the first station; the first four bytes are the 3.0 that ends a station.
constexpr unsigned char kGridHead[] = {0x00, 0x00, 0x40, 0x40, 0x02, 0xFD};

/// Appends values in the byte order of the file, whatever that of the machine is.
class Writer
{
public:
    explicit Writer(QByteArray& bytes) : m_bytes(bytes) {}

    template <class... Values>
    void put(Values... values)
    {
        (putOne(values), ...);
    }
    void putRaw(const unsigned char* first, std::size_t count)
    {
        std::copy_n(first, count, std::back_inserter(m_bytes));
    }

private:
    void putOne(std::uint16_t value)
    {
        m_bytes.append(static_cast<char>(value & 0xFFU));
        m_bytes.append(static_cast<char>(value >> 8U));
    }
    void putOne(std::uint32_t value)
    {
        putOne(static_cast<std::uint16_t>(value & 0xFFFFU));
        putOne(static_cast<std::uint16_t>(value >> 16U));
    }
    void putOne(std::int32_t value) { putOne(static_cast<std::uint32_t>(value)); }
    void putOne(float value) { putOne(std::bit_cast<std::uint32_t>(value)); }

    QByteArray& m_bytes;
};

template <class Block>
std::int32_t countOf(const Block& block)
{
    return static_cast<std::int32_t>(block.size());
}

void putHeader(Writer& writer, const ThemeStation& station)
{
    const ThemeHeader& header = station.header;
    writer.put(countOf(station.winds), countOf(station.visibilities), countOf(station.clouds),
               countOf(station.temperatures), header.reserved);
    for (const char letter : header.station) {
        const auto byte = static_cast<unsigned char>(letter);
        writer.putRaw(&byte, 1);
    }
    writer.put(header.marker);
}

void putWind(Writer& writer, const ThemeWind& wind)
{
    writer.put(wind.height, wind.speed, wind.gust, wind.direction, wind.variance, wind.turbulence,
               wind.shear);
}

void putCloud(Writer& writer, const ThemeCloud& cloud)
{
    writer.put(cloud.type, cloud.base, cloud.top, 0.0F, cloud.coverage, cloud.topShape,
               cloud.turbulence, cloud.precipitationType, cloud.precipitationBase,
               cloud.precipitationRate, cloud.icing);
}

void putStation(Writer& writer, const ThemeStation& station)
{
    putHeader(writer, station);
    putWind(writer, station.surfaceWind);
    for (const ThemeWind& wind : station.winds) {
        putWind(writer, wind);
    }
    for (const ThemeVisibility& layer : station.visibilities) {
        writer.put(layer.range, layer.lower, layer.upper);
    }
    for (const ThemeCloud& cloud : station.clouds) {
        putCloud(writer, cloud);
    }
    for (const ThemeTemperature& layer : station.temperatures) {
        writer.put(layer.height, layer.temperature, layer.variation, layer.dewPoint);
    }
    writer.put(std::int32_t{0}, station.qnh);
}

/// The size of the grid, once in the file, between the QNH and the end mark of the first station.
/// The last number is the offset at which the two 16-bit values begin, plus 9.
void putGridSize(Writer& writer, const ThemeGrid& grid, const QByteArray& bytes)
{
    constexpr unsigned kAhead = 9;
    writer.putRaw(kGridHead, std::size(kGridHead));
    writer.put(grid.columns, grid.rows);
    const unsigned offset = static_cast<unsigned>(bytes.size()) + kAhead;
    writer.put(std::uint16_t{1}, static_cast<std::uint16_t>(offset & 0xFFFFU));
}

std::string wholeNumber(float value)
{
    return aviation::fixedText(static_cast<double>(value), 0);
}

/// Says which layers high up are hot; they are written all the same.
void tellHotLayers(const ThemeGrid& grid, std::ostream& console)
{
    constexpr float kHighMetres = 3000.0F;
    constexpr float kHotDegrees = 20.0F;
    for (const ThemeStation& station : grid.stations) {
        for (const ThemeTemperature& layer : station.temperatures) {
            if (layer.height > kHighMetres && layer.temperature > kHotDegrees) {
                console << "Temp to height: " << wholeNumber(layer.height) << "m, "
                        << wholeNumber(layer.temperature) << "C\n";
            }
        }
    }
}

bool openForWriting(QSaveFile& file, QIODevice::OpenMode mode, std::ostream& console)
{
    if (file.open(QIODevice::WriteOnly | mode)) {
        return true;
    }
    console << "no good file failed! \n";
    return false;
}

bool writeWhole(QSaveFile& file, const QByteArray& bytes)
{
    return file.write(bytes) >= bytes.size() && file.flush();
}

} // namespace

QByteArray themeBytes(const ThemeGrid& grid)
{
    QByteArray bytes;
    Writer writer(bytes);
    writer.putRaw(kFileHead, std::size(kFileHead));
    bool first = true;
    for (const ThemeStation& station : grid.stations) {
        putStation(writer, station);
        if (std::exchange(first, false)) {
            putGridSize(writer, grid, bytes);
        }
        writer.put(kStationEnd);
    }
    return bytes;
}

std::string themeText()
{
    // The size after "Size:" stays empty. The time ends in a line feed of its own.
    return std::string("[Main]\nTitle = \"Cirrilon\"\nDescription = \"This is the weather model of "
                       "Cirrilon Pro. For further information ")
           + kProjectAddress + ". Size:  Date: "
           + aviation::ascTime(aviation::Clock::current().NowUtc()) + "\"\nVersion = 9.00";
}

namespace {

bool writeFiles(const ThemeGrid& grid, QSaveFile& theme, QSaveFile& text, std::ostream& console)
{
    if (!openForWriting(theme, QIODevice::NotOpen, console)) {
        return false;
    }
    tellHotLayers(grid, console);
    if (!writeWhole(theme, themeBytes(grid)) || !openForWriting(text, QIODevice::Text, console)
        || !writeWhole(text, QByteArray::fromStdString(themeText())))
    {
        return false;
    }
    return theme.commit() && text.commit();
}

/// Of the two files the one that has failed: its name and why.
QString faultOf(QSaveFile& theme, QSaveFile& text)
{
    QSaveFile& failed = theme.error() != QFileDevice::NoError ? theme : text;
    return failed.fileName() + QStringLiteral(", ") + writeFault(failed);
}

} // namespace

bool WriteTheme(const ThemeGrid& grid, const QString& baseName, std::ostream& console,
                QString& fault)
{
    QSaveFile theme(baseName + QStringLiteral(".WTB"));
    QSaveFile text(baseName + QStringLiteral(".wt"));
    const bool written = writeFiles(grid, theme, text, console);
    fault = written ? QString() : faultOf(theme, text);
    return written;
}

bool WriteTheme(const ThemeGrid& grid, const QString& baseName, QString& fault)
{
    const bool written = WriteTheme(grid, baseName, std::cout, fault);
    std::cout.flush();
    return written;
}

#pragma once

#include <QString>

#include <cstdint>
#include <optional>

/// The file in the work folder that keeps the last good list of weather for the next start. Its
/// first line says when the list was fetched; a reader of weather files ignores that line.
namespace keptweather {

QString fileName(const QString& workFolder);
/// Writes the file whole or leaves the one of before. Empty, or why it couldn't be written.
/// Callable from any thread.
QString write(const QString& file, const QString& text);
/// When the list in such a text was fetched, milliseconds of UTC since 1970.
std::optional<std::int64_t> fetchedMs(const QString& text);

/// What the pilot reads of that time.
struct Age
{
    QString time; ///< "14:20", with the day before it when that isn't the last one
    QString age;  ///< "30 min", "3 h", "2 d"
};
Age ageOf(std::int64_t fetchedMs);

} // namespace keptweather

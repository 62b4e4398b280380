#include "app/base/UrlTemplate.h"

#include "aviation/support/Clock.h"
#include "aviation/support/NumberText.h"

#include <array>
#include <chrono>

namespace {

struct Token
{
    const char* text;
    std::int64_t value;
    int width;
};

std::array<Token, 7> tokensAt(aviation::Clock::UtcTime now)
{
    const auto day = std::chrono::floor<std::chrono::days>(now);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(now - day);
    const int year = static_cast<int>(date.year());
    return {{{"%d", static_cast<unsigned>(date.day()), 2},
             {"%m", static_cast<unsigned>(date.month()), 2},
             {"%Y", year, 4},
             {"%y", year % 100, 2},
             {"%h", time.hours().count(), 2},
             {"%i", time.minutes().count(), 2},
             {"%s", time.seconds().count(), 2}}};
}

} // namespace

QString expandUrlTemplate(const QString& urlTemplate)
{
    // A token at position 0 isn't looked for: addresses begin with their scheme, and stored
    // templates count on it.
    QString behindFirst = urlTemplate.mid(1);
    for (const Token& token : tokensAt(aviation::Clock::current().NowUtc())) {
        behindFirst.replace(QLatin1String(token.text), QString::fromStdString(aviation::integerText(
                                                           token.value, token.width)));
    }
    return urlTemplate.left(1) + behindFirst;
}

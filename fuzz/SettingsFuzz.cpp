#include "app/base/IniFile.h"
#include "app/base/Settings.h"
#include "aviation/support/RandomSource.h"

#include <cstdint>
#include <cstdlib>

namespace {

void RequireSame(const Settings& a, const Settings& b)
{
#define CIRRILON_REQUIRE(type, getter, Setter, key, value, optionClass)                            \
    if (a.getter() != b.getter()) {                                                                \
        std::abort();                                                                              \
    }
    CIRRILON_OPTIONS(CIRRILON_REQUIRE)
#undef CIRRILON_REQUIRE
}

} // namespace

/// A settings file of any contents loads; its options come back from the file that is saved over
/// it, and saving once more changes nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<int>(size));
    const IniFile file(input);
    aviation::SeededRandom random(1);
    Settings settings(QString(), random);
    settings.take(file, true);
    const QByteArray saved = settings.mergedInto(file, true).toText();

    Settings again(QString(), random);
    again.take(IniFile(saved), true);
    RequireSame(settings, again);
    if (again.mergedInto(IniFile(saved), true).toText() != saved) {
        std::abort();
    }
    return 0;
}

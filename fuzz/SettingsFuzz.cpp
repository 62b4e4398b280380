#include "app/base/IniFile.h"
#include "app/base/Settings.h"
#include "aviation/support/RandomSource.h"

#include <cstdint>
#include <cstdlib>

namespace {

void requireSame(const Settings& a, const Settings& b)
{
#define CIRRILON_REQUIRE(type, getter, Setter, key, value, optionClass)                            \
    if (a.getter() != b.getter()) {                                                                \
        std::abort();                                                                              \
    }
    CIRRILON_OPTIONS(CIRRILON_REQUIRE)
#undef CIRRILON_REQUIRE
}

} // namespace

/// A settings file of any contents loads, and its options come back from what is saved over it.
/// That a text is read as it was written is up to IniFileFuzz.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static aviation::SeededRandom random(1);
    static Settings settings(QString(), random);
    static Settings again(QString(), random);
    const IniFile file(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    settings.take(file, true);
    again.take(settings.mergedInto(file, true), true);
    requireSame(settings, again);
    return 0;
}

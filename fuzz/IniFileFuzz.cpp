#include "app/base/IniFile.h"

#include <cstdint>
#include <cstdlib>

namespace {

void require(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace

/// A text of either dialect is read, written and read again without a change; its keys are found in
/// any case, and no array is longer than the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<int>(size));
    for (const auto dialect : {IniFile::Dialect::Qt, IniFile::Dialect::Simulator}) {
        IniFile file(text, dialect);
        require(IniFile(file.toText()) == file);
        for (const QString& key : file.keys()) {
            require(file.contains(key) && file.contains(key.toLower()));
        }
        for (const QString& section : file.sections()) {
            require(file.beginReadArray(section) <= text.size());
            file.endArray();
        }
    }
    return 0;
}

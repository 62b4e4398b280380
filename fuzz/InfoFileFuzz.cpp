#include "app/download/InfoFile.h"

#include <cstdint>
#include <cstdlib>

namespace {

void requireWeb(const QString& address)
{
    const bool web = address.startsWith(QLatin1String("http"), Qt::CaseInsensitive);
    if (!address.isEmpty() && !web) {
        std::abort();
    }
}

} // namespace

/// Any bytes give an info file whose addresses are of the web only, and a version without a number
/// never counts as newer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const InfoFile info =
        InfoFile::parse(QByteArray(reinterpret_cast<const char*>(data), static_cast<int>(size)));
    for (const QString& address :
         {info.stablePage, info.stableInstaller, info.betaPage, info.betaInstaller})
    {
        requireWeb(address);
    }
    const VersionState state = judgeVersion(QStringLiteral("0"), info, true);
    const bool numbered = versionNumber(info.minimumVersion) > 0 || versionNumber(info.version) > 0
                          || versionNumber(info.betaVersion) > 0;
    if ((state != VersionState::Current) != numbered) {
        std::abort();
    }
    return 0;
}

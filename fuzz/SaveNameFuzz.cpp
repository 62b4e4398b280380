#include "app/base/SaveName.h"

#include <QDir>
#include <QUrl>

#include <cstdint>
#include <cstdlib>

/// Whatever an address holds, its file lies straight in the folder.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString folder = QStringLiteral("/folder/");
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    for (const QUrl& url : {QUrl(text), QUrl(QStringLiteral("http://h/") + text)}) {
        const QString name = savename::fromUrl(url);
        const bool plain = !name.isEmpty() && QDir::cleanPath(folder + name) == folder + name
                           && !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('\\'))
                           && !name.contains(QLatin1Char(':'));
        if (!plain || savename::freePath(folder, name) != folder + name) {
            std::abort();
        }
    }
    return 0;
}

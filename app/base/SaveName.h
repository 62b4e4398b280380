#pragma once

#include <QString>

class QUrl;

/// Names under which downloads are saved. What a server says never leads out of the folder.
namespace savename {

/// The last part of the address's path, percent escapes resolved. "download" if there is none or if
/// any system would take it for something else than a plain file in the folder: "..", separators,
/// device names, control and wildcard characters, a dot or blank at the end, too many characters.
QString fromUrl(const QUrl& url);

/// Path in `folder` (with its separator at the end) under which nothing exists: the name itself, or
/// with ".0", ".1" and so on after it.
QString freePath(const QString& folder, const QString& name);

} // namespace savename

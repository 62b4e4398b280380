#pragma once

#include <QString>

/// Built-in addresses of the service. The keys "url/..." of the main settings file replace them, so
/// an operator or a club can host its own.
namespace serveraddress {

/// The two weather servers, keys "url/wxdata1" and "url/wxdata2".
inline QString wxdata1()
{
    return QStringLiteral("https://wxdata1.cirrilon.example");
}
inline QString wxdata2()
{
    return QStringLiteral("https://wxdata2.cirrilon.example");
}

/// Base address of the info server, key "url/fileinfo". File names are put straight after it.
inline QString fileInfo()
{
    return QStringLiteral("https://info.cirrilon.example/");
}

/// Host of the recorder login and the path of its login check, keys "url/host" and
/// "url/checklogin".
inline QString host()
{
    return QStringLiteral("https://www.cirrilon.example");
}
inline QString checkLogin()
{
    return QStringLiteral("/index.php?option=com_cirrilon_user&view=checkloginv3");
}

} // namespace serveraddress

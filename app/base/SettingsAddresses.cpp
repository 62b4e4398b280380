#include "app/base/IniFile.h"
#include "app/base/ServerAddresses.h"
#include "app/base/Settings.h"
#include "app/base/SettingsValues.h"
#include "aviation/Position.h"
#include "aviation/support/NumberText.h"
#include "aviation/support/RandomSource.h"

#include <QVariant>

#include <initializer_list>

namespace {

QString listPath(const char* name, bool compressed)
{
    return compressed ? QStringLiteral("/weather_%1.gz").arg(QLatin1String(name))
                      : QStringLiteral("/metar_%1.txt").arg(QLatin1String(name));
}

QString twoDecimals(double degrees)
{
    return QString::fromStdString(aviation::fixedText(degrees, 2));
}

} // namespace

void Settings::chooseWeatherServer(aviation::RandomSource& random)
{
    switch (wxServerType()) {
    case wxservertype::kFirst:
        setWeatherServer(serverOne());
        break;
    case wxservertype::kSecond:
        setWeatherServer(serverTwo());
        break;
    case wxservertype::kAuto:
    case wxservertype::kExternal: // a server is chosen although the external addresses are used
        setWeatherServer(random.next() % 100 < 50 ? serverOne() : serverTwo());
        break;
    default:
        break;
    }
}

/// The open file comes first. A profile rarely holds addresses, so the main file is asked as well.
QString Settings::urlValue(const QString& key, const QString& fallback) const
{
    for (const QString& file : {lockedCopy(m_openFile), lockedCopy(m_mainFile)}) {
        IniFile values;
        static_cast<void>(values.read(file)); // a missing file holds no address
        const QVariant value = values.value(key);
        if (value.type() == QVariant::String && !value.toString().isEmpty()) {
            return value.toString();
        }
    }
    return fallback;
}

QString Settings::serverOne() const
{
    return urlValue(QStringLiteral("url/wxdata1"), serveraddress::wxdata1());
}

QString Settings::serverTwo() const
{
    return urlValue(QStringLiteral("url/wxdata2"), serveraddress::wxdata2());
}

QString Settings::fileInfoUrl() const
{
    return urlValue(QStringLiteral("url/fileinfo"), serveraddress::fileInfo());
}

QString Settings::loginHost() const
{
    return urlValue(QStringLiteral("url/host"), serveraddress::host());
}

QString Settings::checkLogin() const
{
    return urlValue(QStringLiteral("url/checklogin"), serveraddress::checkLogin());
}

QString Settings::weatherUrl(const QString& path) const
{
    const QLatin1Char slash('/');
    QString base = weatherServer();
    while (base.endsWith(slash)) {
        base.chop(1);
    }
    return path.startsWith(slash) ? base + path : base + slash + path;
}

QString Settings::vatsimUrl(bool compressed) const
{
    return weatherUrl(listPath("vatsim", compressed));
}

QString Settings::ivaoUrl(bool compressed) const
{
    return weatherUrl(listPath("ivao", compressed));
}

QString Settings::noaaUrl(bool compressed) const
{
    return weatherUrl(listPath("noaa", compressed));
}

QString Settings::fs2020Url(bool /*compressed*/) const
{
    return weatherUrl(listPath("fs2020", false));
}

QString Settings::gribUrl(const aviation::Position& position, bool single) const
{
    return weatherUrl(QStringLiteral("/get_gribv3.php?lat=%1&lon=%2&mode=%3")
                          .arg(twoDecimals(position.latitude()), twoDecimals(position.longitude()),
                               single ? QStringLiteral("single") : QStringLiteral("multi")));
}

#include "app/download/InfoFile.h"

#include "app/base/IniText.h"
#include "aviation/support/NumberText.h"

#include <QStringList>
#include <QUrl>

namespace {

/// Commas without quotes split a value; here they are part of the text.
QString TextOf(const QSettings::SettingsMap& map, const char* key)
{
    const QVariant value = map.value(QLatin1String(key));
    const bool list = value.type() == QVariant::StringList;
    return list ? value.toStringList().join(QStringLiteral(", ")) : value.toString();
}

/// Boxes and log lines show it.
QString VersionOf(const QSettings::SettingsMap& map, const char* key)
{
    constexpr int kLongest = 40;
    return TextOf(map, key).simplified().left(kLongest);
}

QString AddressOf(const QSettings::SettingsMap& map, const char* key)
{
    const QString text = TextOf(map, key).trimmed();
    const QUrl url(text, QUrl::StrictMode);
    const bool web =
        url.isValid() && !url.host().isEmpty()
        && (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
    return web ? text : QString();
}

double NumberOf(const QSettings::SettingsMap& map, const char* key)
{
    return aviation::NumberFromText(TextOf(map, key).toStdWString());
}

} // namespace

InfoFile InfoFile::Parse(const QByteArray& text)
{
    const QSettings::SettingsMap map = initext::parse(text);
    InfoFile info;
    info.version = VersionOf(map, "Version/cirrilonv3");
    info.minimumVersion = VersionOf(map, "Version/cirrilonv3min");
    info.betaVersion = VersionOf(map, "Version/cirrilonv3beta");
    info.info = TextOf(map, "UpdateInfo/info");
    info.stablePage = AddressOf(map, "UpdateInfo/UrlStableVersionManually");
    info.stableInstaller = AddressOf(map, "UpdateInfo/UrlStableVersionAutomatic");
    info.betaPage = AddressOf(map, "UpdateInfo/UrlBetaVersionManually");
    info.betaInstaller = AddressOf(map, "UpdateInfo/UrlBetaVersionAutomatic");
    info.firstServerLoad = NumberOf(map, "Serverload/wxdata");
    info.secondServerLoad = NumberOf(map, "Serverload/wxdata2");
    return info;
}

qint64 VersionNumber(const QString& version)
{
    QString digits = version;
    digits.remove(QLatin1Char('.'));
    bool isNumber = false;
    const qint64 number = digits.toLongLong(&isNumber);
    return isNumber && number >= 0 ? number : -1;
}

VersionState JudgeVersion(const QString& running, const InfoFile& info, bool betaWanted)
{
    const qint64 number = VersionNumber(running);
    if (number < VersionNumber(info.minimumVersion)) {
        return VersionState::Unsupported;
    }
    if (number < VersionNumber(info.version)) {
        return VersionState::Outdated;
    }
    const bool beta = betaWanted && number < VersionNumber(info.betaVersion);
    return beta ? VersionState::BetaAvailable : VersionState::Current;
}

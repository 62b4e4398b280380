#include "app/download/InfoFile.h"

#include "app/base/IniFile.h"
#include "aviation/support/NumberText.h"

#include <QUrl>

namespace {

/// Boxes and log lines show it.
QString VersionOf(const IniFile& file, const char* key)
{
    constexpr int kLongest = 40;
    return file.text(QLatin1String(key)).simplified().left(kLongest);
}

QString AddressOf(const IniFile& file, const char* key)
{
    const QString text = file.text(QLatin1String(key)).trimmed();
    const QUrl url(text, QUrl::StrictMode);
    const bool web =
        url.isValid() && !url.host().isEmpty()
        && (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
    return web ? text : QString();
}

double NumberOf(const IniFile& file, const char* key)
{
    return aviation::NumberFromText(file.text(QLatin1String(key)).toStdWString());
}

} // namespace

InfoFile InfoFile::Parse(const QByteArray& text)
{
    const IniFile file(text);
    InfoFile info;
    info.version = VersionOf(file, "Version/cirrilonv3");
    info.minimumVersion = VersionOf(file, "Version/cirrilonv3min");
    info.betaVersion = VersionOf(file, "Version/cirrilonv3beta");
    info.info = file.text(QStringLiteral("UpdateInfo/info"));
    info.stablePage = AddressOf(file, "UpdateInfo/UrlStableVersionManually");
    info.stableInstaller = AddressOf(file, "UpdateInfo/UrlStableVersionAutomatic");
    info.betaPage = AddressOf(file, "UpdateInfo/UrlBetaVersionManually");
    info.betaInstaller = AddressOf(file, "UpdateInfo/UrlBetaVersionAutomatic");
    info.firstServerLoad = NumberOf(file, "Serverload/wxdata");
    info.secondServerLoad = NumberOf(file, "Serverload/wxdata2");
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

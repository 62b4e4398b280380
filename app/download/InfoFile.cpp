#include "app/download/InfoFile.h"

#include "app/base/IniFile.h"
#include "aviation/support/NumberText.h"

#include <QUrl>

namespace {

/// Boxes and log lines show it.
QString versionOf(const IniFile& file, const char* key)
{
    constexpr int kLongest = 40;
    return file.text(QLatin1String(key)).simplified().left(kLongest);
}

QString addressOf(const IniFile& file, const char* key)
{
    const QString text = file.text(QLatin1String(key)).trimmed();
    const QUrl url(text, QUrl::StrictMode);
    const bool web =
        url.isValid() && !url.host().isEmpty()
        && (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
    return web ? text : QString();
}

double numberOf(const IniFile& file, const char* key)
{
    return aviation::numberFromText(file.text(QLatin1String(key)).toStdWString());
}

} // namespace

InfoFile InfoFile::parse(const QByteArray& text)
{
    const IniFile file(text);
    InfoFile info;
    info.version = versionOf(file, "Version/cirrilonv3");
    info.minimumVersion = versionOf(file, "Version/cirrilonv3min");
    info.betaVersion = versionOf(file, "Version/cirrilonv3beta");
    info.info = file.text(QStringLiteral("UpdateInfo/info"));
    info.stablePage = addressOf(file, "UpdateInfo/UrlStableVersionManually");
    info.stableInstaller = addressOf(file, "UpdateInfo/UrlStableVersionAutomatic");
    info.betaPage = addressOf(file, "UpdateInfo/UrlBetaVersionManually");
    info.betaInstaller = addressOf(file, "UpdateInfo/UrlBetaVersionAutomatic");
    info.firstServerLoad = numberOf(file, "Serverload/wxdata");
    info.secondServerLoad = numberOf(file, "Serverload/wxdata2");
    return info;
}

qint64 versionNumber(const QString& version)
{
    QString digits = version;
    digits.remove(QLatin1Char('.'));
    bool isNumber = false;
    const qint64 number = digits.toLongLong(&isNumber);
    return isNumber && number >= 0 ? number : -1;
}

VersionState judgeVersion(const QString& running, const InfoFile& info, bool betaWanted)
{
    const qint64 number = versionNumber(running);
    if (number < versionNumber(info.minimumVersion)) {
        return VersionState::Unsupported;
    }
    if (number < versionNumber(info.version)) {
        return VersionState::Outdated;
    }
    const bool beta = betaWanted && number < versionNumber(info.betaVersion);
    return beta ? VersionState::BetaAvailable : VersionState::Current;
}

#include "app/gui/SupportReport.h"

#include "app/base/IniFile.h"
#include "app/base/Settings.h"
#include "aviation/support/Clock.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSysInfo>

#include <array>

namespace supportreport {

namespace {

/// More than a day of flying; what comes before is left out.
constexpr qint64 kMostLogBytes = 8LL * 1024 * 1024;
/// A shorter text isn't looked for: it would come up by chance everywhere.
constexpr int kShortestSecret = 4;
constexpr char kRemoved[] = "(removed)";

bool isSecretKey(const QString& key)
{
    static const QRegularExpression words(
        QStringLiteral("key|hash|token|pass|pwd|secret|user|login|callsign"),
        QRegularExpression::CaseInsensitiveOption);
    return words.match(key).hasMatch();
}

QStringList secretsOf(const IniFile& options)
{
    QStringList secrets;
    for (const QString& key : options.keys()) {
        const QString value = options.text(key);
        if (isSecretKey(key) && value.size() >= kShortestSecret) {
            secrets << value;
        }
    }
    return secrets;
}

struct Rule
{
    const char* pattern;
    const char* replacement;
};

constexpr std::array kRules{
    // user:password@host, with and without a scheme
    Rule{R"(([a-z][a-z0-9+.\-]*://)[^/\s"<>]*@)", R"(\1)"},
    Rule{R"((^|[\s"'(=>])[^\s/:@"<>]+:[^\s/@"<>]+@(?=[a-z0-9.\-]))", R"(\1)"},
    // ?apikey=..., also where the ampersand is escaped
    Rule{
        R"(([?&;][^=\s&;"<>]*(?:key|hash|token|pass|pwd|secret|user|auth|login|sig)[^=\s&;"<>]*=)[^&;\s"<>#]*)",
        R"(\1(removed))"},
    // a part of an address that no person has named
    Rule{
        R"((://[^\s"<>]*?[/=])(?=[a-z_\-]*[0-9])(?=[0-9_\-]*[a-z])[a-z0-9_\-]{24,}(?=[/&?\s"<>#]|$))",
        R"(\1(removed))"},
    // other people's home folders
    Rule{R"(([/\\](?:home|users)[/\\])(?:[^/\\"<>\n]*(?=[/\\])|[^/\\\s"<>]+))", R"(\1(user))"},
};

QString settingsText(const IniFile& options)
{
    QString text;
    for (const QString& key : options.keys()) {
        const QVariant value = options.value(key);
        const bool bytes = value.type() == QVariant::ByteArray; // of windows
        const bool hidden = isSecretKey(key) && !options.text(key).isEmpty();
        text += key + QStringLiteral(" = ")
                + (bytes    ? QStringLiteral("(%1 bytes)").arg(value.toByteArray().size())
                   : hidden ? QString::fromLatin1(kRemoved)
                            : options.text(key))
                + QLatin1Char('\n');
    }
    return text;
}

QString logText(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return QStringLiteral("(can not be read: %1)\n").arg(file.errorString());
    }
    QString text;
    if (file.size() > kMostLogBytes) {
        text = QString::fromUtf8(file.readLine()) + QStringLiteral("(lines are left out here)\n");
        file.seek(file.size() - kMostLogBytes);
        file.readLine(); // the rest of a line
    }
    return text + QString::fromUtf8(file.readAll());
}

QString versionsText(const QString& simulator)
{
    const qint64 nowMs = aviation::Clock::current().NowUtc().time_since_epoch().count();
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(nowMs, Qt::UTC);
    return QStringLiteral("Cirrilon: report for support\n\n"
                          "Time: %1 UTC\nCirrilon: %2\nQt: %3\nSystem: %4, %5 %6, %7\n"
                          "Simulator: %8\n")
        .arg(now.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")), Settings::version(),
             QString::fromLatin1(qVersion()), QSysInfo::prettyProductName(), QSysInfo::kernelType(),
             QSysInfo::kernelVersion(), QSysInfo::currentCpuArchitecture(),
             simulator.isEmpty() ? QStringLiteral("none is connected") : simulator);
}

} // namespace

QString withoutSecrets(const QString& text, const QString& homeFolder, const QStringList& secrets)
{
    QString result = text;
    for (const QString& secret : secrets) {
        result.replace(secret, QLatin1String(kRemoved));
    }
    if (QDir(homeFolder) != QDir::root()) {
        result.replace(homeFolder, QStringLiteral("~"));
        result.replace(QDir::toNativeSeparators(homeFolder), QStringLiteral("~"));
        // Documents may lie on another disk, below a folder of the same name.
        const QString name = QRegularExpression::escape(QFileInfo(homeFolder).fileName());
        result.replace(QRegularExpression(QStringLiteral("([/\\\\])%1(?=[/\\\\])").arg(name)),
                       QStringLiteral("\\1(user)"));
    }
    for (const Rule& rule : kRules) {
        const QRegularExpression pattern(QLatin1String(rule.pattern),
                                         QRegularExpression::CaseInsensitiveOption
                                             | QRegularExpression::MultilineOption);
        result.replace(pattern, QLatin1String(rule.replacement));
    }
    return result;
}

QString text(const Parts& parts)
{
    const QString all = versionsText(parts.simulator) + QStringLiteral("\nSettings\n\n")
                        + settingsText(parts.options) + QStringLiteral("\nLog\n\n")
                        + logText(parts.logFile);
    return withoutSecrets(all, parts.homeFolder, secretsOf(parts.options));
}

} // namespace supportreport

#pragma once

#include <QByteArray>
#include <QString>

/// What the info server says, from a text in INI form. Missing texts are empty.
struct InfoFile
{
    QString version;        ///< Version/cirrilonv3, the latest one
    QString minimumVersion; ///< Version/cirrilonv3min, the lowest supported one
    QString betaVersion;    ///< Version/cirrilonv3beta
    QString info;           ///< UpdateInfo/info, plain text for the updater
    // Addresses of http or https; others are dropped.
    QString stablePage;
    QString stableInstaller;
    QString betaPage;
    QString betaInstaller;
    double firstServerLoad = 0.0;  ///< Serverload/wxdata
    double secondServerLoad = 0.0; ///< Serverload/wxdata2

    /// Takes any bytes; what isn't there stays as above. Pure.
    static InfoFile parse(const QByteArray& text);
    /// False for an answer that is something else than an info file.
    bool isValid() const { return !version.isEmpty(); }
    /// The first server is left at a load above 2.0.
    bool firstServerBusy() const { return firstServerLoad > 2.0; }
};

/// How a version stands to those of the info file.
enum class VersionState
{
    Current,
    Unsupported,   ///< below the minimum
    Outdated,      ///< below the latest
    BetaAvailable, ///< below the latest beta, which the user wants to hear of
};

/// The whole number that is left of a version when its dots are removed; -1 if that isn't one. So
/// "3.0.10" is above "3.1.0", as the numbering of the versions expects.
qint64 versionNumber(const QString& version);

/// A version of the info file without a number is never newer.
VersionState judgeVersion(const QString& running, const InfoFile& info, bool betaWanted);

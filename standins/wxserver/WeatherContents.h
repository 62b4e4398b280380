#pragma once

#include "aviation/support/Clock.h"
#include "standins/wxserver/HttpRequest.h"
#include "standins/wxserver/UpperAirField.h"
#include "standins/wxserver/WeatherFileText.h"

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QString>

namespace wxserver {

/// What stands under a path.
struct Document
{
    bool found = false;
    QByteArray body;
    QByteArray type; ///< value of "Content-Type"
};

/// The documents of the service, made from the demonstration data. Prepared once an hour of
/// calendar time each; further requests get a copy. Knows no network. Used on one thread.
class WeatherContents
{
public:
    /// `dataFolder` as WeatherServer takes it. False with a reason when the data can't be read.
    [[nodiscard]] bool load(const QString& dataFolder, QString& reason);

    Document document(const HttpRequest& request, aviation::Clock::UtcTime now);

    void setInfo(const QString& key, const QString& value);
    void setDocument(const QString& path, const QByteArray& body) { m_own[path] = body; }
    /// While set, the history list names files by this text instead of their names.
    void setTrickName(const QString& name) { m_trickName = name; }

private:
    /// The three sources differ in stations and in form.
    enum class Source
    {
        Vatsim,
        Ivao,
        Noaa,
        All
    };
    using Hour = std::chrono::sys_time<std::chrono::hours>;

    static QMap<QString, QString> defaultInfo();
    Document list(const QString& name, Hour hour);
    Document weatherList(Source source, bool whole, Hour hour);
    Document upperAir(const HttpRequest& request, aviation::Clock::UtcTime now) const;
    Document external(const QString& name, Hour hour);
    Document historyList(const QString& type, Hour hour) const;
    Document historyFile(const QString& name, Hour thisHour);
    Document infoFile() const;
    Document events(aviation::Clock::UtcTime now) const;
    Document windFile(Hour hour) const;
    Document turbulenceFile(Hour hour) const;

    const WeatherReports& reportsAt(Hour hour);
    WeatherReports sourceReports(Source source, Hour hour);

    WeatherReports m_reports; ///< as bundled
    UpperAirField m_field;
    QMap<QString, QString> m_info = defaultInfo();
    QHash<QString, QByteArray> m_own;
    QString m_trickName;
    QHash<QString, Document> m_cache; ///< by path, for m_cacheHour
    Hour m_cacheHour{};
    WeatherReports m_moved; ///< reports of m_movedHour
    Hour m_movedHour{};
};

} // namespace wxserver

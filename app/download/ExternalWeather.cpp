#include "app/download/ExternalWeather.h"

#include "app/base/LogLevel.h"
#include "app/base/OutsideText.h"
#include "app/base/Settings.h"
#include "app/base/StopFlag.h"
#include "app/base/UrlTemplate.h"
#include "app/download/DownloadReport.h"
#include "app/download/ServerAnswer.h"

#include <utility>

ExternalWeather::ExternalWeather(const Settings& settings, DownloadContext context,
                                 Reporting reporting)
    : m_settings(settings)
    , m_context(std::move(context))
    , m_reporting(std::move(reporting))
{}

WeatherList ExternalWeather::fetch()
{
    constexpr int kShortestMetarUrl = 6;
    constexpr int kShortestSynopUrl = 4;
    const QString metarUrl = m_settings.urlExternMetar();
    const QString synopUrl = m_settings.urlExternSynop();
    WeatherList list;
    list.origin = WeatherList::Origin::External;
    const auto metars = fetchText(QStringLiteral("Metar"), metarUrl, kShortestMetarUrl);
    if (metars) {
        list.text = QStringLiteral("[METAR]") + *metars + QStringLiteral("[/METAR]\n");
    }
    const auto synops = fetchText(QStringLiteral("Synop"), synopUrl, kShortestSynopUrl);
    if (synops) {
        // Deliberately instead of the METARs, not after them.
        list.text = QStringLiteral("[SYNOP]") + *synops + QStringLiteral("[/SYNOP]\n");
    }
    list.metarsFailed = !metarUrl.isEmpty() && !metars;
    list.synopsFailed = !synopUrl.isEmpty() && !synops;
    return list;
}

/// An address that was left empty on purpose is no fault.
std::optional<QString> ExternalWeather::fetchText(const QString& kind, const QString& urlTemplate,
                                                  int shortest)
{
    const QString title = QStringLiteral("(Controller) - Download %1").arg(kind);
    const QString url = expandUrlTemplate(urlTemplate);
    if (url.size() < shortest) {
        if (!urlTemplate.isEmpty()) {
            m_reporting.log(title + QStringLiteral(" - Url-Error") + url.toHtmlEscaped(),
                            loglevel::kError);
        }
        return std::nullopt;
    }
    m_reporting.log(title + QStringLiteral(" - ") + url.toHtmlEscaped(), loglevel::kDebug);
    DownloadManager manager(m_context);
    downloadreport::showProgress(manager, m_reporting.progress);
    QString text;
    const int error = manager.getToString(url, text);
    const QString reason = error != 0
                               ? manager.lastErrorText()
                               : serveranswer::fault(text.left(serveranswer::kHeadSize).toUtf8());
    if (reason.isEmpty()) {
        return text;
    }
    if (!m_context.stop->raised()) {
        m_reporting.log(title + QStringLiteral(" Error: ") + outsidetext::forLog(reason.trimmed())
                            + QLatin1Char(' ') + serveranswer::advice(error),
                        loglevel::kError);
    }
    return std::nullopt;
}

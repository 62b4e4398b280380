#include "app/base/LogLevel.h"
#include "app/base/Settings.h"
#include "app/base/SettingsValues.h"
#include "app/download/WeatherDownload.h"

QString WeatherDownload::addressOf(int source)
{
    const QString from = QStringLiteral("(Controller Weather) - Download weather from ");
    m_plainList = m_simulator() == aviation::fsid::kFs2020;
    if (m_plainList) {
        m_reporting.log(from + QStringLiteral("MSFS2020"), loglevel::kNotification);
        return m_settings.fs2020Url(true);
    }
    if (source == weathersource::kVatsim) {
        m_reporting.log(from + QStringLiteral("VATSIM"), loglevel::kNotification);
        return m_settings.vatsimUrl(true);
    }
    if (source == weathersource::kIvao) {
        m_reporting.log(from + QStringLiteral("IVAO"), loglevel::kNotification);
        return m_settings.ivaoUrl(true);
    }
    if (source != weathersource::kNoaa) {
        m_reporting.log(
            QStringLiteral("(Controller Weather) - There is no weather source %1, NOAA is used. "
                           "Choose a source in the settings.")
                .arg(source),
            loglevel::kWarning);
    }
    m_reporting.log(from + QStringLiteral("NOAA"), loglevel::kNotification);
    return m_settings.noaaUrl(true);
}

void WeatherDownload::switchServer()
{
    const QString first = m_settings.serverOne();
    const bool toSecond = m_settings.weatherServer() == first;
    m_settings.setWeatherServer(toSecond ? m_settings.serverTwo() : first);
    m_reporting.log(QStringLiteral("(Controller) - Switch to Weather server: ")
                        + (toSecond ? QStringLiteral("wxdata2") : QStringLiteral("wxdata1")),
                    loglevel::kNotification);
}

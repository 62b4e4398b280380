#include "app/Controller.h"
#include "app/PlaceTables.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/base/SettingsValues.h"
#include "app/download/WeatherDownload.h"
#include "app/jobs/SimulatorLink.h"
#include "weather/output/WeatherWrapper.h"

namespace {

QString serverName(const Settings& settings)
{
    if (settings.wxServerType() == wxservertype::kExternal) {
        return QStringLiteral("extern");
    }
    return settings.weatherServer() == settings.serverOne() ? QStringLiteral("wxdata1")
                                                            : QStringLiteral("wxdata2");
}

} // namespace

void Controller::OnStart()
{
    if (m_stop.raised()) {
        return;
    }
    LoadResources();
    m_view.pageWeather().OnEnableGetMetarButton(false);
    m_weatherDownload->useSourceOfSettings();
    m_view.closeSplash();
    onDownloadFileInfo();
    m_reporting.log(QStringLiteral("(Controller) - Weather server: ") + serverName(m_settings),
                    loglevel::kNotification);
    Q_EMIT sigStarted();
    if (m_settings.downloadWxAtStart()) {
        DownloadWeather(m_settings.weatherSource());
    } else {
        m_weatherDownload->readKept();
    }
    // The user may have connected, or closed the window, while an outside server was asked.
    if (m_settings.autoConnect() && !IsConnected() && !m_stop.raised()) {
        m_link->connectAtStart();
    }
}

void Controller::LoadResources()
{
    m_placeTables->load();
}

void Controller::onAirportListChanged()
{
    m_placeTables->readUserAirportsAgain();
}

#include "app/Controller.h"
#include "app/base/LogLevel.h"
#include "app/base/MainView.h"
#include "app/base/Settings.h"
#include "app/download/GlobalWindDownload.h"
#include "app/download/GribDownload.h"
#include "app/download/UpdateCheck.h"
#include "app/download/WeatherDownload.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"

void Controller::OnDownloadWeather()
{
    DownloadWeather(m_settings.weatherSource());
}

void Controller::DownloadWeather(int source)
{
    m_weatherDownload->download(source);
}

void Controller::beginDownload()
{
    m_view.pageWeather().OnEnableGetMetarButton(false);
    m_timerWeather.stop();
    m_view.setSetWxAction(true, tr("Set WX"), QString());
    m_view.setSystrayMessage(tr("Download weather"));
    m_reporting.log(QStringLiteral("(Controller Weather) - timer weather stopped"),
                    loglevel::kDebug);
}

void Controller::decodeWeatherText(const QString& text)
{
    m_weatherWorker->setWeatherText(text);
    m_posts.toWeather(Job(weatherjob::kDecodeWeather, QStringLiteral("decode weather data")));
}

void Controller::OnDownloadWeatherFinished(QString filename, int error)
{
    m_weatherDownload->takeFile(filename, error);
}

void Controller::OnDownloadError(int errNum, QString errStr)
{
    m_weatherDownload->logFailure(errNum, errStr);
}

void Controller::SwitchWeatherServer()
{
    m_weatherDownload->switchServer();
}

int Controller::DownloadGrib(const aviation::Position& position, bool single)
{
    return m_gribDownload->DownloadGrib(position, single);
}

void Controller::DownloadXPlaneGlobalWind()
{
    m_globalWindDownload->download();
}

void Controller::onDownloadFileInfo()
{
    m_updateCheck->download();
}

void Controller::OnDownloadFileInfoFinished(QString filename, int error)
{
    m_updateCheck->takeFile(filename, error);
}

void Controller::OnDownloadFileInfoError(int errNum, QString errStr)
{
    m_updateCheck->logFailure(errNum, errStr);
}

void Controller::onCheckNewVersion()
{
    m_updateCheck->checkKeptFile();
}

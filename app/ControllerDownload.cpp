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
#include "weather/output/WeatherWrapper.h"

void Controller::OnDownloadWeather()
{
    m_weatherDownload->download(m_settings.weatherSource(), WeatherDownload::Asked::ByPilot);
}

void Controller::DownloadWeather(int source)
{
    m_weatherDownload->download(source);
}

void Controller::beginDownload()
{
    m_sinceDownload.lapMs();
    m_view.pageWeather().OnEnableGetMetarButton(false);
    m_timerWeather.stop();
    m_weatherWorker->giveWay();
    m_globalWindDownload->tryFailedAgain();
    m_view.setSetWxAction(true, tr("Set WX"), QString());
    m_view.setSystrayMessage(tr("Download weather"));
    m_reporting.log(QStringLiteral("(Controller Weather) - timer weather stopped"),
                    loglevel::kDebug);
}

void Controller::decodeWeatherList(const WeatherList& list)
{
    m_weatherWorker->setWeatherList(list);
    m_weatherWorker->giveWay(); // the decode job mustn't lie behind one that waits
    m_posts.toWeather(Job(weatherjob::kDecodeWeather, QStringLiteral("decode weather data")));
}

/// Display, direct wind, updates and the next download go on with what is held.
void Controller::goOnWithoutDownload()
{
    const bool isHeld = m_weather->metarCount() + m_weather->synopCount() > 0;
    m_view.pageWeather().OnEnableGetMetarButton(isHeld);
    startWeatherClock();
    if (!isHeld) {
        m_weatherDownload->readKept();
    }
}

void Controller::startWeatherClock()
{
    m_timerWeather.start();
    m_reporting.log(QStringLiteral("(Controller Weather) - timer weather started"),
                    loglevel::kDebug);
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

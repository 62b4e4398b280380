#include "app/gui/UnattendedRun.h"

#include "app/Controller.h"
#include "app/jobs/WeatherWorker.h"
#include "sim/ConnectJobs.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <cstdio>

namespace {

/// The slots of the finished job, and the reports that they bring to the window, come first.
constexpr int kSettleMs = 1500;
constexpr int kPictureWidth = 1280;
constexpr int kPictureHeight = 800;

bool isSetJob(int jobId)
{
    return jobId >= connectjob::kSetWeather && jobId <= connectjob::kSetXPlaneFiles;
}

void print(const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

} // namespace

UnattendedRun::UnattendedRun(const QString& pictureFile) : m_pictureFile(pictureFile)
{
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &UnattendedRun::giveUp);
}

void UnattendedRun::printLog(const QString& line)
{
    if (!m_isOver) {
        print(line);
    }
}

void UnattendedRun::watch(QWidget& window, Controller& controller)
{
    m_window = &window;
    m_controller = &controller;
    window.resize(kPictureWidth, kPictureHeight);
    connect(&controller, &Controller::sigFinishJobForAircraftEditor, this,
            [this](int jobId, const QString&, int error) { jobFinished(jobId, error); });
    connect(&controller.weatherWorker(), &WeatherWorker::sigProgress, this,
            [this](qlonglong, qlonglong total, const QString&) {
                m_prepared = total > 0 ? total : m_prepared;
            });
    m_limit.start(kLimitMs);
}

void UnattendedRun::jobFinished(int jobId, int error)
{
    if (!isSetJob(jobId) || error != 0 || m_isSet) {
        return;
    }
    m_isSet = true;
    QTimer::singleShot(kSettleMs, this, &UnattendedRun::takePicture);
}

void UnattendedRun::takePicture()
{
    m_isOver = true; // the two lines below are to be the last
    const QPixmap picture = m_window->grab();
    if (!picture.save(m_pictureFile, "PNG")) {
        print(QStringLiteral("screenshot: can not write ") + m_pictureFile);
        finish(1);
        return;
    }
    // The one record of X-Plane is prepared without progress.
    print(QStringLiteral("weather set: %1 stations").arg(std::max<qlonglong>(1, m_prepared)));
    print(QStringLiteral("screenshot: ") + m_pictureFile);
    finish(0);
}

void UnattendedRun::giveUp()
{
    print(QStringLiteral("no weather was set within %1 s: %2")
              .arg(kLimitMs / 1000)
              .arg(!m_controller->IsConnected() ? QStringLiteral("the simulator isn't connected")
                   : m_prepared > 0 ? QStringLiteral("the simulator didn't take the weather")
                                    : QStringLiteral("no weather was downloaded or prepared")));
    finish(1);
}

void UnattendedRun::finish(int status)
{
    m_limit.stop();
    QCoreApplication::exit(status);
}

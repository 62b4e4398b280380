#include "app/gui/UnattendedRun.h"

#include "app/Controller.h"
#include "app/gui/CirrilonView.h"
#include "app/jobs/WeatherWorker.h"
#include "aviation/FsId.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "weather/output/WeatherWrapper.h"

#include <QCoreApplication>
#include <QPixmap>

#include <cstdio>

namespace {

/// The slots of the finished job, and the reports that they bring to the window, come first.
constexpr int kSettleMs = 1500;
constexpr int kPictureWidth = 1280;
constexpr int kPictureHeight = 800;

bool IsSetJob(int jobId)
{
    return jobId >= connectjob::kSetWeather && jobId <= connectjob::kSetXPlaneFiles;
}

} // namespace

UnattendedRun::UnattendedRun(CirrilonView& view, const QString& pictureFile)
    : m_view(view)
    , m_pictureFile(pictureFile)
{
    view.resize(kPictureWidth, kPictureHeight);
    connect(&view.controller().connectWorker(), &ConnectWorker::sigJobFinish, this,
            [this](int jobId, const QString&, int error) { jobFinished(jobId, error); });
    connect(&view.controller().weatherWorker(), &WeatherWorker::sigProgress, this,
            [this](qlonglong, qlonglong total, const QString&) {
                m_lastTotal = total > 0 ? total : m_lastTotal;
            });
    m_limit.setSingleShot(true);
    connect(&m_limit, &QTimer::timeout, this, &UnattendedRun::giveUp);
    m_limit.start(kLimitMs);
}

void UnattendedRun::print(const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void UnattendedRun::jobFinished(int jobId, int error)
{
    if (!IsSetJob(jobId) || error != 0 || m_stations >= 0) {
        return;
    }
    m_stations = stationsOfLastSet(jobId);
    QTimer::singleShot(kSettleMs, this, &UnattendedRun::takePicture);
}

int UnattendedRun::stationsOfLastSet(int jobId) const
{
    const WeatherWorker& worker = m_view.controller().weatherWorker();
    switch (jobId) {
    case connectjob::kSetXPlaneFiles:
        return static_cast<int>(worker.xplaneMetarLines().size());
    case connectjob::kSetXPlaneWeather:
    case connectjob::kSetXPlane12Weather:
        return 1;
    case connectjob::kSetTheme:
        return static_cast<int>(m_lastTotal);
    default:
        break;
    }
    const bool fsuipc =
        m_view.controller().connectWorker().interfaceType() == aviation::interfaceid::kFsuipc;
    return static_cast<int>(fsuipc ? worker.fsuipcRecords().size()
                                   : worker.simConnectStrings().size());
}

void UnattendedRun::takePicture()
{
    m_view.setLogMirror({}); // the two lines below are to be the last
    const QPixmap picture = m_view.grab();
    if (!picture.save(m_pictureFile, "PNG")) {
        print(QStringLiteral("screenshot: can not write ") + m_pictureFile);
        finish(1);
        return;
    }
    print(QStringLiteral("weather set: %1 stations").arg(m_stations));
    print(QStringLiteral("screenshot: ") + m_pictureFile);
    finish(0);
}

void UnattendedRun::giveUp()
{
    Controller& controller = m_view.controller();
    const bool connected = controller.IsConnected();
    const bool weather = !controller.weatherWorker().xplaneMetarLines().empty();
    print(QStringLiteral("no weather was set within %1 s: %2")
              .arg(kLimitMs / 1000)
              .arg(!connected ? QStringLiteral("the simulator isn't connected")
                   : weather  ? QStringLiteral("the simulator didn't take the weather")
                              : QStringLiteral("no weather was downloaded or prepared")));
    finish(1);
}

void UnattendedRun::finish(int status)
{
    m_limit.stop();
    QCoreApplication::exit(status);
}

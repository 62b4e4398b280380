#include "app/gui/RadarLink.h"

#include "app/Controller.h"
#include "maps/gui/WidgetRadar.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "sim/SimResult.h"

namespace {

/// What became of a request for clouds. Where it is good, the grid came before and says it.
void showResult(WidgetRadar& radar, const Controller& controller, int error)
{
    switch (error) {
    case simresult::kNone:
        break;
    case simresult::kNoInterface:
        radar.setConnected(controller.IsConnected());
        break;
    case simresult::kNotImplemented:
        radar.showNoCloudMap();
        break;
    default:
        radar.showFailure(ConnectWorker::errorText(error));
        break;
    }
}

} // namespace

void connectRadar(WidgetRadar& radar, Controller& controller)
{
    QObject::connect(&radar, &WidgetRadar::sigRequestClouds, &controller,
                     &Controller::OnRequestCloudsRGB);
    QObject::connect(&radar, &WidgetRadar::sigDebugString, &controller, &Controller::OnDebugString);
    QObject::connect(&controller, &Controller::sigCloudsRGB, &radar,
                     [&radar, &controller](std::vector<unsigned char> clouds) {
                         radar.setHeading(controller.aircraft().heading);
                         radar.setCloudsRGB(clouds);
                     });
    QObject::connect(&controller, &Controller::sigFinishJobForAircraftEditor, &radar,
                     [&radar, &controller](int jobId, const QString&, int error) {
                         if (jobId == connectjob::kCloudMap) {
                             showResult(radar, controller, error);
                         } else if (jobId == connectjob::kConnect
                                    || jobId == connectjob::kDisconnect) {
                             radar.setConnected(controller.IsConnected());
                         }
                     });
    radar.setConnected(controller.IsConnected());
}

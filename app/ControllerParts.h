#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/GribSource.h"
#include "sim/AircraftDatagrams.h"

class FsInterfaceFactory;
class MainView;
class ProcessRunner;
class Settings;
class UserDialogs;

namespace aviation {
class RandomSource;
}

/// When the controller looks after its connection to the simulator, milliseconds.
struct LinkTimes
{
    int watch = 2000; ///< without a job, between two looks whether the connection stands
    StreamTimes stream;
};

/// Everything that the controller is given. All of it outlives the controller.
struct ControllerParts
{
    Settings& settings;
    MainView& view;
    UserDialogs& dialogs;
    aviation::RandomSource& random;
    NetworkFactory network;
    ProcessRunner& processes;
    FsInterfaceFactory& interfaces;
    DownloadLimits limits;
    /// How long written weather rests before the simulator is asked to load it.
    int settleMs = 1000;
    LinkTimes link = {};
    /// The pause between the questions for upper-air data that don't come.
    int upperAirRoundMs = gribdownload::kRoundMs;
};

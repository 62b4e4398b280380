#pragma once

#include "app/base/DownloadManager.h"

class FsInterfaceFactory;
class MainView;
class ProcessRunner;
class Settings;
class UserDialogs;

namespace aviation {
class RandomSource;
}

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
};

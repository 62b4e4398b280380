#pragma once

#include "app/base/LogLevel.h"
#include "app/base/SettingsValues.h"
#include "aviation/FsId.h"

/// The table of all options, one row each, in the order in which they are written to the file:
///
///     X(type, getter, Setter, "key", default, class)
///
/// type:   Bool, Int, Text or Bytes
/// class:  Main options live only in "cirrilon.ini", Profile options in a profile as well.
/// The spelling of the keys is what stored files hold, including "waather/" and "showsysemtray".
/// A default may use documentsFolder(), the user's documents folder without a trailing separator.
// clang-format off
#define CIRRILON_OPTIONS(X) \
    /* written first */ \
    X(Bool,  restoreWindowGeometry, setRestoreWindowGeometry, "startup/windowsgeometry", true, Main) \
    X(Bool,  checkNewVersion, setCheckNewVersion, "startup/newversion", true, Main) \
    X(Bool,  checkNewVersionBeta, setCheckNewVersionBeta, "startup/newversionbeta", false, Main) \
    X(Text,  profile, setProfile, "main/profile", QString(), Main) \
    X(Int,   loggerLevel, setLoggerLevel, "main/loggerlevel", loglevel::kNotification, Main) \
    X(Text,  workFolder, setWorkFolder, "paths/workfolder", documentsFolder() + QStringLiteral("/CirrilonV3/"), Main) \
    /* main options */ \
    X(Bytes, windowState, setWindowState, "main/windowstate", QByteArray(), Main) \
    X(Bytes, windowGeometry, setWindowGeometry, "main/windowgeometry", QByteArray(), Main) \
    X(Bytes, flightplannerWindowState, setFlightplannerWindowState, "main/flightplannerwindowstate", QByteArray(), Main) \
    X(Bytes, flightplannerWindowGeometry, setFlightplannerWindowGeometry, "main/flightplannerwindowgeometry", QByteArray(), Main) \
    X(Text,  flightplanDatabaseAuthKey, setFlightplanDatabaseAuthKey, "flightplan/flightplandatabaseauthkey", QString(), Main) \
    X(Int,   mapType, setMapType, "map/type", maptype::kShapefiles, Main) \
    X(Bool,  mapCenter, setMapCenter, "map/center", true, Main) \
    X(Bool,  mapWind, setMapWind, "map/wind", true, Main) \
    X(Bool,  mapAirports, setMapAirports, "map/airports", true, Main) \
    X(Text,  mapLastPos, setMapLastPos, "map/lastpos", QStringLiteral("51.3:13.5"), Main) \
    X(Int,   unitWeight, setUnitWeight, "units/weight", weightunit::kKilograms, Main) \
    X(Int,   unitVolume, setUnitVolume, "units/volume", volumeunit::kLitres, Main) \
    X(Text,  recorderUserName, setRecorderUserName, "rec/username", QString(), Main) \
    X(Text,  recorderUserHash, setRecorderUserHash, "rec/userhash", QString(), Main) \
    X(Bool,  recorderEnable, setRecorderEnable, "recorder/enable", false, Main) \
    X(Text,  callsign, setCallsign, "rec/callsign", QString(), Main) \
    X(Bool,  useFsTime, setUseFsTime, "rec/usefstime", false, Main) \
    X(Int,   serverUpdateTimeMin, setServerUpdateTimeMin, "interface/serverupdatetimemin", 200, Main) \
    X(Int,   serverUpdateTimeMax, setServerUpdateTimeMax, "interface/serverupdatetimemax", 1000, Main) \
    X(Text,  exportMetarFile, setExportMetarFile, "paths/exportmetarfile", QString(), Main) \
    /* profile options */ \
    X(Bool,  fsMessage, setFsMessage, "main/fsmessage", true, Profile) \
    X(Int,   fsMessageTime, setFsMessageTime, "main/fsmessagetime", 5, Profile) \
    X(Bool,  showTaf, setShowTaf, "main/showtaf", true, Profile) \
    X(Bool,  showSystemTrayMessage, setShowSystemTrayMessage, "main/showsysemtraymessage", true, Profile) \
    X(Bool,  minimizeToTray, setMinimizeToTray, "main/minimizetotray", true, Profile) \
    X(Text,  simPath, setSimPath, "paths/sim", QString(), Profile) \
    X(Bool,  airacUse, setAiracUse, "airac/use", false, Profile) \
    X(Bool,  airacPmdg, setAiracPmdg, "airac/pmdg", false, Profile) \
    X(Bool,  airacCarenado, setAiracCarenado, "airac/carenado", false, Profile) \
    X(Bool,  airacAerosoft, setAiracAerosoft, "airac/aerosoft", false, Profile) \
    X(Text,  airacPmdgPath, setAiracPmdgPath, "airac/pmdg_path", QString(), Profile) \
    X(Text,  airacCarenadoPath, setAiracCarenadoPath, "airac/carenado_path", QString(), Profile) \
    X(Text,  airacAerosoftPath, setAiracAerosoftPath, "airac/aerosoft_path", QString(), Profile) \
    X(Bool,  airacUseDb, setAiracUseDb, "airac/usedb", false, Profile) \
    X(Text,  exportPmdg, setExportPmdg, "pathsexport/pmdg", QStringLiteral("{ FS } /PMDG"), Profile) \
    X(Text,  exportAerosoftAirbus, setExportAerosoftAirbus, "pathsexport/aerosoftairubfp", documentsFolder() + QStringLiteral("/Aerosoft/General/A3XX Flightplans/"), Profile) \
    X(Text,  flightplanPathP3D, setFlightplanPathP3D, "paths/flightplanP3D", QStringLiteral("./"), Profile) \
    X(Text,  flightplanPathFSX, setFlightplanPathFSX, "paths/flightplanFSX", QStringLiteral("./"), Profile) \
    X(Text,  flightplanPathFS9, setFlightplanPathFS9, "paths/flightplanFS9", QStringLiteral("./"), Profile) \
    X(Text,  flightplanPathXPlane, setFlightplanPathXPlane, "paths/flightplanXPlane", QStringLiteral("./"), Profile) \
    X(Int,   interfaceType, setInterfaceType, "interface/interfacetype", aviation::interfaceid::kFsuipc, Profile) \
    X(Text,  serverIp, setServerIp, "interface/ip", QStringLiteral("127.0.0.1"), Profile) \
    X(Int,   serverPort, setServerPort, "interface/port", 1234, Profile) \
    X(Text,  myIp, setMyIp, "interface/myip", QStringLiteral("127.0.0.1"), Profile) \
    X(Bool,  clearWxOnConnect, setClearWxOnConnect, "startup/clearwx", true, Profile) \
    X(Bool,  downloadWxAtStart, setDownloadWxAtStart, "startup/downloadwx", false, Profile) \
    X(Bool,  autoConnect, setAutoConnect, "startup/autoconnect", false, Profile) \
    X(Int,   weatherSource, setWeatherSource, "weather/source", weathersource::kNoaa, Profile) \
    X(Int,   wxServerType, setWxServerType, "weather/wxservertype", wxservertype::kAuto, Profile) \
    X(Text,  urlExternMetar, setUrlExternMetar, "waather/urlexternmetar", QString(), Profile) \
    X(Text,  urlExternSynop, setUrlExternSynop, "waather/urlexternsynop", QString(), Profile) \
    X(Text,  urlExternGrib, setUrlExternGrib, "waather/urlexterngrib", QString(), Profile) \
    X(Int,   updateTime, setUpdateTime, "weather/updatetime", 600, Profile) \
    X(Int,   downloadUpdateTime, setDownloadUpdateTime, "weather/downloadupdatetime", 600, Profile) \
    X(Int,   range, setRange, "weather/range", 100, Profile) \
    X(Int,   weatherMode, setWeatherMode, "weather/mode", weathermode::kDirect, Profile) \
    X(Bool,  synopOff, setSynopOff, "weather/synopoff", false, Profile) \
    X(Bool,  gribOff, setGribOff, "weather/griboff", false, Profile) \
    X(Bool,  noUpdateApproach, setNoUpdateApproach, "weather/noupdateapproach", false, Profile) \
    X(Bool,  gustySurfaceWind, setGustySurfaceWind, "weather/gustysurfacewind", true, Profile) \
    X(Bool,  fsWindDwc, setFsWindDwc, "weather/fswinddwc", true, Profile) \
    X(Int,   dwcDegreesPerSecond, setDwcDegreesPerSecond, "weather/fswinddegreespersecond", 1, Profile) \
    X(Int,   dwcKnotsPerSecond, setDwcKnotsPerSecond, "weather/fswindknotspersecond", 1, Profile) \
    X(Int,   vis9999, setVis9999, "weather/vis9999", 30000, Profile) \
    X(Int,   visMin, setVisMin, "weather/vis_min", 0, Profile) \
    X(Int,   visMax, setVisMax, "weather/vis_max", highestvisibility::kUnlimited, Profile) \
    X(Int,   cavokCover, setCavokCover, "weather/cavok_cover", 1, Profile) \
    X(Int,   cavokHeight, setCavokHeight, "weather/cavok_height", 5000, Profile) \
    X(Bool,  turbulenceInCloud, setTurbulenceInCloud, "weather/turbulenceincloud", true, Profile) \
    X(Bool,  generateStratus, setGenerateStratus, "weather/generatestratus", false, Profile) \
    X(Bool,  mixedClouds, setMixedClouds, "weather/mixedclouds", false, Profile) \
    X(Bool,  generateCirrus, setGenerateCirrus, "weather/generatecirrus", true, Profile) \
    X(Bool,  icingInClouds, setIcingInClouds, "weather/icinginclouds", true, Profile)
// clang-format on

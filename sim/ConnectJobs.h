#pragma once

/// Job ids of ConnectWorker, a number range of its own: the weather worker's ids mean other things.
/// Ids without a name here do nothing and finish with 0.
namespace connectjob {
inline constexpr int kConnect = 1;
inline constexpr int kDisconnect = 3;
inline constexpr int kAircraftData = 4;
inline constexpr int kEditorAircraftData = 5;
inline constexpr int kEditorAircraftDataAgain = 6;
inline constexpr int kGetFuel = 7;
inline constexpr int kSetFuel = 8;
inline constexpr int kSetPayload = 9;
inline constexpr int kGetPayload = 10;
inline constexpr int kEditorGetPayload = 11;
inline constexpr int kSetPayloadAgain = 12;
inline constexpr int kSetWeather = 13;
inline constexpr int kSetTheme = 14;
inline constexpr int kSetXPlaneWeather = 15;
inline constexpr int kSetXPlane12Weather = 16;
inline constexpr int kSetXPlaneFiles = 17;
inline constexpr int kSetWindLayers = 19;
inline constexpr int kSetVisibility = 21;
inline constexpr int kSetGlobalWind = 22;
inline constexpr int kSetTurbulence = 23;
inline constexpr int kActivateWeather = 24;
inline constexpr int kClearWeather = 25;
inline constexpr int kCreateStation = 26;
inline constexpr int kCreateStationAgain = 27;
inline constexpr int kWeatherAt = 29;
inline constexpr int kCloudMap = 30;
inline constexpr int kLoadFlightPlan = 32;
inline constexpr int kSendText = 33;
inline constexpr int kWindAtAircraft = 35;
inline constexpr int kGetRadios = 36;
inline constexpr int kSetRadios = 37;
inline constexpr int kDateTime = 38;
inline constexpr int kServerConfig = 39;
inline constexpr int kAnnounceAddress = 40;
inline constexpr int kNotImplemented = 41;
inline constexpr int kWrongVersion42 = 42;
inline constexpr int kWrongVersion43 = 43;
inline constexpr int kWrongVersion44 = 44;
/// Looks whether the connection still stands; sends nothing. The program's own.
inline constexpr int kCheckLink = 50;
} // namespace connectjob

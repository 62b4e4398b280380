#pragma once

#include <QString>

/// Numbers of the bridge's messages, as they stand on the wire.
namespace simulator {

namespace command {
inline constexpr int kHello = 1;
inline constexpr int kConnectedSimulator = 2;
inline constexpr int kRead = 4;
inline constexpr int kWrite = 5;
inline constexpr int kRequest = 6;
inline constexpr int kAnswer = 7;
inline constexpr int kRefusal = 8;
} // namespace command

namespace message {
inline constexpr int kHello = 1;
inline constexpr int kAircraft = 2;
inline constexpr int kFuel = 3;
inline constexpr int kPayload = 4;
inline constexpr int kWind = 6;
inline constexpr int kWeatherRecord = 7;
inline constexpr int kWeatherText = 8;
inline constexpr int kWeatherData = 9;
inline constexpr int kFileName = 10;
inline constexpr int kFile = 11;
inline constexpr int kWindLayers = 13;
inline constexpr int kGlobalWindFile = 14;
inline constexpr int kTurbulenceFile = 15;
inline constexpr int kActivateWeather = 16;
inline constexpr int kVisibility = 17;
inline constexpr int kRadios = 18;
inline constexpr int kScreenText = 20;
inline constexpr int kClearWeather = 22;
inline constexpr int kDateTime = 23;
inline constexpr int kConfigFile = 24;
inline constexpr int kClientAddress = 25;
inline constexpr int kWeatherDataWx = 28;
inline constexpr int kIsConnected = 80;
inline constexpr int kConnectedAnswer = 81;
} // namespace message

/// What a message is about, such as "WRIT 8 weather text"; "NCMD 99" for what the table hasn't.
QString messageName(int command, int id);

} // namespace simulator

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

inline constexpr std::size_t kXPlaneCloudLayers = 3;

/// A cloud layer for X-Plane.
struct XPlaneCloud
{
    std::int32_t Type = 0;
    float Coverage = 0.0F;
    float Base = 0.0F; ///< metres
    float Top = 0.0F;  ///< metres
};

/// A wind layer for X-Plane: eleven floats, 44 bytes. The long text form prints the first six, the
/// short one of X-Plane 12 the first eight.
struct XPlaneWindLayer
{
    float Alt = 0.0F;   ///< metres
    float Dir = 0.0F;   ///< degrees true
    float Speed = 0.0F; ///< knots
    float Turbulence = 0.0F;
    float ShearDir = 0.0F;          ///< degrees
    float ShearSpeed = 0.0F;        ///< knots
    std::array<float, 4> Further{}; ///< sent as 0; what they do in the simulator isn't known
    float Marker = -100.0F;
};
static_assert(sizeof(XPlaneWindLayer) == 44);

/// Weather for direct X-Plane output through the bridge. Plain value.
struct XPlaneWeather
{
    float Press = 29.92F;               ///< QNH, inches of mercury
    float Vis = 80000.0F;               ///< metres
    float Temp = 15.0F;                 ///< degrees Celsius at sea level
    float Dew = 0.0F;                   ///< degrees Celsius at sea level
    float RainPercent = 0.0F;           ///< fraction, 0 to 1
    float ThunderstromPercent = 0.0F;   ///< fraction, 0 to 1
    float WindTurbulencePercent = 0.0F; ///< fraction, 0 to 1
    float RateChangePercent = 0.0F;     ///< fraction, 0 to 1
    float WaveDir = 0.0F;
    float WaveHeight = 0.0F;
    float WaveSpeed = 0.0F;
    float WaveLenght = 0.0F;
    float TempTropo = -99.0F;                      ///< degrees Celsius, -99 not known
    float TropoAltMeter = -99.0F;                  ///< metres, -99 not known
    std::array<float, 2> Further{100000.0F, 5.0F}; ///< part of the record, never printed
    std::string WX; ///< weather text that X-Plane 12 gets beside the values
    std::array<XPlaneCloud, kXPlaneCloudLayers> Clouds{};
    std::vector<XPlaneWindLayer> Winds;
};

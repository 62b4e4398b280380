#pragma once

#include "aviation/AircraftData.h"
#include "aviation/AircraftLoad.h"
#include "aviation/RadioFrequencys.h"
#include "standins/simulator/FsuipcOffsets.h"

#include <QByteArray>

#include <array>
#include <bitset>
#include <cstdint>
#include <cstring>
#include <optional>
#include <type_traits>
#include <vector>

namespace simulator {

/// The 64 KB that FSUIPC's offsets are in, little-endian, and which of them were written. Offsets
/// and sizes have to lie within. Plain value of one thread.
class FsuipcImage
{
public:
    template <class Value>
    void put(std::uint32_t at, Value value)
    {
        static_assert(std::is_arithmetic_v<Value>);
        std::memcpy(&m_bytes[at], &value, sizeof(value));
    }
    template <class Value>
    Value get(std::uint32_t at) const
    {
        static_assert(std::is_arithmetic_v<Value>);
        Value value{};
        std::memcpy(&value, &m_bytes[at], sizeof(value));
        return value;
    }
    /// Cut so that a zero ends it; zeros after it.
    void putText(std::uint32_t at, std::uint32_t size, const QByteArray& text);
    /// Up to its first zero, at most `size` - 1 bytes.
    QByteArray text(std::uint32_t at, std::uint32_t size) const;
    void fillZero(std::uint32_t at, std::uint32_t size);
    void read(std::uint32_t at, std::uint32_t size, void* destination) const;

    /// A client's write, which wasWritten() reports until forgetWrites().
    void write(std::uint32_t at, const std::vector<std::uint8_t>& bytes);
    /// Every byte of it.
    bool wasWritten(std::uint32_t at, std::uint32_t size) const;
    void forgetWrites() { m_written.reset(); }

private:
    std::vector<std::uint8_t> m_bytes = std::vector<std::uint8_t>(offset::kMemoryBytes);
    std::bitset<offset::kMemoryBytes> m_written;
};

/// Everything of the flight but kTouchdownSpeed. Feet and feet a minute are rounded away from zero
/// in the offset's unit, so that a reader who cuts the fraction gets the whole number back.
void showAircraft(const aviation::structs::AircraftData& aircraft, FsuipcImage& image);
/// Feet a minute into kVerticalSpeed or kTouchdownSpeed.
void showVerticalSpeed(std::uint32_t at, int feetPerMinute, FsuipcImage& image);
/// A tank that the aircraft hasn't gets capacity 0.
void showFuel(const aviation::structs::AircraftFuel& fuel, FsuipcImage& image);
/// At most offset::kMostStations.
void showPayload(const aviation::structs::AircraftPayload& payload, FsuipcImage& image);
void showRadios(const aviation::structs::RadioFrequencys& radios, FsuipcImage& image);

/// What a client wrote; what it didn't write, and what no simulator would take, stays as it was.
/// False if nothing was written.
bool takeFuel(const FsuipcImage& image, aviation::structs::AircraftFuel& fuel);
bool takePayload(const FsuipcImage& image, aviation::structs::AircraftPayload& payload);
bool takeRadios(const FsuipcImage& image, aviation::structs::RadioFrequencys& radios);

} // namespace simulator

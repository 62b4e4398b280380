#pragma once

#include "aviation/AircraftData.h"
#include "aviation/AircraftLoad.h"
#include "aviation/RadioFrequencys.h"
#include "sim/SimConnectDefinitions.h"
#include "sim/SimConnectReply.h"
#include "sim/clients/SimConnectApi.h"

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// The connection to the simulator and what its last messages said. Messages come from outside: a
/// short or odd one changes nothing. For one thread; nothing throws.
class SimConnectClient
{
public:
    explicit SimConnectClient(std::unique_ptr<SimConnectApi> api);
    SimConnectClient(const SimConnectClient&) = delete;
    SimConnectClient& operator=(const SimConnectClient&) = delete;
    ~SimConnectClient();

    /// False when the simulator can't be reached.
    bool open();
    /// Makes the data definitions and subscribes to the events; false when a call failed.
    bool define();
    /// False when the call failed; the connection counts as closed in any case.
    bool close();

    /// Asks for the data once; false when the call failed.
    bool request(const SimConnectRequest& request);
    /// Asks whether the simulation runs; false when the call failed.
    bool requestState();
    /// Writes the load of a station, numbered from 1, in pounds; false when a call failed.
    bool setPayloadWeight(int station, double pounds);
    /// Levels from 0 to 1 in the slots of the definition; false when the call failed.
    bool setFuelLevels(const std::array<double, kSimConnectTanks>& levels);
    /// Number of the last packet that was sent, 0 when it isn't known.
    std::uint32_t lastSentId();
    /// Fetches one message, if one waits, and takes it in.
    SimConnectReply Dispatch();

    /// The simulator said that it ends.
    bool hasQuit() const { return m_hasQuit; }
    /// The aircraft was asked for, and neither it nor a refusal has come since.
    bool awaitsAircraft() const { return m_awaitsAircraft; }
    /// The pilot's pause key, as the last event says.
    bool isPausedByKey() const { return m_pausedByKey; }
    /// The simulator's clock with the last aircraft was a time; else the time before it stays.
    bool hasClock() const { return m_hasClock; }

    SimConnectApi& api() { return *m_api; }
    SimConnectApi::Handle handle() const { return m_handle; }

    /// Plain texts, empty before the first of their kind.
    const QString& exceptionText() const { return m_exceptionText; }
    /// The packet that the last exception is about.
    std::uint32_t exceptionPacket() const { return m_exceptionPacket; }
    /// The variable that the last exception is about, empty for anything else.
    const QString& refusedVariable() const { return m_refusedVariable; }
    const QString& applicationName() const { return m_applicationName; }
    /// "AppVersion=10.0.61259.0".
    const QString& applicationVersion() const { return m_applicationVersion; }
    const QString& observation() const { return m_observation; }
    const aviation::structs::AircraftData& aircraft() const { return m_aircraft; }
    const aviation::structs::AircraftFuel& fuel() const { return m_fuel; }
    const aviation::structs::AircraftPayload& payload() const { return m_payload; }
    const aviation::structs::RadioFrequencys& radios() const { return m_radios; }
    /// The line about the open message, with the application's name as the caller wants it shown.
    QString openText(const QString& name) const;
    /// At most 64 rows of 64.
    const std::vector<std::uint8_t>& cloudState() const { return m_cloudState; }

private:
    /// A message with the bytes that really came, whatever its head says.
    struct Received
    {
        const char* bytes;
        std::size_t size;

        /// Copies the head of a message; false when there are too few bytes for it.
        template <typename Head>
        bool read(Head& head) const;
    };

    bool setData(std::uint32_t definition, void* data, std::size_t size);
    bool addDatum(std::uint32_t definition, const SimConnectDatum& datum);
    bool makeDefinition(const SimConnectDefinition& definition);
    SimConnectReply take(std::uint32_t id, const Received& message);
    SimConnectReply takeException(const Received& message);
    SimConnectReply takeOpen(const Received& message);
    SimConnectReply takeEvent(const Received& message);
    SimConnectReply takeObjectData(const Received& message);
    SimConnectReply takeObservation(const Received& message);
    SimConnectReply takeCloudState(const Received& message);
    SimConnectReply takeSystemState(const Received& message);
    void takeAircraft(const char* data);
    void takeRadios(const char* data);

    std::unique_ptr<SimConnectApi> m_api;
    SimConnectApi::Handle m_handle = nullptr;
    bool m_open = false;
    bool m_hasQuit = false;
    bool m_awaitsAircraft = false;
    bool m_pausedByKey = false;
    bool m_hasClock = true;
    std::uint32_t m_aircraftPacket = 0;               ///< of the request that is awaited
    std::map<std::uint32_t, std::string> m_variables; ///< those of the definitions, by packet
    QString m_exceptionText;
    std::uint32_t m_exceptionPacket = 0;
    QString m_refusedVariable;
    QString m_applicationName;
    QString m_applicationVersion;
    QString m_simConnectVersion;
    QString m_observation;
    double m_verticalSpeed = 0.0; ///< feet per minute of the last sample in the air
    aviation::structs::AircraftData m_aircraft;
    aviation::structs::AircraftFuel m_fuel;
    aviation::structs::AircraftPayload m_payload;
    aviation::structs::RadioFrequencys m_radios;
    std::vector<std::uint8_t> m_cloudState;
};

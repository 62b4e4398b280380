#pragma once

#include "aviation/Position.h"

#include <QByteArray>
#include <QHostAddress>
#include <QString>

#include <cstdint>
#include <string>
#include <vector>

/// Operations outside the common table. An interface object that has them derives from these
/// besides FsInterfaceBase, and ConnectWorker asks for them after a look at the interface
/// identifier. Same thread, same result codes.

/// The addresses of a connection to a bridge server, null ones without it.
struct BridgeEnds
{
    QHostAddress own;
    QHostAddress server;
};

/// What only a bridge client does.
class BridgeOperations
{
public:
    BridgeOperations() = default;
    BridgeOperations(const BridgeOperations&) = delete;
    BridgeOperations& operator=(const BridgeOperations&) = delete;
    virtual ~BridgeOperations() = default;

    /// Carries a file of this computer over to the server.
    virtual int SendWeatherFile(const std::string& path) = 0;
    /// The server's configuration file, as its reply gave it.
    virtual int requestServerConfig(QByteArray& contents) = 0;
    /// Tells the server this computer's address; it answers with the UDP port, a decimal text, to
    /// which it will push aircraft data.
    virtual int announceAddress(const QString& address, QString& port) = 0;
    virtual BridgeEnds ends() const { return {}; }
};

/// A box of air, altitudes in feet.
struct CloudArea
{
    aviation::Position lower;
    int lowerAltitude = 0;
    aviation::Position upper;
    int upperAltitude = 0;
};

/// What only an interface with SimConnect does.
class SimConnectOperations
{
public:
    SimConnectOperations() = default;
    SimConnectOperations(const SimConnectOperations&) = delete;
    SimConnectOperations& operator=(const SimConnectOperations&) = delete;
    virtual ~SimConnectOperations() = default;

    /// Lets the simulator take observations instead of a theme; before the first of a series.
    virtual int setCustomWeatherMode() = 0;
    /// simresult::kCloudReply with a map of the clouds in the area.
    virtual int GetCloudState(const CloudArea& area, std::vector<std::uint8_t>& map) = 0;
};

/// What only an interface with FSUIPC does.
class FsuipcOperations
{
public:
    FsuipcOperations() = default;
    FsuipcOperations(const FsuipcOperations&) = delete;
    FsuipcOperations& operator=(const FsuipcOperations&) = delete;
    virtual ~FsuipcOperations() = default;

    /// Writes the weather command word.
    virtual int writeWeatherCommand(std::uint16_t word) = 0;
};

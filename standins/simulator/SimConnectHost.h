#pragma once

#include "sim/clients/SimConnectMessages.h"

#include <QMutex>

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <string>

namespace simulator {

/// What a simulator says of itself when SimConnect is opened.
struct SimConnectVersion
{
    std::string applicationName;                       ///< at most 255 bytes
    std::array<std::uint32_t, 4> application{};        ///< major, minor, build major, build minor
    std::array<std::uint32_t, 4> simConnect{};         ///< the same
    static SimConnectVersion fsx();                    ///< 10.0
    static SimConnectVersion prepar3d(unsigned major); ///< 2 to 6
    static SimConnectVersion fs2020();                 ///< 11.0
};

/// The switches of a simulator that SimConnect clients come to, and its book of their calls. It
/// outlives the clients, which are freed and made anew. For any thread.
class SimConnectHost
{
public:
    explicit SimConnectHost(SimConnectVersion version = SimConnectVersion::fsx());

    void setVersion(const SimConnectVersion& version);
    SimConnectVersion version() const;

    /// Not running, it fails every call and lets nobody in. Clients of a simulator that ended have
    /// to open anew when it runs again.
    void setRunning(bool running);
    bool isRunning() const;
    /// Changes when the simulator ends.
    int session() const;

    /// The next `count` calls of that name ("SimConnect_Text") fail with `result`; 0 ends it.
    void failNextCalls(const std::string& name, int count = 1,
                       simconnect::Result result = simconnect::kFailed);
    /// The result of a call that has to fail, which it counts; kOk for another.
    simconnect::Result takeFailure(const std::string& name);

    /// Puts down a call with its arguments after the handle, joined by ", ".
    void note(const std::string& name, const std::string& arguments);
    int callCount(const std::string& name) const;
    /// The last calls with their arguments, such as "SimConnect_ClearDataDefinition 5"; at most
    /// some thousand. SimConnect_GetNextDispatch is only counted.
    std::deque<std::string> calls() const;
    void clearCalls();

private:
    struct Failure
    {
        int count = 0;
        simconnect::Result result = simconnect::kFailed;
    };

    mutable QMutex m_mutex; ///< guards all below
    SimConnectVersion m_version;
    bool m_running = true;
    int m_session = 0;
    std::map<std::string, Failure> m_failures;
    std::map<std::string, int> m_counts;
    std::deque<std::string> m_calls;
};

} // namespace simulator

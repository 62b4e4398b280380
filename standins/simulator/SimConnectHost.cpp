#include "standins/simulator/SimConnectHost.h"

#include "aviation/support/ScopedLock.h"

#include <utility>

namespace simulator {

namespace {

constexpr std::size_t kKeptCalls = 4096;
constexpr std::size_t kLongestKeptCall = 4096;

} // namespace

SimConnectVersion SimConnectVersion::fsx()
{
    return {"Flight Simulator X", {10, 0, 61637, 0}, {10, 0, 61259, 0}};
}

SimConnectVersion SimConnectVersion::prepar3d(unsigned major)
{
    return {"Prepar3D v" + std::to_string(major), {major, 1, 0, 0}, {major, 1, 0, 0}};
}

SimConnectVersion SimConnectVersion::fs2020()
{
    return {"FS2020", {11, 0, 282174, 999}, {11, 0, 62651, 3}};
}

SimConnectHost::SimConnectHost(SimConnectVersion version) : m_version(std::move(version)) {}

void SimConnectHost::setVersion(const SimConnectVersion& version)
{
    const aviation::ScopedLock lock(m_mutex);
    m_version = version;
}

SimConnectVersion SimConnectHost::version() const
{
    const aviation::ScopedLock lock(m_mutex);
    return m_version;
}

void SimConnectHost::setRunning(bool running)
{
    const aviation::ScopedLock lock(m_mutex);
    m_session += m_running && !running ? 1 : 0;
    m_running = running;
}

bool SimConnectHost::isRunning() const
{
    const aviation::ScopedLock lock(m_mutex);
    return m_running;
}

int SimConnectHost::session() const
{
    const aviation::ScopedLock lock(m_mutex);
    return m_session;
}

void SimConnectHost::failNextCalls(const std::string& name, int count, simconnect::Result result)
{
    const aviation::ScopedLock lock(m_mutex);
    m_failures[name] = {count, result};
}

simconnect::Result SimConnectHost::takeFailure(const std::string& name)
{
    const aviation::ScopedLock lock(m_mutex);
    const auto found = m_failures.find(name);
    if (found == m_failures.end() || found->second.count <= 0) {
        return simconnect::kOk;
    }
    --found->second.count;
    return found->second.result;
}

void SimConnectHost::note(const std::string& name, const std::string& arguments)
{
    const aviation::ScopedLock lock(m_mutex);
    ++m_counts[name];
    if (name == "SimConnect_GetNextDispatch") {
        return;
    }
    const std::string call = arguments.empty() ? name : name + " " + arguments;
    m_calls.push_back(call.substr(0, kLongestKeptCall));
    if (m_calls.size() > kKeptCalls) {
        m_calls.pop_front();
    }
}

int SimConnectHost::callCount(const std::string& name) const
{
    const aviation::ScopedLock lock(m_mutex);
    const auto found = m_counts.find(name);
    return found == m_counts.end() ? 0 : found->second;
}

std::deque<std::string> SimConnectHost::calls() const
{
    const aviation::ScopedLock lock(m_mutex);
    return m_calls;
}

void SimConnectHost::clearCalls()
{
    const aviation::ScopedLock lock(m_mutex);
    m_calls.clear();
    m_counts.clear();
}

} // namespace simulator

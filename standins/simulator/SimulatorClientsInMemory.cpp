#include "standins/simulator/SimulatorClientsInMemory.h"

#include "aviation/support/Clock.h"
#include "aviation/support/ScopedLock.h"
#include "standins/simulator/SimConnectSimulator.h"

#include <utility>

namespace simulator {

namespace {

SimulatedFlight startedNow(SimulatedFlight flight)
{
    flight.setStartTime(aviation::Clock::current().nowSeconds()
                        - static_cast<std::int64_t>(flight.elapsed()));
    return flight;
}

} // namespace

/// FSUIPC that is known to its maker as long as it lives.
class SimulatorClientsInMemory::Fsuipc final : public FsuipcApi
{
public:
    Fsuipc(SimulatorClientsInMemory& maker, const FsuipcOptions& options)
        : m_maker(maker)
        , m_memory(maker.m_model, maker.m_faults, options)
    {
        m_maker.add(&m_memory);
    }
    ~Fsuipc() override { m_maker.remove(&m_memory); }

    std::uint32_t simulatorCode() const override { return m_memory.simulatorCode(); }
    std::uint32_t version() const override { return m_memory.version(); }

protected:
    std::uint32_t doOpen(std::uint32_t simulator) override
    {
        std::uint32_t result = fsuipc::kOk;
        m_memory.FSUIPC_Open(simulator, &result);
        return result;
    }
    void doClose() override { m_memory.FSUIPC_Close(); }
    std::uint32_t doRead(std::uint32_t offset, std::uint32_t size, void* destination) override
    {
        std::uint32_t result = fsuipc::kOk;
        m_memory.FSUIPC_Read(offset, size, destination, &result);
        return result;
    }
    std::uint32_t doWrite(std::uint32_t offset, std::uint32_t size, const void* source) override
    {
        std::uint32_t result = fsuipc::kOk;
        m_memory.FSUIPC_Write(offset, size, source, &result);
        return result;
    }
    std::uint32_t doProcess() override
    {
        std::uint32_t result = fsuipc::kOk;
        m_memory.FSUIPC_Process(&result);
        return result;
    }

private:
    SimulatorClientsInMemory& m_maker;
    FsuipcMemory m_memory;
};

SimulatorClientsInMemory::SimulatorClientsInMemory(SimulatedFlight flight)
    : m_model(startedNow(std::move(flight)))
{}

bool SimulatorClientsInMemory::isInstalled(bool SimulatorClientsInMemory::*library,
                                           const std::string& folder, const char* name,
                                           std::string& problem)
{
    const aviation::ScopedLock lock(m_mutex);
    m_lastFolder = folder;
    if (!(this->*library)) {
        problem = std::string(name) + " isn't installed.";
    }
    return this->*library;
}

std::unique_ptr<SimConnectApi>
SimulatorClientsInMemory::simConnect(const std::string& simulatorFolder, std::string& problem)
{
    if (!isInstalled(&SimulatorClientsInMemory::m_hasSimConnect, simulatorFolder, "SimConnect",
                     problem))
    {
        return nullptr;
    }
    return std::make_unique<SimConnectSimulator>(m_model, m_faults, m_host);
}

std::unique_ptr<FsuipcApi> SimulatorClientsInMemory::fsuipc(const std::string& simulatorFolder,
                                                            std::string& problem)
{
    if (!isInstalled(&SimulatorClientsInMemory::m_hasFsuipc, simulatorFolder, "FSUIPC", problem)) {
        return nullptr;
    }
    FsuipcOptions options;
    {
        const aviation::ScopedLock lock(m_mutex);
        options = m_fsuipcOptions;
    }
    return std::make_unique<Fsuipc>(*this, options);
}

void SimulatorClientsInMemory::setSimConnectInstalled(bool isInstalled)
{
    const aviation::ScopedLock lock(m_mutex);
    m_hasSimConnect = isInstalled;
}

void SimulatorClientsInMemory::setFsuipcInstalled(bool isInstalled)
{
    const aviation::ScopedLock lock(m_mutex);
    m_hasFsuipc = isInstalled;
}

void SimulatorClientsInMemory::setRunning(bool isRunning)
{
    m_host.setRunning(isRunning);
    const aviation::ScopedLock lock(m_mutex);
    for (FsuipcMemory* memory : m_memories) {
        memory->setRunning(isRunning);
    }
}

void SimulatorClientsInMemory::setFsuipcOptions(const FsuipcOptions& options)
{
    const aviation::ScopedLock lock(m_mutex);
    m_fsuipcOptions = options;
}

std::string SimulatorClientsInMemory::lastFolder() const
{
    const aviation::ScopedLock lock(m_mutex);
    return m_lastFolder;
}

void SimulatorClientsInMemory::add(FsuipcMemory* memory)
{
    const aviation::ScopedLock lock(m_mutex);
    memory->setRunning(m_host.isRunning());
    m_memories.push_back(memory);
}

void SimulatorClientsInMemory::remove(FsuipcMemory* memory)
{
    const aviation::ScopedLock lock(m_mutex);
    std::erase(m_memories, memory);
}

} // namespace simulator

#pragma once

#include "sim/clients/FsuipcApi.h"
#include "sim/clients/SimulatorClients.h"
#include "tests/sim/ScriptedSimConnect.h"

#include <QByteArray>

#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

/// A simulator's memory and how FSUIPC behaves, shared by all clients of a test.
struct FsuipcScript
{
    struct Write
    {
        std::uint32_t offset;
        QByteArray bytes;
    };

    void put(std::uint32_t offset, const QByteArray& bytes)
    {
        std::memcpy(&memory[offset], bytes.constData(), static_cast<std::size_t>(bytes.size()));
    }
    template <typename T>
    void put(std::uint32_t offset, T value)
    {
        std::memcpy(&memory[offset], &value, sizeof(value));
    }

    std::vector<std::uint8_t> memory = std::vector<std::uint8_t>(0x10000);
    std::uint32_t openCode = fsuipc::kOk;
    std::uint32_t code = 8; ///< of the simulator
    std::uint32_t version = 0x39900002;
    std::map<int, std::uint32_t> failures; ///< codes of the processes, counted from 1
    std::function<void()> beforeProcess;
    int opens = 0;
    int closes = 0;
    int processes = 0;
    std::vector<Write> writes; ///< that were carried out
};

/// An FSUIPC over a script. What is queued when a process fails isn't carried out.
class ScriptedFsuipc final : public FsuipcApi
{
public:
    explicit ScriptedFsuipc(FsuipcScript& script) : m_script(script) {}

    std::uint32_t simulatorCode() const override { return m_script.code; }
    std::uint32_t version() const override { return m_script.version; }

protected:
    std::uint32_t doOpen(std::uint32_t /*simulator*/) override
    {
        ++m_script.opens;
        return m_script.openCode;
    }
    void doClose() override { ++m_script.closes; }
    std::uint32_t doRead(std::uint32_t offset, std::uint32_t size, void* destination) override
    {
        m_queue.push_back({offset, size, destination, {}});
        return fsuipc::kOk;
    }
    std::uint32_t doWrite(std::uint32_t offset, std::uint32_t size, const void* source) override
    {
        const QByteArray bytes(static_cast<const char*>(source), static_cast<int>(size));
        m_queue.push_back({offset, size, nullptr, bytes});
        return fsuipc::kOk;
    }
    std::uint32_t doProcess() override
    {
        ++m_script.processes;
        const auto queue = std::exchange(m_queue, {});
        if (m_script.beforeProcess) {
            m_script.beforeProcess();
        }
        const auto failure = m_script.failures.find(m_script.processes);
        if (failure != m_script.failures.end()) {
            return failure->second;
        }
        for (const Request& request : queue) {
            carryOut(request);
        }
        return fsuipc::kOk;
    }

private:
    struct Request
    {
        std::uint32_t offset;
        std::uint32_t size;
        void* destination; ///< null in a write
        QByteArray bytes;  ///< to write
    };

    void carryOut(const Request& request)
    {
        if (request.destination != nullptr) {
            std::memcpy(request.destination, &m_script.memory.at(request.offset), request.size);
        } else {
            m_script.put(request.offset, request.bytes);
            m_script.writes.push_back({request.offset, request.bytes});
        }
    }

    FsuipcScript& m_script;
    std::vector<Request> m_queue;
};

/// Clients over scripts of both kinds, or none, with a problem that has markup in it.
class ScriptedBothClients final : public SimulatorClients
{
public:
    std::unique_ptr<SimConnectApi> simConnect(const std::string& simulatorFolder,
                                              std::string& problem) override
    {
        folder = simulatorFolder;
        problem = hasSimConnect ? std::string() : "no <SimConnect> here";
        return hasSimConnect ? std::make_unique<ScriptedSimConnect>(simConnectScript) : nullptr;
    }
    std::unique_ptr<FsuipcApi> fsuipc(const std::string& simulatorFolder,
                                      std::string& problem) override
    {
        folder = simulatorFolder;
        problem = hasFsuipc ? std::string() : "no <FSUIPC> here";
        return hasFsuipc ? std::make_unique<ScriptedFsuipc>(fsuipcScript) : nullptr;
    }

    FsuipcScript fsuipcScript;
    SimConnectScript simConnectScript;
    bool hasFsuipc = true;
    bool hasSimConnect = true;
    std::string folder; ///< that was searched last
};

#pragma once

#include "sim/clients/FsuipcApi.h"
#include "sim/clients/windows/RuntimeLibrary.h"

#include <memory>
#include <string>

/// FSUIPC by its client library, "FSUIPC_User64.dll" in a 64-bit program and "FSUIPC_User.dll" in a
/// 32-bit one. The library has one link and one buffer for the whole process, so only
/// ConnectWorker's thread may touch it. Closes the link at its end.
class FsuipcLibrary final : public FsuipcApi
{
public:
    /// As SimulatorClients::fsuipc.
    static std::unique_ptr<FsuipcApi> load(const std::string& simulatorFolder,
                                           std::string& problem);
    ~FsuipcLibrary() override;

    std::uint32_t simulatorCode() const override;
    std::uint32_t version() const override;

protected:
    std::uint32_t doOpen(std::uint32_t simulator) override;
    void doClose() override;
    std::uint32_t doRead(std::uint32_t offset, std::uint32_t size, void* destination) override;
    std::uint32_t doWrite(std::uint32_t offset, std::uint32_t size, const void* source) override;
    std::uint32_t doProcess() override;

private:
    /// The library's functions give a Windows BOOL, in the convention of plain C.
    struct Exports
    {
        int(__cdecl* open)(std::uint32_t simulator, std::uint32_t* result);
        void(__cdecl* close)();
        int(__cdecl* read)(std::uint32_t offset, std::uint32_t size, void* destination,
                           std::uint32_t* result);
        int(__cdecl* write)(std::uint32_t offset, std::uint32_t size, const void* source,
                            std::uint32_t* result);
        int(__cdecl* process)(std::uint32_t* result);
        const std::uint32_t* version;
        const std::uint32_t* simulator;
    };

    FsuipcLibrary(RuntimeLibrary library, const Exports& exports);
    static void bind(RuntimeLibrary& library, Exports& exports);

    RuntimeLibrary m_library; ///< keeps m_exports valid
    Exports m_exports;
};

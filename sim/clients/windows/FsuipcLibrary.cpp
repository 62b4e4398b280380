#include "sim/clients/windows/FsuipcLibrary.h"

#include <utility>

namespace {

constexpr const char* kFileName = sizeof(void*) == 8 ? "FSUIPC_User64.dll" : "FSUIPC_User.dll";
/// Where FSUIPC's installation puts itself, below the simulator's folder.
constexpr const wchar_t* kModulesFolder = L"Modules";

/// A call that failed has a code that says so, whatever the library put there.
std::uint32_t codeOf(int success, std::uint32_t result)
{
    if (success != 0) {
        return fsuipc::kOk;
    }
    return result == fsuipc::kOk ? fsuipc::kBadData : result;
}

} // namespace

FsuipcLibrary::FsuipcLibrary(RuntimeLibrary library, const Exports& exports)
    : m_library(std::move(library))
    , m_exports(exports)
{}

FsuipcLibrary::~FsuipcLibrary()
{
    FSUIPC_Close();
}

void FsuipcLibrary::bind(RuntimeLibrary& library, Exports& exports)
{
    library.bind("FSUIPC_Open", exports.open);
    library.bind("FSUIPC_Close", exports.close);
    library.bind("FSUIPC_Read", exports.read);
    library.bind("FSUIPC_Write", exports.write);
    library.bind("FSUIPC_Process", exports.process);
    library.bind("FSUIPC_Version", exports.version);
    library.bind("FSUIPC_FS_Version", exports.simulator);
}

std::unique_ptr<FsuipcApi> FsuipcLibrary::load(const std::string& simulatorFolder,
                                               std::string& problem)
{
    Exports exports{};
    RuntimeLibrary library =
        LibrarySearch(kFileName, simulatorFolder, kModulesFolder)
            .load([&exports](RuntimeLibrary& found) { bind(found, exports); }, problem);
    if (!library) {
        return nullptr;
    }
    return std::unique_ptr<FsuipcApi>(new FsuipcLibrary(std::move(library), exports));
}

std::uint32_t FsuipcLibrary::simulatorCode() const
{
    return *m_exports.simulator;
}

std::uint32_t FsuipcLibrary::version() const
{
    return *m_exports.version;
}

std::uint32_t FsuipcLibrary::doOpen(std::uint32_t simulator)
{
    std::uint32_t result = fsuipc::kOk;
    const int success = m_exports.open(simulator, &result);
    return codeOf(success, result);
}

void FsuipcLibrary::doClose()
{
    m_exports.close();
}

std::uint32_t FsuipcLibrary::doRead(std::uint32_t offset, std::uint32_t size, void* destination)
{
    std::uint32_t result = fsuipc::kOk;
    const int success = m_exports.read(offset, size, destination, &result);
    return codeOf(success, result);
}

std::uint32_t FsuipcLibrary::doWrite(std::uint32_t offset, std::uint32_t size, const void* source)
{
    std::uint32_t result = fsuipc::kOk;
    const int success = m_exports.write(offset, size, source, &result);
    return codeOf(success, result);
}

std::uint32_t FsuipcLibrary::doProcess()
{
    std::uint32_t result = fsuipc::kOk;
    const int success = m_exports.process(&result);
    return codeOf(success, result);
}

#include "sim/clients/FsuipcApi.h"
#include "sim/clients/SimConnectApi.h"
#include "sim/clients/SimulatorClients.h"
#include "tests/windows/WindowsCheck.h"

#include <fstream>

namespace fs = std::filesystem;
using namespace windows_check;

namespace {

constexpr const wchar_t* kSimConnect = L"SimConnect.dll";
constexpr const wchar_t* kFsuipc = L"FSUIPC_User64.dll";

/// An empty folder with letters outside every code page at once.
fs::path SimulatorFolder()
{
    fs::path folder = ProgramFolder() / L"Flüge \u822A\u7A7A";
    fs::remove_all(folder);
    fs::create_directories(folder / L"SimConnect SDK" / L"lib");
    fs::create_directories(folder / L"Modules");
    return folder;
}

/// Puts a file in a place for the life of the object.
class Placed
{
public:
    Placed(const char* form, const wchar_t* name, const fs::path& folder)
        : Placed(StandIns(form) / name, folder / name)
    {}
    Placed(const fs::path& from, const fs::path& to) : m_file(to) { fs::copy_file(from, to); }
    Placed(const Placed&) = delete;
    Placed& operator=(const Placed&) = delete;
    ~Placed()
    {
        std::error_code error; // a library that wasn't freed can't be removed
        Equal("removed", fs::remove(m_file, error), true);
    }

private:
    fs::path m_file;
};

bool LoadsSimConnect(const fs::path& simulator)
{
    std::string problem;
    const bool loaded = HostSimulatorClients().simConnect(Utf8(simulator), problem) != nullptr;
    Equal("a problem stands there exactly when nothing was loaded", problem.empty(), loaded);
    return loaded;
}

/// The file from which `kSimConnect` is loaded by a client for that simulator.
fs::path LoadedFrom(const fs::path& simulator)
{
    std::string problem;
    const auto client = HostSimulatorClients().simConnect(Utf8(simulator), problem);
    wchar_t file[MAX_PATH] = {};
    GetModuleFileNameW(GetModuleHandleW(kSimConnect), file, MAX_PATH);
    return client == nullptr ? fs::path() : fs::path(file);
}

std::string Quoted(const fs::path& path)
{
    return '"' + Utf8(path) + '"';
}

fs::path SystemFolder()
{
    wchar_t folder[MAX_PATH] = {};
    GetSystemDirectoryW(folder, MAX_PATH);
    return folder;
}

std::string Places(const fs::path& simulator, const char* below)
{
    return Quoted(ProgramFolder()) + ", " + Quoted(simulator) + ", " + Quoted(simulator / below)
           + " and " + Quoted(SystemFolder());
}

void TestProblems(const fs::path& simulator)
{
    HostSimulatorClients clients;
    std::string problem;
    const std::string slashes = Utf8(simulator.generic_wstring());
    True("no SimConnect", clients.simConnect(slashes, problem) == nullptr);
    Equal("no SimConnect: problem", problem,
          "\"SimConnect.dll\" wasn't found in " + Places(simulator, "SimConnect SDK\\lib")
              + "; copy it into one of these folders.");
    True("no FSUIPC, no simulator", clients.fsuipc({}, problem) == nullptr);
    Equal("no FSUIPC: problem", problem,
          "\"FSUIPC_User64.dll\" wasn't found in " + Quoted(ProgramFolder()) + " and "
              + Quoted(SystemFolder()) + "; copy it into one of these folders.");

    const Placed lacking("lacking", kSimConnect, simulator);
    const Placed lackingFsuipc("lacking", kFsuipc, simulator / "Modules");
    True("lacking", clients.simConnect(Utf8(simulator), problem) == nullptr);
    Equal("lacking: problem", problem,
          Quoted(simulator / kSimConnect)
              + " lacks the function SimConnect_Text; no usable one was found in "
              + Places(simulator, "SimConnect SDK\\lib") + '.');
    True("lacking FSUIPC", clients.fsuipc(Utf8(simulator), problem) == nullptr);
    Equal("lacking FSUIPC: problem", problem,
          Quoted(simulator / "Modules" / kFsuipc)
              + " lacks the function FSUIPC_Close; no usable one was found in "
              + Places(simulator, "Modules") + '.');

    std::ofstream(simulator / "text") << "no library\n";
    const Placed text(simulator / "text", ProgramFolder() / kSimConnect);
    True("a text file", clients.simConnect(Utf8(simulator), problem) == nullptr);
    Equal("a text file: problem", problem.substr(0, problem.find(';')),
          Quoted(ProgramFolder() / kSimConnect) + " is no 64-bit library");
}

void TestPlaces(const fs::path& simulator)
{
    const fs::path kit = simulator / L"SimConnect SDK" / L"lib";
    const Placed inKit("full", kSimConnect, kit);
    Equal("the kit's folder", LoadedFrom(simulator), kit / kSimConnect);
    {
        const Placed unusable("lacking", kSimConnect, simulator);
        Equal("passes over an unusable one", LoadedFrom(simulator), kit / kSimConnect);
    }
    const Placed inSimulator("full", kSimConnect, simulator);
    Equal("the simulator's folder", LoadedFrom(simulator), simulator / kSimConnect);
    Equal("forward slashes", LoadedFrom(simulator.generic_wstring()), simulator / kSimConnect);
    const Placed beside("full", kSimConnect, ProgramFolder());
    Equal("beside the program first", LoadedFrom(simulator), ProgramFolder() / kSimConnect);
    True("freed with the client", GetModuleHandleW(kSimConnect) == nullptr);
}

/// A library in the current folder or on the path may be anybody's.
void TestNoOtherPlaces(const fs::path& simulator)
{
    const Placed planted("full", kSimConnect, simulator);
    const fs::path before = fs::current_path();
    fs::current_path(simulator);
    SetEnvironmentVariableW(L"PATH", simulator.c_str());
    for (const char* folder : {"", ".", "..", "\\", "C:"}) {
        True(folder, !LoadsSimConnect(folder));
    }
    std::string problem;
    True("bytes that are no UTF-8",
         HostSimulatorClients().simConnect("\xFF\xFE", problem) == nullptr);
    fs::current_path(before);
}

/// Only under Wine, where the system's folder is made for the test.
void TestSystemFolder()
{
    if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr) {
        const Placed system("full", kSimConnect, SystemFolder());
        True("the system's folder", LoadsSimConnect({}));
    }
}

} // namespace

void TestLibrarySearch()
{
    const fs::path simulator = SimulatorFolder();
    TestProblems(simulator);
    TestPlaces(simulator);
    TestNoOtherPlaces(simulator);
    TestSystemFolder();
    fs::remove_all(simulator);
}

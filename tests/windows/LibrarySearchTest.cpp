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
fs::path simulatorFolder()
{
    fs::path folder = programFolder() / L"Flüge \u822A\u7A7A";
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
        : Placed(standIns(form) / name, folder / name)
    {}
    Placed(const fs::path& from, const fs::path& to) : m_file(to) { fs::copy_file(from, to); }
    Placed(const Placed&) = delete;
    Placed& operator=(const Placed&) = delete;
    ~Placed()
    {
        std::error_code error; // a library that wasn't freed can't be removed
        checkEqual("removed", fs::remove(m_file, error), true);
    }

private:
    fs::path m_file;
};

bool loadsSimConnect(const fs::path& simulator)
{
    std::string problem;
    const bool loaded = HostSimulatorClients().simConnect(utf8(simulator), problem) != nullptr;
    checkEqual("a problem stands there exactly when nothing was loaded", problem.empty(), loaded);
    return loaded;
}

/// The file from which `kSimConnect` is loaded by a client for that simulator.
fs::path loadedFrom(const fs::path& simulator)
{
    std::string problem;
    const auto client = HostSimulatorClients().simConnect(utf8(simulator), problem);
    wchar_t file[MAX_PATH] = {};
    GetModuleFileNameW(GetModuleHandleW(kSimConnect), file, MAX_PATH);
    return client == nullptr ? fs::path() : fs::path(file);
}

std::string quoted(const fs::path& path)
{
    return '"' + utf8(path) + '"';
}

fs::path systemFolder()
{
    wchar_t folder[MAX_PATH] = {};
    GetSystemDirectoryW(folder, MAX_PATH);
    return folder;
}

std::string places(const fs::path& simulator, const char* below)
{
    return quoted(programFolder()) + ", " + quoted(simulator) + ", " + quoted(simulator / below)
           + " and " + quoted(systemFolder());
}

void testProblems(const fs::path& simulator)
{
    HostSimulatorClients clients;
    std::string problem;
    const std::string slashes = utf8(simulator.generic_wstring());
    checkTrue("no SimConnect", clients.simConnect(slashes, problem) == nullptr);
    checkEqual("no SimConnect: problem", problem,
               "\"SimConnect.dll\" wasn't found in " + places(simulator, "SimConnect SDK\\lib")
                   + "; copy it into one of these folders.");
    checkTrue("no FSUIPC, no simulator", clients.fsuipc({}, problem) == nullptr);
    checkEqual("no FSUIPC: problem", problem,
               "\"FSUIPC_User64.dll\" wasn't found in " + quoted(programFolder()) + " and "
                   + quoted(systemFolder()) + "; copy it into one of these folders.");

    const Placed lacking("lacking", kSimConnect, simulator);
    const Placed lackingFsuipc("lacking", kFsuipc, simulator / "Modules");
    checkTrue("lacking", clients.simConnect(utf8(simulator), problem) == nullptr);
    checkEqual("lacking: problem", problem,
               quoted(simulator / kSimConnect)
                   + " lacks the function SimConnect_Text; no usable one was found in "
                   + places(simulator, "SimConnect SDK\\lib") + '.');
    checkTrue("lacking FSUIPC", clients.fsuipc(utf8(simulator), problem) == nullptr);
    checkEqual("lacking FSUIPC: problem", problem,
               quoted(simulator / "Modules" / kFsuipc)
                   + " lacks the function FSUIPC_Close; no usable one was found in "
                   + places(simulator, "Modules") + '.');

    std::ofstream(simulator / "text") << "no library\n";
    const Placed text(simulator / "text", programFolder() / kSimConnect);
    checkTrue("a text file", clients.simConnect(utf8(simulator), problem) == nullptr);
    checkEqual("a text file: problem", problem.substr(0, problem.find(';')),
               quoted(programFolder() / kSimConnect) + " is no 64-bit library");
}

void testPlaces(const fs::path& simulator)
{
    const fs::path kit = simulator / L"SimConnect SDK" / L"lib";
    const Placed inKit("full", kSimConnect, kit);
    checkEqual("the kit's folder", loadedFrom(simulator), kit / kSimConnect);
    {
        const Placed unusable("lacking", kSimConnect, simulator);
        checkEqual("passes over an unusable one", loadedFrom(simulator), kit / kSimConnect);
    }
    const Placed inSimulator("full", kSimConnect, simulator);
    checkEqual("the simulator's folder", loadedFrom(simulator), simulator / kSimConnect);
    checkEqual("forward slashes", loadedFrom(simulator.generic_wstring()), simulator / kSimConnect);
    const Placed beside("full", kSimConnect, programFolder());
    checkEqual("beside the program first", loadedFrom(simulator), programFolder() / kSimConnect);
    checkTrue("freed with the client", GetModuleHandleW(kSimConnect) == nullptr);
}

/// A library in the current folder or on the path may be anybody's.
void testNoOtherPlaces(const fs::path& simulator)
{
    const Placed planted("full", kSimConnect, simulator);
    const fs::path before = fs::current_path();
    fs::current_path(simulator);
    SetEnvironmentVariableW(L"PATH", simulator.c_str());
    for (const char* folder : {"", ".", "..", "\\", "C:"}) {
        checkTrue(folder, !loadsSimConnect(folder));
    }
    std::string problem;
    checkTrue("bytes that are no UTF-8",
              HostSimulatorClients().simConnect("\xFF\xFE", problem) == nullptr);
    fs::current_path(before);
}

/// Only under Wine, where the system's folder is made for the test.
void testSystemFolder()
{
    if (GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr) {
        const Placed system("full", kSimConnect, systemFolder());
        checkTrue("the system's folder", loadsSimConnect({}));
    }
}

} // namespace

void testLibrarySearch()
{
    const fs::path simulator = simulatorFolder();
    testProblems(simulator);
    testPlaces(simulator);
    testNoOtherPlaces(simulator);
    testSystemFolder();
    fs::remove_all(simulator);
}

#include "sim/clients/FsuipcApi.h"
#include "sim/clients/SimulatorClients.h"
#include "tests/windows/WindowsCheck.h"

#include <cstring>
#include <vector>

using namespace windows_check;

namespace {

using Code = std::uint32_t;
constexpr Code kFull = static_cast<Code>(fsuipc::kBufferBytes);

/// A client of the stand-in, the calls in short and the stand-in's own switches.
struct Client
{
    std::unique_ptr<FsuipcApi> api;
    void(__cdecl* behave)(Code headBytes, Code failure) = nullptr;
    Code(__cdecl* callCount)() = nullptr;
    std::vector<char> bytes = std::vector<char>(kFull + 1, '\x5A');

    Client()
    {
        std::string problem;
        api = HostSimulatorClients().fsuipc(utf8(standIns("full")), problem);
        checkEqual("FSUIPC loads", problem, "");
        behave = standInFunction<decltype(behave)>(L"FSUIPC_User64.dll", "StandIn_Behave");
        callCount = standInFunction<decltype(callCount)>(L"FSUIPC_User64.dll", "StandIn_CallCount");
    }

    static Code check(bool success, Code code)
    {
        checkEqual("false exactly with a code", success, code == fsuipc::kOk);
        return code;
    }
    Code open(Code simulator = fsuipc::kAnySimulator)
    {
        Code code = 99;
        const bool success = api->FSUIPC_Open(simulator, &code);
        return check(success, code);
    }
    Code read(Code offset, Code size, void* destination)
    {
        Code code = 99;
        const bool success = api->FSUIPC_Read(offset, size, destination, &code);
        return check(success, code);
    }
    Code write(Code offset, Code size, const void* source)
    {
        Code code = 99;
        const bool success = api->FSUIPC_Write(offset, size, source, &code);
        return check(success, code);
    }
    Code process()
    {
        Code code = 99;
        const bool success = api->FSUIPC_Process(&code);
        return check(success, code);
    }
};

void testLink(Client& client)
{
    Code word = 0;
    checkEqual("read before open", client.read(0, 4, &word), fsuipc::kNotOpen);
    checkEqual("process before open", client.process(), fsuipc::kNotOpen);
    checkEqual("no simulator yet", client.api->simulatorCode(), 0U);
    client.behave(0, fsuipc::kNoSimulator);
    checkEqual("open without a simulator", client.open(), fsuipc::kNoSimulator);
    checkEqual("still not open", client.write(0, 4, &word), fsuipc::kNotOpen);
    client.behave(0, fsuipc::kOk);
    checkEqual("open", client.open(8), fsuipc::kOk);
    checkEqual("simulator", client.api->simulatorCode(), 8U);
    checkEqual("version", client.api->version(), 0x51520003U);
    checkEqual("open again", client.open(), fsuipc::kAlreadyOpen);
    checkEqual("nothing queued", client.process(), fsuipc::kNoRequests);

    {
        Client other;
        checkEqual("open by another client", other.open(), fsuipc::kAlreadyOpen);
        checkEqual("whose link works", other.read(0, 4, &word), fsuipc::kOk);
        checkEqual("and is carried out", other.process(), fsuipc::kOk);
    }
    Client next;
    checkEqual("a client's end closes the link", next.open(), fsuipc::kOk);
}

void testReadsAndWrites(Client& client)
{
    checkEqual("open", client.open(), fsuipc::kOk);
    double wind = 271.5;
    double back = 0.0;
    checkEqual("write", client.write(0x2DE0, sizeof wind, &wind), fsuipc::kOk);
    checkEqual("read", client.read(0x2DE0, sizeof back, &back), fsuipc::kOk);
    wind = 0.0;
    checkEqual("nothing is done before process", back, 0.0);
    checkEqual("process", client.process(), fsuipc::kOk);
    checkEqual("what was written, at the time of the call, in order", back, 271.5);

    client.read(0xFFFF, 2, &back);
    checkEqual("bad data", client.process(), fsuipc::kBadData);
    client.behave(0, fsuipc::kTimeout);
    client.read(0, 2, &back);
    checkEqual("timeout", client.process(), fsuipc::kTimeout);
    client.behave(0, fsuipc::kOk);
    client.read(0, 2, &back);
    client.api->FSUIPC_Close();
    checkEqual("closed", client.process(), fsuipc::kNotOpen);
}

void testBuffer(Client& client)
{
    checkEqual("open", client.open(), fsuipc::kOk);
    char* bytes = client.bytes.data();
    const Code before = client.callCount();
    checkEqual("one more than fits", client.write(0, kFull + 1, bytes), fsuipc::kBufferFull);
    checkEqual("never reaches the library", client.callCount(), before);
    checkEqual("as much as fits", client.write(0, kFull, bytes), fsuipc::kOk);
    checkEqual("then nothing more", client.write(0x8000, 1, bytes), fsuipc::kBufferFull);
    checkEqual("process", client.process(), fsuipc::kOk);
    char last[2] = {};
    client.read(kFull - 1, 2, last);
    checkEqual("process again", client.process(), fsuipc::kOk);
    checkEqual("the last byte arrived", last[0], '\x5A');
    checkEqual("no byte more", last[1], '\0');

    client.behave(16, fsuipc::kOk);
    checkEqual("the library's own rule", client.write(0, kFull, bytes), fsuipc::kBufferFull);
    checkEqual("what it refused takes no room", client.write(0x9000, kFull - 16, bytes),
               fsuipc::kOk);
    checkEqual("process what is queued", client.process(), fsuipc::kBadData);
    client.write(0x9000, 1, bytes);
    client.write(0x9001, kFull - 1, bytes);
    checkEqual("runs with what is queued", client.process(), fsuipc::kOk);
    client.read(0x9000, 2, last);
    client.process();
    checkEqual("only that", std::string(last, 2), std::string("\x5A\0", 2));
    client.behave(0, fsuipc::kOk);
}

} // namespace

void testFsuipcCalls()
{
    for (void (*test)(Client&) : {testLink, testReadsAndWrites, testBuffer}) {
        Client client;
        if (client.api != nullptr && client.behave != nullptr && client.callCount != nullptr) {
            test(client);
        }
    }
    checkTrue("freed with the clients", GetModuleHandleW(L"FSUIPC_User64.dll") == nullptr);
}

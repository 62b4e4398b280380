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
        api = HostSimulatorClients().fsuipc(Utf8(StandIns("full")), problem);
        Equal("FSUIPC loads", problem, "");
        behave = StandInFunction<decltype(behave)>(L"FSUIPC_User64.dll", "StandIn_Behave");
        callCount = StandInFunction<decltype(callCount)>(L"FSUIPC_User64.dll", "StandIn_CallCount");
    }

    static Code check(bool success, Code code)
    {
        Equal("false exactly with a code", success, code == fsuipc::kOk);
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

void TestLink(Client& client)
{
    Code word = 0;
    Equal("read before open", client.read(0, 4, &word), fsuipc::kNotOpen);
    Equal("process before open", client.process(), fsuipc::kNotOpen);
    Equal("no simulator yet", client.api->simulatorCode(), 0U);
    client.behave(0, fsuipc::kNoSimulator);
    Equal("open without a simulator", client.open(), fsuipc::kNoSimulator);
    Equal("still not open", client.write(0, 4, &word), fsuipc::kNotOpen);
    client.behave(0, fsuipc::kOk);
    Equal("open", client.open(8), fsuipc::kOk);
    Equal("simulator", client.api->simulatorCode(), 8U);
    Equal("version", client.api->version(), 0x51520003U);
    Equal("open again", client.open(), fsuipc::kAlreadyOpen);
    Equal("nothing queued", client.process(), fsuipc::kNoRequests);

    {
        Client other;
        Equal("open by another client", other.open(), fsuipc::kAlreadyOpen);
        Equal("whose link works", other.read(0, 4, &word), fsuipc::kOk);
        Equal("and is carried out", other.process(), fsuipc::kOk);
    }
    Client next;
    Equal("a client's end closes the link", next.open(), fsuipc::kOk);
}

void TestReadsAndWrites(Client& client)
{
    Equal("open", client.open(), fsuipc::kOk);
    double wind = 271.5;
    double back = 0.0;
    Equal("write", client.write(0x2DE0, sizeof wind, &wind), fsuipc::kOk);
    Equal("read", client.read(0x2DE0, sizeof back, &back), fsuipc::kOk);
    wind = 0.0;
    Equal("nothing is done before process", back, 0.0);
    Equal("process", client.process(), fsuipc::kOk);
    Equal("what was written, at the time of the call, in order", back, 271.5);

    client.read(0xFFFF, 2, &back);
    Equal("bad data", client.process(), fsuipc::kBadData);
    client.behave(0, fsuipc::kTimeout);
    client.read(0, 2, &back);
    Equal("timeout", client.process(), fsuipc::kTimeout);
    client.behave(0, fsuipc::kOk);
    client.read(0, 2, &back);
    client.api->FSUIPC_Close();
    Equal("closed", client.process(), fsuipc::kNotOpen);
}

void TestBuffer(Client& client)
{
    Equal("open", client.open(), fsuipc::kOk);
    char* bytes = client.bytes.data();
    const Code before = client.callCount();
    Equal("one more than fits", client.write(0, kFull + 1, bytes), fsuipc::kBufferFull);
    Equal("never reaches the library", client.callCount(), before);
    Equal("as much as fits", client.write(0, kFull, bytes), fsuipc::kOk);
    Equal("then nothing more", client.write(0x8000, 1, bytes), fsuipc::kBufferFull);
    Equal("process", client.process(), fsuipc::kOk);
    char last[2] = {};
    client.read(kFull - 1, 2, last);
    Equal("process again", client.process(), fsuipc::kOk);
    Equal("the last byte arrived", last[0], '\x5A');
    Equal("no byte more", last[1], '\0');

    client.behave(16, fsuipc::kOk);
    Equal("the library's own rule", client.write(0, kFull, bytes), fsuipc::kBufferFull);
    Equal("what it refused takes no room", client.write(0x9000, kFull - 16, bytes), fsuipc::kOk);
    Equal("process what is queued", client.process(), fsuipc::kBadData);
    client.write(0x9000, 1, bytes);
    client.write(0x9001, kFull - 1, bytes);
    Equal("runs with what is queued", client.process(), fsuipc::kOk);
    client.read(0x9000, 2, last);
    client.process();
    Equal("only that", std::string(last, 2), std::string("\x5A\0", 2));
    client.behave(0, fsuipc::kOk);
}

} // namespace

void TestFsuipcCalls()
{
    for (void (*test)(Client&) : {TestLink, TestReadsAndWrites, TestBuffer}) {
        Client client;
        if (client.api != nullptr && client.behave != nullptr && client.callCount != nullptr) {
            test(client);
        }
    }
    True("freed with the clients", GetModuleHandleW(L"FSUIPC_User64.dll") == nullptr);
}

// Stands in for FSUIPC's client library: one link for the process, a buffer of requests that one
// call carries out on a small memory, and the library's own rule of what fits in the buffer.
#include "sim/clients/FsuipcApi.h"

#include <cstring>
#include <vector>

#define STAND_IN_EXPORT(type) extern "C" __declspec(dllexport) type __cdecl

namespace {

struct Request
{
    std::uint32_t offset = 0;
    std::uint32_t size = 0;
    void* destination = nullptr;      ///< of a read
    std::vector<unsigned char> bytes; ///< of a write
};

struct Link
{
    bool open = false;
    std::uint32_t calls = 0;
    std::uint32_t headBytes = 0; ///< what a request needs in the buffer besides its data
    std::uint32_t failure = fsuipc::kOk;
    std::size_t used = 0;
    std::vector<Request> requests;
    std::vector<unsigned char> memory = std::vector<unsigned char>(0x10000);
};
Link g_link;

int answer(std::uint32_t code, std::uint32_t* result)
{
    ++g_link.calls;
    *result = code;
    return code == fsuipc::kOk ? 1 : 0;
}

std::uint32_t enqueue(Request request)
{
    const std::size_t bytes = std::size_t{request.size} + g_link.headBytes;
    if (!g_link.open) {
        return fsuipc::kNotOpen;
    }
    if (g_link.used + bytes > fsuipc::kBufferBytes) {
        return fsuipc::kBufferFull;
    }
    g_link.used += bytes;
    g_link.requests.push_back(std::move(request));
    return fsuipc::kOk;
}

std::uint32_t carryOut(const Request& request)
{
    if (std::size_t{request.offset} + request.size > g_link.memory.size()) {
        return fsuipc::kBadData;
    }
    unsigned char* place = g_link.memory.data() + request.offset;
    if (request.destination != nullptr) {
        std::memcpy(request.destination, place, request.size);
    } else {
        std::memcpy(place, request.bytes.data(), request.size);
    }
    return fsuipc::kOk;
}

std::uint32_t carryOutAll()
{
    std::uint32_t code = g_link.failure;
    for (const Request& request : g_link.requests) {
        code = code == fsuipc::kOk ? carryOut(request) : code;
    }
    g_link.requests.clear();
    g_link.used = 0;
    return code;
}

} // namespace

extern "C" {
__declspec(dllexport) std::uint32_t FSUIPC_Version = 0;
__declspec(dllexport) std::uint32_t FSUIPC_FS_Version = 0;
}

STAND_IN_EXPORT(std::uint32_t) StandIn_CallCount()
{
    return g_link.calls;
}

STAND_IN_EXPORT(void) StandIn_Behave(std::uint32_t headBytes, std::uint32_t failure)
{
    g_link.headBytes = headBytes;
    g_link.failure = failure;
}

STAND_IN_EXPORT(int) FSUIPC_Open(std::uint32_t simulator, std::uint32_t* result)
{
    if (g_link.open) {
        return answer(fsuipc::kAlreadyOpen, result);
    }
    g_link.open = g_link.failure == fsuipc::kOk;
    FSUIPC_Version = 0x51520003;
    FSUIPC_FS_Version = simulator == fsuipc::kAnySimulator ? 7 : simulator;
    return answer(g_link.failure, result);
}

#ifndef CIRRILON_STAND_IN_LACKS
STAND_IN_EXPORT(void) FSUIPC_Close()
{
    g_link.open = false;
    g_link.requests.clear();
    g_link.used = 0;
    ++g_link.calls;
}
#endif

STAND_IN_EXPORT(int)
FSUIPC_Read(std::uint32_t offset, std::uint32_t size, void* destination, std::uint32_t* result)
{
    return answer(enqueue({offset, size, destination, {}}), result);
}

STAND_IN_EXPORT(int)
FSUIPC_Write(std::uint32_t offset, std::uint32_t size, const void* source, std::uint32_t* result)
{
    const auto* bytes = static_cast<const unsigned char*>(source);
    return answer(enqueue({offset, size, nullptr, {bytes, bytes + size}}), result);
}

STAND_IN_EXPORT(int) FSUIPC_Process(std::uint32_t* result)
{
    return answer(carryOutAll(), result);
}

#pragma once

#include <cstddef>
#include <cstdint>

/// Result codes of FSUIPC's published IPC.
namespace fsuipc {
inline constexpr std::uint32_t kOk = 0;
inline constexpr std::uint32_t kAlreadyOpen = 1;
inline constexpr std::uint32_t kNoLink = 2;      ///< "not connected"
inline constexpr std::uint32_t kNotOpen = 9;     ///< "Call cannot execute, link not Open"
inline constexpr std::uint32_t kNoRequests = 10; ///< nothing queued to process
inline constexpr std::uint32_t kTimeout = 11;
inline constexpr std::uint32_t kSendFailed = 12; ///< the simulator's window is gone
inline constexpr std::uint32_t kBadData = 13;
inline constexpr std::uint32_t kNoSimulator = 14; ///< WideClient without a simulator
inline constexpr std::uint32_t kBufferFull = 15;

inline constexpr std::uint32_t kAnySimulator = 0; ///< as the simulator that Open asks for
inline constexpr std::size_t kBufferBytes = 32512;
} // namespace fsuipc

/// FSUIPC's IPC: reads and writes of the simulator's memory by offset are queued and carried out
/// together. The five calls have their published names and arguments and return false with a code
/// of namespace fsuipc in `result`. The rules of link and buffer are here, so that every form
/// has them: a form implements the do... functions. The buffer is one for the process, so only
/// ConnectWorker's thread may touch it.
class FsuipcApi
{
public:
    FsuipcApi() = default;
    FsuipcApi(const FsuipcApi&) = delete;
    FsuipcApi& operator=(const FsuipcApi&) = delete;
    virtual ~FsuipcApi() = default;

    bool FSUIPC_Open(std::uint32_t simulator, std::uint32_t* result);
    void FSUIPC_Close();
    /// `destination` is filled by FSUIPC_Process and has to live until then.
    bool FSUIPC_Read(std::uint32_t offset, std::uint32_t size, void* destination,
                     std::uint32_t* result);
    /// Copies `source` at once.
    bool FSUIPC_Write(std::uint32_t offset, std::uint32_t size, const void* source,
                      std::uint32_t* result);
    /// Carries out what is queued, in order; the queue is empty afterwards, also on failure.
    bool FSUIPC_Process(std::uint32_t* result);

    /// FSUIPC's number of the simulator, 1 FS98 and up; 0 before a successful open.
    virtual std::uint32_t simulatorCode() const = 0;
    /// Version of FSUIPC: a digit each in bits 31-28, 27-24 and 23-20, a letter from 1 in the low
    /// byte, 0 none.
    virtual std::uint32_t version() const = 0;

protected:
    /// fsuipc codes.
    virtual std::uint32_t doOpen(std::uint32_t simulator) = 0;
    virtual void doClose() = 0;
    virtual std::uint32_t doRead(std::uint32_t offset, std::uint32_t size, void* destination) = 0;
    virtual std::uint32_t doWrite(std::uint32_t offset, std::uint32_t size, const void* source) = 0;
    virtual std::uint32_t doProcess() = 0;

private:
    bool takes(std::uint32_t size, std::uint32_t* result);

    bool m_open = false;
    std::size_t m_queuedBytes = 0; ///< at most fsuipc::kBufferBytes
};

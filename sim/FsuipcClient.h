#pragma once

#include "aviation/FsId.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>

class FsuipcApi;

/// A link to FSUIPC and what is known of the simulator behind it. Requests are queued and carried
/// out together by process(). Without a client every request has the code fsuipc::kNotOpen. For
/// ConnectWorker's thread, as the buffer behind it is one for the process.
class FsuipcClient
{
public:
    FsuipcClient();
    FsuipcClient(const FsuipcClient&) = delete;
    FsuipcClient& operator=(const FsuipcClient&) = delete;
    /// Closes the link.
    ~FsuipcClient();

    bool hasApi() const { return m_api != nullptr; }
    void setApi(std::unique_ptr<FsuipcApi> api);

    /// Links to whatever simulator runs and learns its name; a code of fsuipc.
    std::uint32_t open();
    void close();

    /// Queues; `destination` is filled by process() and has to live until then.
    template <typename T>
    void read(std::uint32_t offset, T& destination)
    {
        static_assert(std::is_trivially_copyable_v<T>);
        queueRead(offset, sizeof(T), &destination);
    }
    /// Queues a copy.
    template <typename T>
    void write(std::uint32_t offset, const T& source)
    {
        static_assert(std::is_trivially_copyable_v<T>);
        queueWrite(offset, sizeof(T), &source);
    }
    /// Carries out what was queued. The code of the first request that couldn't be queued,
    /// otherwise that of the process.
    std::uint32_t process();

    /// Both codes that pass as success: fsuipc::kOk and fsuipc::kAlreadyOpen.
    static bool isSuccess(std::uint32_t code);
    /// The codes of a link that is closed: it has to be opened anew.
    static bool isClosed(std::uint32_t code);
    static QString ErrorText(std::uint32_t code);

    /// Of the simulator; empty and 0 before the link was opened.
    QString fsName() const { return m_fsName; }
    aviation::FsId fsId() const { return m_fsId; }
    /// "FSUIPC-Ver: " and the version.
    QString versionText() const { return m_versionText; }
    /// "d.M.yyyy H:m:s", the simulator's zulu time when it was last read.
    QString simTimeText() const { return m_simTimeText; }
    void setSimTimeText(const QString& text) { m_simTimeText = text; }

private:
    void queueRead(std::uint32_t offset, std::size_t size, void* destination);
    void queueWrite(std::uint32_t offset, std::size_t size, const void* source);
    void keepFault(std::uint32_t code);
    void identify();

    std::unique_ptr<FsuipcApi> m_api; ///< null: none
    std::uint32_t m_queueFault = 0;   ///< of the first request that wasn't queued
    QString m_fsName;
    QString m_versionText;
    aviation::FsId m_fsId = aviation::fsid::kNone;
    QString m_simTimeText;
};

#include "sim/clients/FsuipcApi.h"

bool FsuipcApi::FSUIPC_Open(std::uint32_t simulator, std::uint32_t* result)
{
    *result = m_open ? fsuipc::kAlreadyOpen : doOpen(simulator);
    m_open = m_open || *result == fsuipc::kOk || *result == fsuipc::kAlreadyOpen;
    m_queuedBytes = *result == fsuipc::kOk ? 0 : m_queuedBytes;
    return *result == fsuipc::kOk;
}

void FsuipcApi::FSUIPC_Close()
{
    if (m_open) {
        doClose();
    }
    m_open = false;
    m_queuedBytes = 0;
}

/// The link is open and the request fits in what is left of the buffer.
bool FsuipcApi::takes(std::uint32_t size, std::uint32_t* result)
{
    *result = fsuipc::kOk;
    if (!m_open) {
        *result = fsuipc::kNotOpen;
    } else if (size > fsuipc::kBufferBytes - m_queuedBytes) {
        *result = fsuipc::kBufferFull;
    }
    return *result == fsuipc::kOk;
}

bool FsuipcApi::FSUIPC_Read(std::uint32_t offset, std::uint32_t size, void* destination,
                            std::uint32_t* result)
{
    if (takes(size, result)) {
        *result = doRead(offset, size, destination);
        m_queuedBytes += *result == fsuipc::kOk ? size : 0;
    }
    return *result == fsuipc::kOk;
}

bool FsuipcApi::FSUIPC_Write(std::uint32_t offset, std::uint32_t size, const void* source,
                             std::uint32_t* result)
{
    if (takes(size, result)) {
        *result = doWrite(offset, size, source);
        m_queuedBytes += *result == fsuipc::kOk ? size : 0;
    }
    return *result == fsuipc::kOk;
}

bool FsuipcApi::FSUIPC_Process(std::uint32_t* result)
{
    if (!m_open) {
        *result = fsuipc::kNotOpen;
    } else if (m_queuedBytes == 0) {
        *result = fsuipc::kNoRequests;
    } else {
        *result = doProcess();
    }
    m_queuedBytes = 0;
    return *result == fsuipc::kOk;
}

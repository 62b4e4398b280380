#include "sim/FsuipcClient.h"

#include "sim/FsuipcOffsets.h"
#include "sim/clients/FsuipcApi.h"

#include <algorithm>
#include <array>
#include <utility>

namespace fsid = aviation::fsid;

namespace {

struct Simulator
{
    const char* name;
    aviation::FsId id;
};

/// FSUIPC's numbers 1 to 14. The pairing of the thirteenth is deliberate: FSUIPC says it of FS2020.
/// The last is never taken, since numbers from 14 on are unknown.
constexpr std::array kSimulators{
    Simulator{"FS98", fsid::kOld},      Simulator{"FS2000", fsid::kOld},
    Simulator{"CFS2", fsid::kOld},      Simulator{"CFS1", fsid::kOld},
    Simulator{"Fly!", fsid::kOld},      Simulator{"FS2002", fsid::kOld},
    Simulator{"FS2004", fsid::kFs2004}, Simulator{"FSX", fsid::kFsx},
    Simulator{"ESP", fsid::kFsx},       Simulator{"P3Dv2", fsid::kPrepar3dV2},
    Simulator{"P3Dv3", fsid::kFsx},     Simulator{"P3Dv4", fsid::kPrepar3dV4},
    Simulator{"P3Dv5", fsid::kFs2020},  Simulator{"P3Dv6", fsid::kNone},
};

// The last stands for every larger code too. The spelling is what other programs have.
constexpr std::array kErrorTexts{
    "Okay",
    "Attempt to Open when already Open",
    "not connected",
    "Failed to Register common message with Windows",
    "Failed to create Atom for mapping filename",
    "Failed to create a file mapping object",
    "Failed to open a view to the file map",
    "Incorrect version of FSUIPC, or not FSUIPC",
    "Sim is not version requested",
    "Call cannot execute, link not Open",
    "Call cannot execute: no requests accumulated",
    "IPC timed out all retries",
    "IPC send message failed all retries",
    "IPC request contains bad data",
    "Maybe running on WideClient, but FS not running on Server, or wrong FSUIPC",
    "Read or Write request cannot be added, memory for Process is full",
    "Wert nicht im Bereich",
};

/// The name by the simulator's own model number; `name` for a number that says nothing.
QString refinedName(const QString& name, int model)
{
    constexpr int kFsx = 3;
    constexpr int kFirstPrepar3d = 5;
    constexpr int kFs2020 = 110;
    if (model == kFsx) {
        return QStringLiteral("FSX");
    }
    if (model == kFs2020) {
        return QStringLiteral("FS2020");
    }
    if (model < kFirstPrepar3d || model > kFs2020) {
        return name;
    }
    QString number = QString::number(model);
    number.chop(1);
    return QStringLiteral("P3D v") + number;
}

QString dottedVersion(std::uint32_t version)
{
    constexpr std::uint32_t kNibble = 0xF;
    constexpr std::uint32_t kLetters = 26;
    const auto digit = [version](int shift) {
        return QString::number((version >> shift) & kNibble, 16);
    };
    const std::uint32_t letter = version & 0xFFU;
    QString text = QStringLiteral("FSUIPC-Ver: %1.%2%3").arg(digit(28), digit(24), digit(20));
    if (letter >= 1 && letter <= kLetters) {
        text += QLatin1Char(static_cast<char>('a' + letter - 1));
    }
    return text;
}

} // namespace

FsuipcClient::FsuipcClient() = default;

FsuipcClient::~FsuipcClient()
{
    close();
}

void FsuipcClient::setApi(std::unique_ptr<FsuipcApi> api)
{
    m_api = std::move(api);
}

std::uint32_t FsuipcClient::open()
{
    std::uint32_t code = fsuipc::kNotOpen;
    if (m_api) {
        m_api->FSUIPC_Open(fsuipc::kAnySimulator, &code);
    }
    if (isSuccess(code)) {
        identify();
    }
    return code;
}

void FsuipcClient::close()
{
    if (m_api) {
        m_api->FSUIPC_Close();
    }
}

void FsuipcClient::identify()
{
    const std::uint32_t code = m_api->simulatorCode();
    m_fsName = QStringLiteral("unknown");
    m_fsId = fsid::kNone;
    if (code >= 1 && code < kSimulators.size()) {
        const Simulator& simulator = kSimulators[code - 1];
        m_fsName = QString::fromLatin1(simulator.name);
        m_fsId = simulator.id;
    }
    m_versionText = dottedVersion(m_api->version());
    std::uint8_t model = 0;
    read(fsuipcoffset::kSimulatorModel, model);
    if (isSuccess(process())) {
        m_fsName = refinedName(m_fsName, model);
    }
}

void FsuipcClient::queueRead(std::uint32_t offset, std::size_t size, void* destination)
{
    std::uint32_t code = fsuipc::kNotOpen;
    if (m_api) {
        m_api->FSUIPC_Read(offset, static_cast<std::uint32_t>(size), destination, &code);
    }
    keepFault(code);
}

void FsuipcClient::queueWrite(std::uint32_t offset, std::size_t size, const void* source)
{
    std::uint32_t code = fsuipc::kNotOpen;
    if (m_api) {
        m_api->FSUIPC_Write(offset, static_cast<std::uint32_t>(size), source, &code);
    }
    keepFault(code);
}

void FsuipcClient::keepFault(std::uint32_t code)
{
    if (isSuccess(m_queueFault)) {
        m_queueFault = code;
    }
}

/// Processes after a request that wasn't taken as well: those before it are in the buffer.
std::uint32_t FsuipcClient::process()
{
    std::uint32_t code = fsuipc::kNotOpen;
    if (m_api) {
        m_api->FSUIPC_Process(&code);
    }
    const std::uint32_t queueFault = std::exchange(m_queueFault, fsuipc::kOk);
    return isSuccess(queueFault) ? code : queueFault;
}

bool FsuipcClient::isSuccess(std::uint32_t code)
{
    return code == fsuipc::kOk || code == fsuipc::kAlreadyOpen;
}

bool FsuipcClient::isClosed(std::uint32_t code)
{
    return code == fsuipc::kNoLink || code == fsuipc::kNotOpen || code == fsuipc::kSendFailed
           || code == fsuipc::kNoSimulator;
}

QString FsuipcClient::ErrorText(std::uint32_t code)
{
    const std::size_t row = std::min<std::size_t>(code, kErrorTexts.size() - 1);
    return QString::fromLatin1(kErrorTexts[row]);
}

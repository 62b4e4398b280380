#pragma once

#include <cstddef>
#include <cstdint>

/// What travels between a SimConnect client and the simulator, with the numbers and layouts that
/// the simulators' makers publish for FSX and its successors. Little endian, packed to the byte.
namespace simconnect {

/// An HRESULT: negative where nothing was done.
using Result = std::int32_t;
inline constexpr Result kOk = 0;
inline constexpr Result kFailed = static_cast<Result>(0x80004005U);

/// Type of a datum in a data definition, the numbers of SIMCONNECT_DATATYPE.
enum class DataType : std::uint32_t
{
    Invalid = 0,
    Int32 = 1,
    Int64 = 2,
    Float32 = 3,
    Float64 = 4,
    String8 = 5,
    String32 = 6,
    String64 = 7,
    String128 = 8,
    String256 = 9
};

/// Ids of the messages that the program looks at; others exist.
enum class MessageId : std::uint32_t
{
    Nothing = 0,
    Exception = 1,
    Open = 2,
    Quit = 3,
    Event = 4,
    ObjectData = 8,
    WeatherObservation = 10,
    CloudState = 11,
    SystemState = 15
};

inline constexpr std::uint32_t kUserObject = 0;
inline constexpr std::uint32_t kPeriodOnce = 1;
inline constexpr std::uint32_t kUnused = 0xFFFFFFFFU; ///< as a datum id: -1
inline constexpr std::uint32_t kTextScrollWhite = 1;  ///< kind of a text on the screen

#pragma pack(push, 1)

/// Head of every message. `size` counts the whole message.
struct Message
{
    std::uint32_t size = 0;
    std::uint32_t version = 0;
    std::uint32_t id = 0; ///< MessageId
};
static_assert(sizeof(Message) == 12);

struct ExceptionMessage : Message
{
    std::uint32_t exception = 0;
    std::uint32_t sendId = 0; ///< packet that caused it
    std::uint32_t index = 0;  ///< parameter of the call that was wrong, from 1
};
static_assert(sizeof(ExceptionMessage) == 24);

struct OpenMessage : Message
{
    char applicationName[256] = {};
    std::uint32_t applicationVersion[4] = {}; ///< major, minor, build major, build minor
    std::uint32_t simConnectVersion[4] = {};
    std::uint32_t reserved[2] = {};
};
static_assert(sizeof(OpenMessage) == 308);

struct EventMessage : Message
{
    std::uint32_t groupId = 0;
    std::uint32_t eventId = 0;
    std::uint32_t data = 0;
};
static_assert(sizeof(EventMessage) == 24);

/// The data follow, packed in the order of the definition, without padding.
struct ObjectDataMessage : Message
{
    std::uint32_t requestId = 0;
    std::uint32_t objectId = 0;
    std::uint32_t defineId = 0;
    std::uint32_t flags = 0;
    std::uint32_t entry = 0;
    std::uint32_t outOf = 0;
    std::uint32_t defineCount = 0;
};
static_assert(sizeof(ObjectDataMessage) == 40);

/// A text of at most 2000 bytes with its zero follows.
struct ObservationMessage : Message
{
    std::uint32_t requestId = 0;
};
static_assert(sizeof(ObservationMessage) == 16);
inline constexpr std::size_t kLongestObservation = 2000;

/// `arraySize` bytes follow, 64 rows of 64.
struct CloudStateMessage : Message
{
    std::uint32_t requestId = 0;
    std::uint32_t arraySize = 0;
};
static_assert(sizeof(CloudStateMessage) == 20);

struct SystemStateMessage : Message
{
    std::uint32_t requestId = 0;
    std::uint32_t integerValue = 0;
    float floatValue = 0.0F;
    char stringValue[260] = {};
};
static_assert(sizeof(SystemStateMessage) == 284);

#pragma pack(pop)

} // namespace simconnect

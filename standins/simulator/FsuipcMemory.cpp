#include "standins/simulator/FsuipcMemory.h"

#include "aviation/support/Clock.h"
#include "standins/simulator/AirModel.h"
#include "standins/simulator/Messages.h"
#include "standins/simulator/RecordObservation.h"

#include <QString>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

namespace simulator {

namespace {

using aviation::structs::AircraftData;

// Further published result codes.
constexpr std::uint32_t kWrongVersion = 7;
constexpr std::uint32_t kWrongSimulator = 8;

constexpr std::uint16_t kSetWeather = 2;
constexpr std::uint16_t kClearAll = 3;
constexpr std::uint16_t kRefresh = 256;

/// Not zero, so that a client who believes that it is zero at first can't go unnoticed.
constexpr std::uint32_t kFirstCounter = 100;

/// Offsets that belong to a message of the bridge.
struct Area
{
    std::uint32_t begin;
    std::uint32_t end;
    int read;  ///< message that a read equals, 0 none
    int write; ///< the same of a write
};
constexpr std::uint32_t kTanksBegin = 0x0B74;
constexpr std::uint32_t kTanksEnd = 0x0BAC;
constexpr std::uint32_t kOtherTanksBegin = 0x1244;
constexpr std::uint32_t kOtherTanksEnd = 0x1264;
constexpr std::array kAreas{
    Area{offset::kLatitude, offset::kLatitude + 8, message::kAircraft, 0},
    Area{offset::kFuelWeight, offset::kFuelWeight + 2, message::kFuel, 0},
    Area{kTanksBegin, kTanksEnd, message::kFuel, message::kFuel},
    Area{kOtherTanksBegin, kOtherTanksEnd, message::kFuel, message::kFuel},
    Area{offset::kStationCount, offset::kStations + offset::kMostStations* offset::kStationBytes,
         message::kPayload, message::kPayload},
    Area{0x034C, 0x0356, message::kRadios, message::kRadios},
    Area{0x3118, 0x3122, message::kRadios, message::kRadios},
    Area{offset::kWindDirection, offset::kWindSpeed + 8, 0, message::kWind},
    Area{offset::kTextDuration, offset::kTextDuration + 2, 0, message::kScreenText},
    Area{offset::kText, offset::kText + offset::kTextBytes, 0, message::kScreenText},
    Area{offset::kObservation, offset::kObservation + offset::kObservationBytes,
         message::kWeatherText, 0}};

/// The message of a command word, 0 of an unknown one.
int messageOfWord(std::uint16_t word)
{
    switch (word) {
    case kClearAll:
        return message::kClearWeather;
    case kRefresh:
        return message::kActivateWeather;
    default:
        return 0;
    }
}

std::uint16_t wordOf(const std::vector<std::uint8_t>& bytes)
{
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

bool isUsable(const NewWeather& record)
{
    const auto fits = [](std::int32_t count, std::size_t slots) {
        return count >= 0 && static_cast<std::size_t>(count) <= slots;
    };
    return (record.Command == kSetWeather || record.Command == (kSetWeather | kRefresh))
           && fits(record.nTempCtr, kTempLayerSlots) && fits(record.nWindCtr, kWindLayerSlots)
           && fits(record.nCloudCtr, kCloudLayerSlots) && fits(record.nUpperVisCtr, kUpperVisSlots)
           && std::isfinite(record.Lat) && std::isfinite(record.Lon);
}

/// Looks random, but depends on the offset only.
void fillNoise(std::uint32_t at, std::uint32_t size, void* destination)
{
    auto* const bytes = static_cast<std::uint8_t*>(destination);
    std::uint32_t value = at + 1;
    for (std::uint32_t i = 0; i < size; ++i) {
        value = value * 1664525U + 1013904223U;
        bytes[i] = static_cast<std::uint8_t>(value >> 24);
    }
}

void sleep(int milliseconds)
{
    if (milliseconds > 0) {
        aviation::Clock::current().SleepMs(milliseconds);
    }
}

} // namespace

FsuipcMemory::FsuipcMemory(SimulatorModel& model, FaultSwitch& faults, const FsuipcOptions& options)
    : m_model(model)
    , m_faults(faults)
    , m_options(options)
    , m_isRunning(options.isRunning)
    , m_counter(kFirstCounter)
{}

void FsuipcMemory::setRunning(bool isRunning)
{
    m_isRunning = isRunning;
    if (!isRunning) {
        m_isLost = true;
    }
}

std::uint32_t FsuipcMemory::doOpen(std::uint32_t simulator)
{
    m_isLost = false; // first, so that an end of the simulator while it opens isn't forgotten
    if (!m_isRunning) {
        return fsuipc::kNoSimulator;
    }
    const Fault fault = m_faults.take(command::kHello, message::kHello);
    switch (fault.kind) {
    case FaultKind::Refuse:
    case FaultKind::Drop:
    case FaultKind::Close:
        return fsuipc::kNoSimulator;
    case FaultKind::Silent:
    case FaultKind::Cut:
        return fsuipc::kTimeout;
    case FaultKind::WrongApi:
        return kWrongVersion;
    case FaultKind::Result:
        return fault.result();
    case FaultKind::WrongId:
    case FaultKind::HugeLength:
        return kWrongSimulator;
    default:
        break;
    }
    sleep(fault.kind == FaultKind::Slow ? fault.number : 0);
    if (simulator != fsuipc::kAnySimulator && simulator != m_options.simulatorCode) {
        return kWrongSimulator;
    }
    m_queue.clear();
    m_isOpen = true;
    return fsuipc::kOk;
}

void FsuipcMemory::doClose()
{
    m_queue.clear();
    m_isOpen = false;
}

std::uint32_t FsuipcMemory::doRead(std::uint32_t at, std::uint32_t size, void* destination)
{
    if (at > offset::kMemoryBytes || size > offset::kMemoryBytes - at) {
        return fsuipc::kBadData;
    }
    if (size > 0) {
        m_queue.push_back({at, size, destination, {}});
    }
    return fsuipc::kOk;
}

std::uint32_t FsuipcMemory::doWrite(std::uint32_t at, std::uint32_t size, const void* source)
{
    if (at > offset::kMemoryBytes || size > offset::kMemoryBytes - at) {
        return fsuipc::kBadData;
    }
    if (size > 0) {
        const auto* const bytes = static_cast<const std::uint8_t*>(source);
        m_queue.push_back({at, size, nullptr, {bytes, bytes + size}});
    }
    return fsuipc::kOk;
}

std::uint32_t FsuipcMemory::doProcess()
{
    const Queue queue = std::exchange(m_queue, {});
    return m_isLost ? fsuipc::kSendFailed : processWith(takeFault(queue), queue);
}

FsuipcMemory::Message FsuipcMemory::messageOf(const Request& request)
{
    if (!request.isRead() && request.at == offset::kWeather) {
        const bool isWord = request.size == sizeof(std::uint16_t);
        const bool isRecord = request.size == sizeof(NewWeather);
        const int id = isWord ? messageOfWord(wordOf(request.bytes)) : message::kWeatherRecord;
        return isWord || isRecord ? Message{id == 0 ? 0 : command::kWrite, id} : Message{};
    }
    for (const Area& area : kAreas) {
        const int id = request.isRead() ? area.read : area.write;
        if (id != 0 && request.touches(area.begin, area.end)) {
            return {request.isRead() ? command::kRequest : command::kWrite, id};
        }
    }
    return {};
}

FsuipcMemory::MetFault FsuipcMemory::takeFault(const Queue& queue)
{
    for (const Request& request : queue) {
        const Message by = messageOf(request);
        if (by.command == 0) {
            continue;
        }
        const Fault fault = m_faults.take(by.command, by.id);
        if (fault.kind != FaultKind::None) {
            return {fault, by};
        }
    }
    return {};
}

std::uint32_t FsuipcMemory::processWith(const MetFault& met, const Queue& queue)
{
    const bool isRecord = met.by.id == message::kWeatherRecord;
    const bool hasRest = met.fault.restAfterMs >= 0;
    switch (met.fault.kind) {
    case FaultKind::Refuse:
        return fsuipc::kBadData;
    case FaultKind::Silent:
        if (isRecord) {
            carryOut(queue, Answer::Whole, false);
        }
        return isRecord ? fsuipc::kOk : fsuipc::kTimeout;
    case FaultKind::Result:
        return met.fault.result();
    case FaultKind::Drop:
        m_isLost = true;
        return fsuipc::kSendFailed;
    case FaultKind::Close:
        carryOut(queue, Answer::None);
        m_isLost = true;
        return fsuipc::kSendFailed;
    case FaultKind::WrongId:
    case FaultKind::HugeLength:
        carryOut(queue, Answer::None);
        return fsuipc::kBadData;
    case FaultKind::Cut:
        sleep(met.fault.restAfterMs);
        carryOut(queue, hasRest ? Answer::Whole : Answer::None);
        return hasRest ? fsuipc::kOk : fsuipc::kTimeout;
    default:
        sleep(met.fault.kind == FaultKind::Slow ? met.fault.number : 0);
        carryOut(queue, met.fault.kind == FaultKind::Garbage ? Answer::Noise : Answer::Whole);
        return fsuipc::kOk;
    }
}

void FsuipcMemory::carryOut(const Queue& queue, Answer answer, bool takesRecords)
{
    refresh(queue);
    m_image.forgetWrites();
    for (const Request& request : queue) {
        if (!request.isRead()) {
            m_image.write(request.at, request.bytes);
        } else if (answer == Answer::Whole) {
            m_image.read(request.at, request.size, request.destination);
        } else if (answer == Answer::Noise) {
            fillNoise(request.at, request.size, request.destination);
        }
    }
    act(queue, takesRecords);
}

/// Only as much as is read: a simulator may have thousands of weather records.
void FsuipcMemory::refresh(const Queue& queue)
{
    const auto reads = [&queue](std::uint32_t begin, std::uint32_t end) {
        return std::any_of(queue.begin(), queue.end(), [begin, end](const Request& request) {
            return request.isRead() && request.touches(begin, end);
        });
    };
    if (reads(0, offset::kObservation)) {
        refreshFlight(reads(offset::kTouchdownSpeed, offset::kTouchdownSpeed + 4));
    }
    if (reads(offset::kObservation, offset::kObservation + offset::kObservationBytes)) {
        m_image.putText(offset::kObservation, offset::kObservationBytes,
                        QByteArray::fromStdString(observation()));
    }
    if (reads(offset::kWeatherCounter, offset::kWeatherCounter + 4)) {
        m_image.put(offset::kWeatherCounter, m_counterLag > 0 ? m_counter - 1 : m_counter);
        m_counterLag = std::max(0, m_counterLag - 1);
    }
}

void FsuipcMemory::refreshFlight(bool takesLanding)
{
    const AircraftData aircraft = takesLanding ? m_model.takeAircraft() : m_model.peekAircraft();
    if (!aircraft.onGround) {
        m_touchdown = aircraft.verticalSpeed;
    } else if (aircraft.landingRate != 0) {
        m_touchdown = aircraft.landingRate;
    }
    showAircraft(aircraft, m_image);
    showVerticalSpeed(offset::kTouchdownSpeed, m_touchdown, m_image);
    showFuel(m_model.presentFuel(), m_image);
    m_model.withState([this](SimulatorState& state) {
        showPayload(state.payload, m_image);
        showRadios(state.radios, m_image);
    });
    m_image.put(offset::kPauseKey, static_cast<std::uint16_t>(m_model.paused() ? 1 : 0));
    m_image.put(offset::kMenu, static_cast<std::uint8_t>(m_model.inMenu() ? 1 : 0));
    m_image.put(offset::kRefinement, m_options.refinement);
}

std::string FsuipcMemory::observation()
{
    const AircraftData aircraft = m_model.peekAircraft();
    std::string text;
    m_model.withState([&text, &aircraft](SimulatorState& state) {
        text =
            observationOf(nearestRecord(state.weatherRecords, aircraft.position), aircraft.simTime);
    });
    return text;
}

void FsuipcMemory::act(const Queue& queue, bool takesRecords)
{
    for (const Request& request : queue) {
        if (!request.isRead() && request.at == offset::kWeather) {
            actOnWeather(request, takesRecords);
        }
    }
    actOnWind();
    actOnText();
    actOnLoad();
}

void FsuipcMemory::actOnWeather(const Request& request, bool takesRecords)
{
    switch (messageOf(request).id) {
    case message::kWeatherRecord:
        if (takesRecords) {
            takeRecord(request);
        }
        break;
    case message::kClearWeather:
        m_model.clearWeather();
        break;
    case message::kActivateWeather:
        m_model.withState([](SimulatorState& state) { ++state.refreshes; });
        break;
    default:
        break;
    }
}

void FsuipcMemory::takeRecord(const Request& request)
{
    NewWeather record;
    std::memcpy(&record, request.bytes.data(), sizeof(record));
    if (isUsable(record)) {
        m_model.addWeatherRecord(record);
        ++m_counter;
        m_counterLag = m_options.counterLag;
    }
}

void FsuipcMemory::actOnWind()
{
    if (!m_image.wasWritten(offset::kWindDirection, 8)
        || !m_image.wasWritten(offset::kWindSpeed, 8)) {
        return;
    }
    constexpr double kFastest = 1000.0;
    const double direction = m_image.get<double>(offset::kWindDirection);
    const double speed = m_image.get<double>(offset::kWindSpeed);
    if (std::abs(direction) <= 360.0 && speed >= 0.0 && speed <= kFastest) {
        m_model.setWind({static_cast<float>(direction), static_cast<float>(speed), -1.0F, 0.0F});
    }
}

void FsuipcMemory::actOnText()
{
    if (m_image.wasWritten(offset::kTextDuration, 2)) {
        m_model.addScreenText(QString::fromUtf8(m_image.text(offset::kText, offset::kTextBytes)));
    }
}

void FsuipcMemory::actOnLoad()
{
    aviation::structs::AircraftFuel fuel = m_model.presentFuel();
    if (takeFuel(m_image, fuel)) {
        m_model.setFuel(fuel);
    }
    m_model.withState([this](SimulatorState& state) {
        takePayload(m_image, state.payload);
        takeRadios(m_image, state.radios);
    });
}

} // namespace simulator

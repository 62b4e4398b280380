#pragma once

#include "sim/clients/FsuipcApi.h"
#include "standins/simulator/FaultSwitch.h"
#include "standins/simulator/FsuipcImage.h"
#include "standins/simulator/SimulatorModel.h"

#include <atomic>
#include <cstdint>
#include <vector>

namespace simulator {

/// What FSUIPC says of itself and of its simulator. Plain value.
struct FsuipcOptions
{
    std::uint32_t simulatorCode = 7;    ///< as FSUIPC numbers them, 1 FS98 to 13; 7 FS2004
    std::uint32_t version = 0x38100001; ///< see FsuipcApi::version(); 3.81a
    std::uint8_t refinement = 0;        ///< of offset::kRefinement
    bool isRunning = true;              ///< false: there is no simulator to open
    int counterLag = 0; ///< reads of the weather counter before it shows that a record was taken
};

/// FSUIPC with its memory of offsets, and the simulator behind it. Before a process that reads, the
/// offsets are filled from the model; then its reads and writes are carried out in their order, and
/// at the end the offsets that it wrote act:
///
/// | offset | acts |
/// |---|---|
/// | kWeather, 1024 bytes | with the command 2 or 258 the record is taken and the counter goes up |
/// | kWeather, 2 bytes | 3 clears the weather, 256 counts as a refresh |
/// | kWindDirection and kWindSpeed | in one process |
/// | kTextDuration | shows the text at kText |
/// | tank levels, station weights, radios | each by itself |
///
/// kObservation gives the nearest record as a METAR. kTouchdownSpeed follows the vertical speed in
/// the air and keeps the touchdown's on the ground; the first such read after touchdown takes the
/// landing rate from the model.
///
/// Faults: a process is asked for by what it contains, in its order: reads as kRequest of kAircraft
/// (kLatitude), kFuel, kPayload, kRadios and kWeatherText (kObservation); writes as kWrite of
/// kFuel, kPayload, kRadios, kWind, kScreenText, kWeatherRecord, kClearWeather and
/// kActivateWeather (the refresh). Nothing else, such as the pause and the counter, meets a fault.
/// FSUIPC_Open is asked for as kHello of kHello.
///
/// | fault | process gives |
/// |---|---|
/// | refuse | 13 and does nothing |
/// | silent | 11 and does nothing; a weather record is lost instead: the process gives 0, but the
///   record isn't taken and the counter stands |
/// | slow | what it gives, after `number` milliseconds |
/// | garbage | 0 with noise, the same each time, in place of what was read |
/// | wrongid, huge | 13 after it has acted, and nothing is read |
/// | cut | 11 after it has acted, and nothing is read; with a rest like slow by `restAfterMs` |
/// | drop | 12 and does nothing, as does every process until the link is opened anew |
/// | close | the same after it has acted |
/// | result | that code and does nothing |
///
/// At FSUIPC_Open refuse, drop and close give 14, silent and cut 11, wrongapi 7 (the wrong version
/// of FSUIPC), wrongid and huge 8, result that code.
///
/// Used by one thread, but setRunning() is for any. Model and faults are not owned.
class FsuipcMemory final : public FsuipcApi
{
public:
    FsuipcMemory(SimulatorModel& model, FaultSwitch& faults, const FsuipcOptions& options = {});

    /// False: the simulator ends, which loses an open link, and can't be opened until it runs
    /// again.
    void setRunning(bool isRunning);

    std::uint32_t simulatorCode() const override { return m_isOpen ? m_options.simulatorCode : 0; }
    std::uint32_t version() const override { return m_isOpen ? m_options.version : 0; }

protected:
    std::uint32_t doOpen(std::uint32_t simulator) override;
    void doClose() override;
    std::uint32_t doRead(std::uint32_t at, std::uint32_t size, void* destination) override;
    std::uint32_t doWrite(std::uint32_t at, std::uint32_t size, const void* source) override;
    std::uint32_t doProcess() override;

private:
    struct Request
    {
        std::uint32_t at = 0;
        std::uint32_t size = 0;
        void* destination = nullptr;     ///< of a read; null for a write
        std::vector<std::uint8_t> bytes; ///< of a write

        bool isRead() const { return destination != nullptr; }
        bool touches(std::uint32_t begin, std::uint32_t end) const
        {
            return at < end && at + size > begin;
        }
    };
    using Queue = std::vector<Request>;
    struct Message
    {
        int command = 0; ///< 0 for what meets no fault
        int id = 0;
    };
    struct MetFault
    {
        Fault fault;
        Message by;
    };
    enum class Answer
    {
        Whole,
        Noise,
        None
    };

    static Message messageOf(const Request& request);
    MetFault takeFault(const Queue& queue);
    std::uint32_t processWith(const MetFault& met, const Queue& queue);
    void carryOut(const Queue& queue, Answer answer, bool takesRecords = true);
    void refresh(const Queue& queue);
    void refreshFlight(bool takesLanding);
    std::string observation();
    void act(const Queue& queue, bool takesRecords);
    void actOnWeather(const Request& request, bool takesRecords);
    void takeRecord(const Request& request);
    void actOnWind();
    void actOnText();
    void actOnLoad();

    SimulatorModel& m_model;
    FaultSwitch& m_faults;
    const FsuipcOptions m_options;
    std::atomic<bool> m_isRunning;
    std::atomic<bool> m_isLost{false}; ///< the simulator went away while the link was open

    // The rest belongs to the thread that opens.
    bool m_isOpen = false;
    Queue m_queue;
    FsuipcImage m_image;
    std::uint32_t m_counter; ///< of the weather records taken
    int m_counterLag = 0;    ///< reads that still show the counter before the last record
    int m_touchdown = 0;     ///< feet a minute, of kTouchdownSpeed
};

} // namespace simulator

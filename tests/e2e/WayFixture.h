#pragma once

#include "tests/e2e/ProgramFixture.h"

#include <ostream>
#include <string>

inline constexpr std::uint32_t kFsxInFsuipc = 8;
inline constexpr std::uint32_t kFs2004InFsuipc = 7;

/// How the program comes to the simulator. The bridge says what it stands before.
struct Way
{
    const char* name;
    int interfaceType;
    int bridgedInterface = 0;
    int bridgedFsId = 0;
};

inline constexpr Way kBridge{"bridge", aviation::interfaceid::kBridge,
                             aviation::interfaceid::kBridge, 9};
inline constexpr Way kBridgedRecords{"bridged_records", aviation::interfaceid::kBridge,
                                     aviation::interfaceid::kFsuipc, 3};
inline constexpr Way kBridgedTexts{"bridged_texts", aviation::interfaceid::kBridge, 3, 3};
inline constexpr Way kSimConnect{"simconnect", aviation::interfaceid::kSimConnect};
inline constexpr Way kFsuipc{"fsuipc", aviation::interfaceid::kFsuipc};
inline constexpr Way kBoth{"both", aviation::interfaceid::kFsuipcSimConnect};

inline void PrintTo(const Way& way, std::ostream* out)
{
    *out << way.name;
}

inline std::string nameOf(const testing::TestParamInfo<Way>& info)
{
    return info.param.name;
}

/// The program on one of the ways. Faults are the same on all of them.
class WaysTest : public ProgramFixture
{
protected:
    simulator::SimulatorOptions simulatorOptions() const override
    {
        simulator::SimulatorOptions options;
        options.udpIntervalMs = kNeverMs; // polled on every way
        return options;
    }
    void begin(const Way& way, std::uint32_t fsuipcCode = kFsxInFsuipc)
    {
        simulator::FsuipcOptions fsuipc;
        fsuipc.simulatorCode = fsuipcCode;
        clients.setFsuipcOptions(fsuipc);
        clients.model().withState(
            [](simulator::SimulatorState& state) { state = simulator::freshState(); });
        if (way.interfaceType == aviation::interfaceid::kBridge) {
            simulator->invoke([&way](simulator::SimulatorServer& running) {
                running.setSimulator(way.bridgedFsId, way.bridgedInterface);
            });
        }
        settings->setMyIp(QString());
        settings->setInterfaceType(way.interfaceType);
        settings->setRange(40);
        make();
    }
    simulator::SimulatorState state() const { return simulator->state(); }
    void setFault(const QString& text)
    {
        ASSERT_TRUE(simulator->setFault(text));
        ASSERT_TRUE(clients.faults().set(text));
    }
    /// Runs a job to its end; its result.
    int run(const Job& job)
    {
        const int before = jobs[job.id];
        controller->connectWorker().AddJob(job);
        controller->connectWorker().start();
        EXPECT_TRUE(wait([this, &job, before] { return jobs[job.id] > before; })) << job.id;
        settle();
        return lastError[job.id];
    }
    int poll() { return run(Job(connectjob::kAircraftData, QStringLiteral("Aircraft data"))); }
};

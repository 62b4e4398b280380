#pragma once

#include "app/base/StopFlag.h"
#include "sim/FsInterfaceSimConnect.h"
#include "tests/sim/ScriptedFsuipc.h"
#include "tests/sim/SimConnectAnswers.h"
#include "tests/support/FakeClock.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// An interface to a scripted simulator, with its log.
class FsInterfaceSimConnectTest : public ::testing::Test
{
protected:
    FsInterfaceSimConnectTest()
    {
        QObject::connect(&sim, &FsInterfaceBase::sigDebugString, &sim,
                         [this](const QString& text, int level) {
                             log << QString::number(level) + QLatin1Char(' ') + text;
                         });
    }
    void connectSimulator()
    {
        script.messages.push_back(answers::openMessage());
        ASSERT_EQ(sim.Connect(), 0);
        script.calls.clear();
    }
    /// Messages that come when a call begins like this.
    void answerTo(const std::string& start, std::vector<answers::Bytes> messages)
    {
        script.onCall = [this, start, messages](const std::string& call) {
            if (call.rfind(start, 0) == 0) {
                script.messages.insert(script.messages.end(), messages.begin(), messages.end());
            }
        };
    }
    int poll()
    {
        aviation::structs::AircraftData data;
        const int result = sim.GetAircraftData(data);
        altitude = data.altitude;
        return result;
    }
    bool said(const char* line) const { return log.contains(QString::fromLatin1(line)); }

    FakeClock clock{2026, 7, 15, 10, 20, 33};
    StopFlag stop;
    ScriptedBothClients clients;
    SimConnectScript& script = clients.simConnectScript;
    FsInterfaceSimConnect sim{clients, QStringLiteral("folder"), stop};
    QStringList log;
    std::int32_t altitude = 0; ///< of the last poll
};

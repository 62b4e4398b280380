#pragma once

#include "standins/simulator/SimConnectExceptions.h"
#include "standins/simulator/SimConnectSimulator.h"
#include "tests/support/FakeClock.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

/// A client that is connected to a simulator in memory.
class SimConnectFixture : public ::testing::Test
{
protected:
    using DataType = simconnect::DataType;

    SimConnectFixture()
    {
        EXPECT_EQ(client.SimConnect_Open(&handle, "test", nullptr, 0, nullptr, 0), simconnect::kOk);
        opened = next();
    }
    /// The next message, empty for none.
    std::vector<std::uint8_t> next()
    {
        const simconnect::Message* message = nullptr;
        std::uint32_t size = 0;
        if (client.SimConnect_GetNextDispatch(handle, &message, &size) != simconnect::kOk) {
            return {};
        }
        std::vector<std::uint8_t> bytes(size);
        std::memcpy(bytes.data(), message, size);
        return bytes;
    }
    /// The next message, which has to be as long as it says and of this id; else a fresh one.
    template <class Body>
    Body nextOf(simconnect::MessageId id)
    {
        const std::vector<std::uint8_t> bytes = next();
        Body body;
        EXPECT_GE(bytes.size(), sizeof(Body));
        if (bytes.size() >= sizeof(Body)) {
            std::memcpy(static_cast<void*>(&body), bytes.data(), sizeof(Body));
            EXPECT_EQ(body.size, bytes.size());
            EXPECT_EQ(body.id, static_cast<std::uint32_t>(id));
        }
        return body;
    }
    simconnect::ExceptionMessage nextException()
    {
        return nextOf<simconnect::ExceptionMessage>(simconnect::MessageId::Exception);
    }
    template <class Value>
    static Value at(const std::vector<std::uint8_t>& bytes, std::size_t offset)
    {
        Value value{};
        EXPECT_LE(offset + sizeof(value), bytes.size());
        if (offset + sizeof(value) <= bytes.size()) {
            std::memcpy(&value, &bytes[offset], sizeof(value));
        }
        return value;
    }
    static std::string textAt(const std::vector<std::uint8_t>& bytes, std::size_t offset)
    {
        const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(offset);
        return {begin, std::find(begin, bytes.end(), std::uint8_t{0})};
    }

    void add(std::uint32_t id, const char* name, const char* unit, DataType type)
    {
        EXPECT_EQ(client.SimConnect_AddToDataDefinition(handle, id, name, unit, type, 0.0F,
                                                        simconnect::kUnused),
                  simconnect::kOk);
    }
    simconnect::Result request(std::uint32_t id, std::uint32_t requestId = 77)
    {
        return client.SimConnect_RequestDataOnSimObject(
            handle, requestId, id, simconnect::kUserObject, simconnect::kPeriodOnce, 0, 0, 0, 0);
    }
    /// The data of a definition, after their head.
    std::vector<std::uint8_t> data(std::uint32_t id)
    {
        request(id);
        const std::vector<std::uint8_t> bytes = next();
        const std::size_t head = sizeof(simconnect::ObjectDataMessage);
        EXPECT_GE(bytes.size(), head);
        return bytes.size() < head
                   ? bytes
                   : std::vector<std::uint8_t>(bytes.begin() + static_cast<std::ptrdiff_t>(head),
                                               bytes.end());
    }
    template <class Value>
    simconnect::Result set(std::uint32_t id, std::vector<Value> values)
    {
        return client.SimConnect_SetDataOnSimObject(
            handle, id, simconnect::kUserObject, 0, 0,
            static_cast<std::uint32_t>(values.size() * sizeof(Value)), values.data());
    }
    simconnect::Result observe(const char* metar)
    {
        return client.SimConnect_WeatherSetObservation(handle, 0, metar);
    }
    void setFault(const char* text) { EXPECT_TRUE(faults.set(QString::fromLatin1(text))) << text; }

    FakeClock clock{2019, 7, 1, 12};
    simulator::SimulatorModel model;
    simulator::FaultSwitch faults;
    simulator::SimConnectHost host;
    simulator::SimConnectSimulator client{model, faults, host};
    SimConnectApi::Handle handle = nullptr;
    std::vector<std::uint8_t> opened;
};

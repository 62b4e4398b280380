#pragma once

#include "app/Controller.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "tests/app/download/ServerFixture.h"
#include "tests/support/ControllerTesting.h"
#include "tests/support/FakeFsInterface.h"
#include "tests/support/FakeProcessRunner.h"

#include <QSignalSpy>

#include <functional>
#include <memory>

/// A controller over doubles. Its timers don't run by themselves faster than a test waits.
class ControllerFixture : public ServerFixture
{
protected:
    void SetUp() override
    {
        ServerFixture::SetUp();
        settings->setInterfaceType(aviation::interfaceid::kBridge);
        settings->setGribOff(true);
        settings->setCheckNewVersion(false);
        settings->setClearWxOnConnect(false);
        settings->setFsMessage(false);
        settings->setMyIp(QString());
    }
    void TearDown() override
    {
        controller.reset();
        ServerFixture::TearDown();
    }

    void make()
    {
        controller = std::make_unique<Controller>(
            ControllerParts{*settings, view, dialogs, m_random, hostNetwork(), processes,
                            interfaces, limits, 0, link});
        timer("timerOneSecond").stop();
    }
    /// Lets the tables be loaded, so reports find their places.
    void start()
    {
        QSignalSpy started(controller.get(), &Controller::sigStarted);
        ASSERT_TRUE(wait([&] { return started.count() == 1; }));
        QCoreApplication::processEvents();
    }
    QTimer& timer(const char* name) const { return controllertesting::timer(*controller, name); }
    /// Lets all jobs end, and those that follow from their signals.
    void settle() { ASSERT_TRUE(controllertesting::settle(*controller)); }
    void connectTo(int interfaceType, aviation::FsId fsId)
    {
        simulator.answer([&](FakeSimulator::Answers& answers) {
            answers.interfaceId = interfaceType;
            answers.fsVersion = fsId;
        });
        controller->OnConnectClicked();
        settle();
        ASSERT_TRUE(controller->IsConnected());
    }
    void flyAt(double latitude, double longitude, int height = 0, int speed = 0)
    {
        simulator.answer([&](FakeSimulator::Answers& answers) {
            answers.aircraft.position = aviation::Position(latitude, longitude);
            answers.aircraft.heightAgl = height;
            answers.aircraft.groundSpeed = speed;
        });
        controller->OnTimerOneSecond();
        settle();
    }
    /// A weather file with so many METARs of EDDA to EDDZ.
    static QByteArray weatherFile(int metars)
    {
        QByteArray text("[METAR]\n");
        for (int i = 0; i < metars; ++i) {
            text += "EDD" + QByteArray(1, static_cast<char>('A' + i % 26))
                    + " 011150Z 24012KT 9999 FEW030 22/12 Q1015\n";
        }
        return text + "[/METAR]\n";
    }
    void decode(const QByteArray& text = weatherFile(26))
    {
        WeatherWorker& worker = controller->weatherWorker();
        worker.setWeatherText(QString::fromLatin1(text));
        worker.addJob(Job(weatherjob::kDecodeWeather, "decode weather data"_q));
        worker.start();
        settle();
    }
    void tick(std::chrono::milliseconds after)
    {
        clock.advance(after);
        controller->OnTimerWeather();
    }

    DownloadLimits limits;
    FakeProcessRunner processes;
    FakeSimulator simulator;
    FakeInterfaceFactory interfaces{simulator};
    LinkTimes link{2000, {300, 10000}};
    std::unique_ptr<Controller> controller;
};

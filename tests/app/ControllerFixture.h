#pragma once

#include "app/Controller.h"
#include "app/jobs/WeatherJobs.h"
#include "app/jobs/WeatherWorker.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/ControllerTesting.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeFsInterface.h"
#include "tests/support/FakeMainView.h"
#include "tests/support/FakeProcessRunner.h"
#include "tests/support/FakeUserDialogs.h"
#include "tests/support/LoopbackHttp.h"

#include <QSignalSpy>

#include <functional>
#include <memory>

/// A controller over doubles, with a home folder of its own and the servers "/one", "/two" and
/// "/info/" on loopback. Its timers don't run by themselves faster than a test waits.
class ControllerFixture : public SettingsFixture
{
protected:
    void SetUp() override
    {
        SettingsFixture::SetUp();
        write(mainFile(),
              "[url]\nwxdata1=%1one\nwxdata2=%1two\nfileinfo=%1info/\n"_q.arg(server.url("/"_q))
                  .toUtf8());
        settings = std::make_unique<Settings>(mainFile(), m_random);
        settings->setWeatherServer(settings->serverOne());
        settings->setWorkFolder(path("work/"));
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
        settings.reset();
        SettingsFixture::TearDown();
    }

    void make()
    {
        controller = std::make_unique<Controller>(
            ControllerParts{*settings, view, dialogs, m_random, HostNetwork(), processes,
                            interfaces, DownloadLimits()});
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
    static bool wait(const std::function<bool()>& condition)
    {
        return controllertesting::waitFor(condition);
    }
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
        clock.Advance(after);
        controller->OnTimerWeather();
    }

    FakeClock clock{2019, 7, 1, 12, 10};
    FakeMainView view;
    FakeUserDialogs dialogs;
    FakeProcessRunner processes;
    LoopbackHttp server;
    FakeSimulator simulator;
    FakeInterfaceFactory interfaces{simulator};
    std::unique_ptr<Settings> settings;
    std::unique_ptr<Controller> controller;
};

#pragma once

#include "app/Controller.h"
#include "app/WeatherJobs.h"
#include "app/WeatherWorker.h"
#include "sim/ConnectJobs.h"
#include "sim/ConnectWorker.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/ControllerTesting.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeFsInterface.h"
#include "tests/support/FakeMainView.h"
#include "tests/support/FakeProcessRunner.h"
#include "tests/support/FakeUserDialogs.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTest>

#include <functional>
#include <memory>

/// Answers every request with the file of that path under a folder.
class FolderNetwork final : public QNetworkAccessManager
{
public:
    explicit FolderNetwork(const QString& folder) : m_folder(folder) {}

protected:
    QNetworkReply* createRequest(Operation operation, const QNetworkRequest& request,
                                 QIODevice* data) override
    {
        const QUrl file = QUrl::fromLocalFile(m_folder + request.url().path());
        return QNetworkAccessManager::createRequest(operation, QNetworkRequest(file), data);
    }

private:
    QString m_folder;
};

/// A controller over doubles, with a home folder of its own. Its timers don't run by themselves
/// faster than a test waits.
class ControllerFixture : public SettingsFixture
{
protected:
    void SetUp() override
    {
        SettingsFixture::SetUp();
        settings = std::make_unique<Settings>(mainFile(), m_random);
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
        controller = std::make_unique<Controller>(ControllerParts{
            *settings, view, dialogs, m_random,
            [folder = path("server")] { return std::make_unique<FolderNetwork>(folder); },
            processes, interfaces, DownloadLimits()});
        timer("timerOneSecond").stop();
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
    /// A weather file with so many METARs of German airfields.
    static QString weatherText(int metars)
    {
        QString text = QStringLiteral("[METAR]\n");
        for (int i = 0; i < metars; ++i) {
            text += QStringLiteral("ED%1%2 011150Z 24012KT 9999 FEW030 22/12 Q1015\n")
                        .arg(QChar('A' + i / 26))
                        .arg(QChar('A' + i % 26));
        }
        return text + QStringLiteral("[/METAR]\n");
    }
    void decode(int metars)
    {
        controller->weatherWorker().setWeatherText(weatherText(metars));
        controller->weatherWorker().addJob(
            Job(weatherjob::kDecodeWeather, QStringLiteral("decode weather data")));
        controller->weatherWorker().start();
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
    FakeSimulator simulator;
    FakeInterfaceFactory interfaces{simulator};
    std::unique_ptr<Settings> settings;
    std::unique_ptr<Controller> controller;
};

#pragma once

#include "app/base/DownloadManager.h"
#include "app/base/Reporting.h"
#include "app/base/StopFlag.h"
#include "tests/app/base/SettingsFixture.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeMainView.h"
#include "tests/support/FakeUserDialogs.h"
#include "tests/support/LoopbackHttp.h"

#include <QTest>

#include <functional>
#include <memory>

/// Settings with a home folder of their own and the servers "/one", "/two" and "/info/" on
/// loopback, and a window that keeps all lines.
class ServerFixture : public SettingsFixture
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
        QDir().mkpath(settings->tmpFolder());
    }
    void TearDown() override
    {
        settings.reset();
        SettingsFixture::TearDown();
    }

    DownloadContext context()
    {
        return {settings.get(), hostNetwork(), &dialogs, &stop, DownloadLimits()};
    }
    Reporting reporting()
    {
        return {[this](const QString& text, int level) { view.OnOutputDebugstring(text, level); },
                [this](qlonglong value, qlonglong total, const QString& text) {
                    view.OnProgressBar(value, total, text);
                }};
    }
    /// As the servers pack their lists.
    static QByteArray packed(const QByteArray& plain) { return qCompress(plain).mid(4); }
    static bool wait(const std::function<bool()>& condition)
    {
        constexpr int kLimitMs = 20000;
        return QTest::qWaitFor(condition, kLimitMs);
    }
    void waitForLine(const QString& part)
    {
        ASSERT_TRUE(wait([&] { return view.linesWith(part) > 0; })) << qPrintable(part);
    }

    FakeClock clock{2019, 7, 1, 12, 10};
    FakeMainView view;
    FakeUserDialogs dialogs;
    LoopbackHttp server;
    StopFlag stop;
    std::unique_ptr<Settings> settings;
};

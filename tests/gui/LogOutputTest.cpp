#include "app/base/LogLevel.h"
#include "app/gui/DockWidgetDebug.h"
#include "app/gui/LogFile.h"
#include "app/gui/WindowDialogs.h"

#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QPointer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>

#include <gtest/gtest.h>

#include <thread>

namespace {

QByteArray Contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly | QIODevice::Text) ? file.readAll() : QByteArray();
}

TEST(LogFile, BeginsAnewAndHasEachLineOnDiskAtOnce)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("cirrilonv3.log"));
    LogFile(folder.path()).write(QStringLiteral("old"), 0);
    LogFile log(folder.path());
    const char* names[] = {"Debug", "Notification", "Warning", "Error", "Unknown", "Unknown"};
    QByteArray expected;
    for (int level : {0, 1, 2, 3, 4, -1}) {
        log.write(QStringLiteral("<b>\u00FC</b>"), level);
        expected += QByteArray(names[level < 0 ? 5 : level]) + ": <b>\xC3\xBC</b>\n";
        EXPECT_EQ(Contents(path), expected);
    }
}

TEST(LogFile, LinesFromBeforeTheFolderFollow)
{
    const QTemporaryDir folder;
    const QString work = folder.filePath(QStringLiteral("work"));
    QStringList seen;
    LogFile log(work);
    log.setMirror([&seen](const QString& line) { seen << line; });
    log.write(QStringLiteral("first"), 1);
    EXPECT_FALSE(QDir(work).exists());
    QDir().mkpath(work);
    log.write(QStringLiteral("second"), 2);
    EXPECT_EQ(Contents(work + QStringLiteral("/cirrilonv3.log")),
              "Notification: first\nWarning: second\n");
    EXPECT_EQ(seen.size(), 2);
}

TEST(DebugDock, MarksLevelsAndReadsEveryLineAsRichText)
{
    DockWidgetDebug dock;
    const auto& view = *dock.findChild<QTextBrowser*>();
    dock.append(QStringLiteral("a &amp; b"), loglevel::kNotification);
    dock.append(QStringLiteral("slow"), loglevel::kWarning);
    dock.append(QStringLiteral("lost"), loglevel::kError);
    EXPECT_EQ(dock.lines(), QStringList({QStringLiteral("a &amp; b"),
                                         QStringLiteral("<b style=\"color:orange\"> slow </b> "),
                                         QStringLiteral("<b style=\"color:red\"> lost </b> ")}));
    EXPECT_TRUE(view.toPlainText().startsWith(QStringLiteral("a & b\n")));
    dock.clear();
    EXPECT_TRUE(view.toPlainText().isEmpty());
}

TEST(DebugDock, ListKeepsAThousandLinesTheViewMoreButNotWithoutEnd)
{
    DockWidgetDebug dock;
    const QTextDocument& document = *dock.findChild<QTextBrowser*>()->document();
    for (int number = 0; number < 6001; ++number) {
        dock.append(QString::number(number), loglevel::kNotification);
        if (number == 1004) {
            EXPECT_EQ(dock.lines().size(), 1000);
            EXPECT_EQ(dock.lines().first(), QStringLiteral("5"));
            EXPECT_EQ(document.blockCount(), 1005);
        }
    }
    EXPECT_EQ(document.blockCount(), 4001);
    EXPECT_EQ(document.firstBlock().text(), QStringLiteral("2000"));
    EXPECT_EQ(document.lastBlock().text(), QStringLiteral("6000"));
}

TEST(DebugDock, OpensLocalFoldersThatExistOnly)
{
    const QTemporaryDir folder;
    DockWidgetDebug dock;
    QSignalSpy opened(&dock, &DockWidgetDebug::sigOpenFolder);
    auto* view = dock.findChild<QTextBrowser*>();
    for (const QString& link :
         {folder.path(), folder.path() + QStringLiteral("/none"), QStringLiteral("http://host/tmp"),
          QStringLiteral("//host/share"), QStringLiteral("relative")})
    {
        Q_EMIT view->anchorClicked(QUrl(link));
    }
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened.first().first().toString(), folder.path());
}

TEST(WindowDialogs, WarningsDontWaitAndStandOnce)
{
    QWidget window;
    WindowDialogs dialogs(&window, {});
    dialogs.warning(QStringLiteral("Title"), QStringLiteral("<i>text</i>"));
    dialogs.warning(QStringLiteral("Title"), QStringLiteral("<i>text</i>"));
    EXPECT_EQ(dialogs.openBoxes(), 1);
    EXPECT_EQ(window.findChild<QMessageBox*>()->textFormat(), Qt::PlainText);
    for (int number = 0; number < 20; ++number) {
        dialogs.critical(QStringLiteral("Title"), QString::number(number));
    }
    EXPECT_EQ(dialogs.openBoxes(), 8);
}

TEST(WindowDialogs, AreQueuedFromOtherThreads)
{
    QWidget window;
    WindowDialogs dialogs(&window, {});
    std::thread worker([&dialogs] { dialogs.warning(QString(), QStringLiteral("from a worker")); });
    worker.join();
    EXPECT_EQ(dialogs.openBoxes(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&dialogs] { return dialogs.openBoxes() == 1; }, 5000));
}

} // namespace

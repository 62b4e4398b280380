#include "app/base/LogLevel.h"
#include "app/gui/DockWidgetDebug.h"
#include "app/gui/LogFile.h"
#include "app/gui/WindowDialogs.h"
#include "tests/support/Text.h"

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
    const QString path = folder.filePath("cirrilonv3.log"_q);
    LogFile(folder.path()).write("old"_q, 0);
    LogFile log(folder.path());
    QByteArray expected;
    for (const auto& [level, name] : {std::pair(0, "Debug"),
                                      {1, "Notification"},
                                      {2, "Warning"},
                                      {3, "Error"},
                                      {4, "Unknown"},
                                      {-1, "Unknown"}})
    {
        log.write("<b>\u00FC</b>"_q, level);
        expected += QByteArray(name) + ": <b>\xC3\xBC</b>\n";
        EXPECT_EQ(Contents(path), expected);
    }
}

TEST(LogFile, LinesFromBeforeTheFolderFollow)
{
    const QTemporaryDir folder;
    const QString work = folder.filePath("work"_q);
    QStringList seen;
    LogFile log(work);
    log.setMirror([&seen](const QString& line) { seen << line; });
    log.write("first"_q, 1);
    EXPECT_FALSE(QDir(work).exists());
    QDir().mkpath(work);
    log.write("second"_q, 2);
    EXPECT_EQ(Contents(work + "/cirrilonv3.log"_q), "Notification: first\nWarning: second\n");
    EXPECT_EQ(seen.size(), 2);
}

TEST(DebugDock, MarksLevelsAndReadsEveryLineAsRichText)
{
    DockWidgetDebug dock;
    const auto& view = *dock.findChild<QTextBrowser*>();
    dock.append("a &amp; b"_q, loglevel::kNotification);
    dock.append("slow"_q, loglevel::kWarning);
    dock.append("lost"_q, loglevel::kError);
    EXPECT_EQ(dock.lines(), QStringList({"a &amp; b"_q, "<b style=\"color:orange\"> slow </b> "_q,
                                         "<b style=\"color:red\"> lost </b> "_q}));
    EXPECT_TRUE(view.toPlainText().startsWith("a & b\n"_q));
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
            EXPECT_EQ(dock.lines().first(), "5"_q);
            EXPECT_EQ(document.blockCount(), 1005);
        }
    }
    EXPECT_EQ(document.blockCount(), 4001);
    EXPECT_EQ(document.firstBlock().text(), "2000"_q);
    EXPECT_EQ(document.lastBlock().text(), "6000"_q);
}

TEST(DebugDock, OpensLocalFoldersThatExistOnly)
{
    const QTemporaryDir folder;
    DockWidgetDebug dock;
    QSignalSpy opened(&dock, &DockWidgetDebug::sigOpenFolder);
    auto* view = dock.findChild<QTextBrowser*>();
    for (const QString& link : {folder.path(), folder.path() + "/none"_q, "http://host/tmp"_q,
                                "//host/share"_q, "relative"_q})
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
    dialogs.warning("Title"_q, "<i>text</i>"_q);
    dialogs.warning("Title"_q, "<i>text</i>"_q);
    EXPECT_EQ(dialogs.openBoxes(), 1);
    EXPECT_EQ(window.findChild<QMessageBox*>()->textFormat(), Qt::PlainText);
    for (int number = 0; number < 20; ++number) {
        dialogs.critical("Title"_q, QString::number(number));
    }
    EXPECT_EQ(dialogs.openBoxes(), 8);
}

TEST(WindowDialogs, AreQueuedFromOtherThreads)
{
    QWidget window;
    WindowDialogs dialogs(&window, {});
    std::thread worker([&dialogs] { dialogs.warning(QString(), "from a worker"_q); });
    worker.join();
    EXPECT_EQ(dialogs.openBoxes(), 0);
    EXPECT_TRUE(QTest::qWaitFor([&dialogs] { return dialogs.openBoxes() == 1; }, 5000));
}

} // namespace

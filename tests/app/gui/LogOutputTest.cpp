#include "app/base/LogLevel.h"
#include "app/gui/DockWidgetDebug.h"
#include "app/gui/LogFile.h"
#include "app/gui/WindowDialogs.h"
#include "tests/support/FakeClock.h"
#include "tests/support/Text.h"

#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QToolButton>
#include <QUrl>

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly | QIODevice::Text) ? file.readAll() : QByteArray();
}

/// What stands in a log after its first line, which has the date.
QByteArray linesOf(const QString& path)
{
    const QByteArray text = contents(path);
    return text.mid(text.indexOf('\n') + 1);
}

TEST(LogFileTest, BeginsAnewWithTheDateAndHasEachLineOnDiskAtOnce)
{
    const FakeClock clock(2026, 2, 3, 4, 5, 6);
    const QTemporaryDir folder;
    const QString path = folder.filePath("cirrilonv3.log"_q);
    LogFile(folder.path()).write("old"_q, 0);
    LogFile log(folder.path());
    QByteArray expected = "Notification: 04:05:06:000 - (Main) - Log of 2026-02-03 (UTC)\n";
    EXPECT_EQ(contents(path), expected);
    for (const auto& [level, name] : {std::pair(0, "Debug"),
                                      {1, "Notification"},
                                      {2, "Warning"},
                                      {3, "Error"},
                                      {4, "Unknown"},
                                      {-1, "Unknown"}})
    {
        log.write("<b>\u00FC</b>"_q, level);
        expected += QByteArray(name) + ": <b>\xC3\xBC</b>\n";
        EXPECT_EQ(contents(path), expected);
    }
}

TEST(LogFileTest, LinesFromBeforeTheFolderFollow)
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
    EXPECT_EQ(linesOf(work + "/cirrilonv3.log"_q), "Notification: first\nWarning: second\n");
    EXPECT_EQ(seen.size(), 2);
}

TEST(LogFileTest, KeepsTheLogsOfTheLastFiveRuns)
{
    const QTemporaryDir folder;
    for (int run = 1; run <= 8; ++run) {
        LogFile log(folder.path());
        log.write("run %1"_q.arg(run), loglevel::kNotification);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files, QDir::Name),
              QStringList({"cirrilonv3.1.log"_q, "cirrilonv3.2.log"_q, "cirrilonv3.3.log"_q,
                           "cirrilonv3.4.log"_q, "cirrilonv3.5.log"_q, "cirrilonv3.log"_q}));
    EXPECT_EQ(linesOf(folder.filePath("cirrilonv3.log"_q)), "Notification: run 8\n");
    EXPECT_EQ(linesOf(folder.filePath("cirrilonv3.1.log"_q)), "Notification: run 7\n");
    EXPECT_EQ(linesOf(folder.filePath("cirrilonv3.5.log"_q)), "Notification: run 3\n");
    EXPECT_TRUE(contents(folder.filePath("cirrilonv3.5.log"_q)).contains(" - (Main) - Log of 20"));
}

TEST(LogFileTest, ALogThatCantBeKeptCostsALineOnly)
{
    const QTemporaryDir folder;
    LogFile(folder.path()).write("old"_q, 1);
    for (int run = 1; run <= 5; ++run) {
        QDir(folder.path()).mkpath("cirrilonv3.%1.log/in the way"_q.arg(run));
    }
    LogFile log(folder.path());
    log.write("new"_q, 1);
    const QByteArray lines = linesOf(log.path());
    EXPECT_TRUE(lines.contains("the log of the last run isn't kept")) << lines.constData();
    EXPECT_TRUE(lines.endsWith("Notification: new\n")) << lines.constData();
}

/// The dock with its view.
class DebugDockTest : public testing::Test
{
protected:
    void append(int count, const QString& begin = QString())
    {
        for (int number = 0; number < count; ++number) {
            dock.append(begin + QString::number(number), loglevel::kNotification);
        }
    }
    QStringList shown() const { return view.toPlainText().split(QLatin1Char('\n')); }

    DockWidgetDebug dock;
    QTextBrowser& view = *dock.findChild<QTextBrowser*>("textEdit_debug"_q);
    const QTextDocument& document = *view.document();
};

TEST_F(DebugDockTest, MarksLevelsAndReadsEveryLineAsRichText)
{
    dock.append("a &amp; b"_q, loglevel::kNotification);
    dock.append("slow"_q, loglevel::kWarning);
    dock.append("lost"_q, loglevel::kError);
    dock.append("<a href=\"/x\">link</a>  two"_q, loglevel::kDebug);
    dock.flush();
    EXPECT_EQ(shown(), QStringList({"a & b"_q, " slow  "_q, " lost  "_q, "link  two"_q}));
    const auto format = [this](int line, int column) {
        QTextCursor cursor(document.findBlockByNumber(line));
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::MoveAnchor, column);
        return cursor.charFormat();
    };
    EXPECT_EQ(format(1, 3).foreground().color(), QColor("orange"));
    EXPECT_EQ(format(2, 3).foreground().color(), QColor(Qt::red));
    EXPECT_EQ(format(3, 2).anchorHref(), "/x"_q);
    EXPECT_FALSE(format(3, 7).isAnchor());
}

TEST_F(DebugDockTest, ShowsABurstLittleByLittleInOrderAndScrollsToItsEnd)
{
    dock.show();
    append(100, QString(3600, QLatin1Char('x')) + QLatin1Char(' '));
    EXPECT_TRUE(document.isEmpty()) << "nothing is laid out while lines come";
    ASSERT_TRUE(QTest::qWaitFor([this] { return !document.isEmpty(); }, 5000));
    EXPECT_LE(document.blockCount(), 4) << "so that the event loop goes on";
    ASSERT_TRUE(QTest::qWaitFor([this] { return document.blockCount() == 100; }, 30000));
    for (int line = 0; line < 100; ++line) {
        EXPECT_TRUE(document.findBlockByNumber(line).text().endsWith(" %1"_q.arg(line))) << line;
    }
    EXPECT_GT(view.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
}

TEST_F(DebugDockTest, StaysWhereThePilotReadsAndFollowsAgainFromTheEnd)
{
    dock.resize(400, 200);
    dock.show();
    append(7000);
    dock.flush();
    QScrollBar& scroll = *view.verticalScrollBar();
    scroll.setValue(scroll.maximum() / 2);
    const auto topLine = [this] {
        return view.cursorForPosition(QPoint(0, 0)).block().text();
    };
    const QString read = topLine();
    append(500);
    dock.flush();
    EXPECT_EQ(topLine(), read) << "although the oldest lines went";
    scroll.setValue(scroll.maximum());
    append(1, "last"_q);
    dock.flush();
    EXPECT_EQ(scroll.value(), scroll.maximum());
    dock.resize(300, 130);
    QCoreApplication::processEvents();
    append(1, "last"_q);
    dock.flush();
    EXPECT_EQ(scroll.value(), scroll.maximum()) << "a smaller dock isn't the pilot's wish";
}

TEST_F(DebugDockTest, ShowsOnlyWhatIsOfTheChosenLevel)
{
    for (const auto& [text, level] : {std::pair("quiet", loglevel::kDebug),
                                      {"said", loglevel::kNotification},
                                      {"slow", loglevel::kWarning},
                                      {"lost", loglevel::kError}})
    {
        dock.append(QLatin1String(text), level);
    }
    dock.flush();
    auto& level = *dock.findChild<QComboBox*>("comboBox_level"_q);
    level.setCurrentIndex(level.findData(loglevel::kWarning));
    dock.append("said later"_q, loglevel::kNotification);
    dock.append("lost again"_q, loglevel::kError);
    dock.flush();
    EXPECT_EQ(view.toPlainText(), " slow  \n lost  \n lost again  "_q);
    level.setCurrentIndex(level.findData(loglevel::kDebug));
    dock.flush();
    EXPECT_EQ(shown().size(), 6) << "what was left out comes back at its place";
    EXPECT_EQ(shown().at(4), "said later"_q);
}

/// A dock with six lines, into whose line for finding Ctrl+F has led.
class DebugDockFindTest : public DebugDockTest
{
protected:
    void SetUp() override
    {
        dock.show();
        append(3, "EDDF "_q);
        append(3, "KDEN "_q);
        dock.flush();
        dock.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dock));
        view.setFocus();
        QTest::keyClick(&view, Qt::Key_F, Qt::ControlModifier);
        ASSERT_EQ(dock.focusWidget(), &line);
    }
    /// The line that Return leads to.
    QString enter(Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&line, Qt::Key_Return, modifiers);
        return view.textCursor().block().text();
    }

    QLineEdit& line = *dock.findChild<QLineEdit*>("lineEdit_find"_q);
};

TEST_F(DebugDockFindTest, GoesInBothDirectionsAndOnFromTheOtherEnd)
{
    QTest::keyClicks(&line, "eddf"_q);
    const QStringList seen{enter(), enter(), enter(), enter(), enter(Qt::ShiftModifier)};
    EXPECT_EQ(seen.join(QLatin1Char(',')), "EDDF 0,EDDF 1,EDDF 2,EDDF 0,EDDF 2"_q);
    EXPECT_EQ(view.textCursor().selectedText(), "EDDF"_q);
    dock.findChild<QToolButton*>("toolButton_findPrevious"_q)->click();
    EXPECT_EQ(view.textCursor().block().text(), "EDDF 1"_q);
}

TEST_F(DebugDockFindTest, SaysWhatIsNowhere)
{
    line.setText("kden"_q);
    const QString before = enter();
    line.setText("nowhere"_q);
    EXPECT_EQ(enter(), before);
    const auto labels = dock.findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(labels.begin(), labels.end(),
                            [](const QLabel* label) { return label->text() == "Not found"_q; }));
}

TEST_F(DebugDockTest, CopiesTheSelectionOrEverything)
{
    append(3);
    dock.flush();
    auto& button = *dock.findChild<QToolButton*>("toolButton_copyLog"_q);
    button.click();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "0\n1\n2"_q);
    view.moveCursor(QTextCursor::Start);
    view.find("1"_q);
    button.click();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "1"_q);
}

TEST_F(DebugDockTest, ClearEmptiesWhatWaitsAsWell)
{
    append(1);
    dock.flush();
    append(3);
    dock.clear();
    dock.flush();
    EXPECT_TRUE(document.isEmpty());
    append(2);
    dock.flush();
    EXPECT_EQ(shown(), QStringList({"0"_q, "1"_q}));
}

TEST_F(DebugDockTest, HasThousandsOfLinesButNotWithoutEnd)
{
    append(6000);
    dock.flush();
    EXPECT_EQ(document.blockCount(), 6000);
    append(1, "last"_q);
    dock.flush();
    EXPECT_EQ(document.blockCount(), 4001);
    EXPECT_EQ(document.firstBlock().text(), "2000"_q);
    EXPECT_EQ(document.lastBlock().text(), "last0"_q);
    append(7000);
    dock.flush();
    EXPECT_EQ(document.blockCount(), 6000);
    EXPECT_EQ(document.lastBlock().text(), "6999"_q) << "of too many at once the newest stay";
}

TEST_F(DebugDockTest, OpensLocalFoldersThatExistOnly)
{
    const QTemporaryDir folder;
    QSignalSpy opened(&dock, &DockWidgetDebug::sigOpenFolder);
    for (const QString& link : {folder.path(), folder.path() + "/none"_q, "http://host/tmp"_q,
                                "//host/share"_q, "relative"_q})
    {
        Q_EMIT view.anchorClicked(QUrl(link));
    }
    ASSERT_EQ(opened.size(), 1);
    EXPECT_EQ(opened.first().first().toString(), folder.path());
}

int openBoxes(const QWidget& window)
{
    return window.findChildren<QMessageBox*>().size();
}

TEST(WindowDialogsTest, WarningsDontWaitAndNeverStack)
{
    QWidget window;
    WindowDialogs dialogs(&window, {});
    dialogs.warning("Title"_q, "<i>text</i>"_q);
    EXPECT_EQ(window.findChild<QMessageBox*>()->textFormat(), Qt::PlainText);
    for (int number = 0; number < 20; ++number) {
        dialogs.warning("Title"_q, QString::number(number));
        dialogs.critical("Another"_q, QString::number(number));
    }
    EXPECT_EQ(openBoxes(window), 1);
    for (const QString& title : {"Title"_q, "Another"_q}) {
        QPointer<QMessageBox> box = window.findChild<QMessageBox*>();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), title);
        EXPECT_EQ(box->text(), "19"_q) << "the newest";
        box->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(box, nullptr);
    }
    EXPECT_EQ(openBoxes(window), 0);
}

TEST(WindowDialogsTest, AreQueuedFromOtherThreads)
{
    QWidget window;
    WindowDialogs dialogs(&window, {});
    std::thread worker([&dialogs] { dialogs.warning(QString(), "from a worker"_q); });
    worker.join();
    EXPECT_EQ(openBoxes(window), 0);
    EXPECT_TRUE(QTest::qWaitFor([&window] { return openBoxes(window) == 1; }, 5000));
}

} // namespace

#include "app/gui/SingleStart.h"

#include "tests/support/Text.h"

#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <future>

namespace {

using Found = SingleStart::Found;

TEST(SingleStartTest, TheSecondStartBringsUpTheFirst)
{
    const QTemporaryDir folder;
    const QString key = SingleStart::keyOf(folder.path());
    SingleStart first(key);
    ASSERT_EQ(first.begin(), Found::Nobody);
    const QSignalSpy raised(&first, &SingleStart::sigRaise);
    auto second = std::async(std::launch::async, [&key] { return SingleStart(key).begin(); });
    ASSERT_TRUE(QTest::qWaitFor([&raised] { return raised.count() == 1; }, 10000));
    EXPECT_EQ(second.get(), Found::Raised);
}

TEST(SingleStartTest, FoldersStandBesideEachOtherAndAnEndMakesRoom)
{
    const QTemporaryDir one;
    const QTemporaryDir two;
    EXPECT_NE(SingleStart::keyOf(one.path()), SingleStart::keyOf(two.path()));
    EXPECT_EQ(SingleStart::keyOf(one.path()), SingleStart::keyOf(one.path() + "/./"_q));
    for (int start = 0; start < 2; ++start) {
        SingleStart here(SingleStart::keyOf(one.path()));
        SingleStart there(SingleStart::keyOf(two.path()));
        EXPECT_EQ(here.begin(), Found::Nobody);
        EXPECT_EQ(there.begin(), Found::Nobody);
    }
}

TEST(SingleStartTest, WhatACrashHasLeftIsNoObstacle)
{
    const QTemporaryDir folder;
    const QString key = SingleStart::keyOf(folder.path());
    QString socket;
    {
        QLocalServer crashed;
        ASSERT_TRUE(crashed.listen(key));
        socket = crashed.fullServerName();
        QFile::rename(socket, socket + ".kept"_q); // its end would remove it
    }
    QFile::rename(socket + ".kept"_q, socket);
    ASSERT_TRUE(QFile::exists(socket));
    SingleStart next(key);
    EXPECT_EQ(next.begin(), Found::Nobody);
    auto second = std::async(std::launch::async, [&key] { return SingleStart(key).begin(); });
    EXPECT_TRUE(QSignalSpy(&next, &SingleStart::sigRaise).wait(10000));
    EXPECT_EQ(second.get(), Found::Raised);
}

} // namespace

#include "app/base/JobQueue.h"

#include <QVariant>

#include <gtest/gtest.h>

#include <thread>

namespace {

TEST(Job, ConstructorsFillTheirPayload)
{
    const Job none;
    EXPECT_EQ(none.id, -1);
    EXPECT_EQ(none.name, QStringLiteral("no job"));
    EXPECT_FLOAT_EQ(none.xplaneWeather.Press, 29.92F);

    EXPECT_EQ(Job(22, QStringLiteral("n"), QByteArray("ab\0c", 4)).data.size(), 4);
    XPlaneWeather weather;
    weather.Vis = 500.0F;
    EXPECT_FLOAT_EQ(Job(1, weather, QStringLiteral("n")).xplaneWeather.Vis, 500.0F);
    const std::vector<XPlaneWindLayer> layers(3);
    const Job winds(7, layers, QStringLiteral("w"));

    registerJobType();
    EXPECT_NE(QMetaType::type("Job"), QMetaType::UnknownType);
    const Job copy = QVariant::fromValue(winds).value<Job>();
    EXPECT_EQ(copy.windLayers.size(), 3U);
    EXPECT_EQ(copy.name, QStringLiteral("w"));
    EXPECT_EQ(copy.id, 7);
}

TEST(JobQueue, GivesJobsInTheirOrder)
{
    JobQueue queue;
    EXPECT_EQ(queue.takeFirst().id, kNoJob);
    int next = 0;
    int expected = 0;
    for (int round = 0; round < 50; ++round) {
        for (int i = 0; i < 7; ++i) {
            queue.add({next++, QString()});
        }
        for (int i = 0; i < 5; ++i) {
            ASSERT_EQ(queue.takeFirst().id, expected++);
        }
        ASSERT_EQ(queue.size(), static_cast<std::size_t>(next - expected));
    }
    while (expected < next) {
        ASSERT_EQ(queue.takeFirst().id, expected++);
    }
    EXPECT_EQ(queue.takeFirst().id, kNoJob);
    EXPECT_EQ(queue.size(), 0U);
}

TEST(JobQueue, LosesNothingBetweenTwoThreads)
{
    constexpr int kJobs = 20000;
    JobQueue queue;
    std::thread producer([&queue] {
        for (int i = 0; i < kJobs; ++i) {
            queue.add({i, QString::number(i)});
        }
    });
    int taken = 0;
    int wrong = 0;
    while (taken < kJobs) {
        if (queue.size() == 0) {
            std::this_thread::yield();
            continue;
        }
        const Job job = queue.takeFirst();
        wrong += job.id == taken && job.name == QString::number(taken) ? 0 : 1;
        ++taken;
    }
    producer.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace

#include "app/base/JobQueue.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

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
    EXPECT_EQ(queue.takeFirst().id, kNoJob);
    EXPECT_EQ(queue.size(), 0U);
}

} // namespace

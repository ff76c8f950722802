#include "host/system/host_event_loop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <ctime>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace tonquay;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

std::chrono::nanoseconds processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

TEST(HostEventLoop, postedCallsRunInOrderOnTheThreadOfTheLoop)
{
    host::HostEventLoop loop;
    std::vector<int> order;
    const auto here = std::this_thread::get_id();
    bool elsewhere = false;
    std::thread other([&] {
        for (int i = 0; i < 1000; ++i)
            loop.post([&, i] {
                order.push_back(i);
                elsewhere = elsewhere || std::this_thread::get_id() != here;
            });
    });
    other.join();
    loop.pass();
    ASSERT_EQ(order.size(), 1000u);
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
    EXPECT_FALSE(elsewhere);
}

TEST(HostEventLoop, aPostFromAnotherThreadEndsAWait)
{
    host::HostEventLoop loop;
    bool ran = false;
    const auto start = Clock::now();
    std::thread other([&] {
        std::this_thread::sleep_for(30ms);
        loop.post([&] { ran = true; });
    });
    loop.wait(20s);
    other.join();
    EXPECT_TRUE(ran);
    EXPECT_LT(Clock::now() - start, 10s);
}

TEST(HostEventLoop, aWaitEndsAtItsLimitAndCostsNoProcessor)
{
    host::HostEventLoop loop;
    const auto start = Clock::now();
    const auto before = processorTime();
    loop.wait(300ms);
    EXPECT_GE(Clock::now() - start, 299ms);
    EXPECT_LT(processorTime() - before, 20ms);
    loop.wait(0ms);
}

/// How often this thread has given up the processor of its own accord.
long timesSlept()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

TEST(HostEventLoop, aPassNeverSleepsAndStillRunsTimers)
{
    host::HostEventLoop loop;
    int ticks = 0;
    const auto timer = loop.every(20ms, [&] { ++ticks; });
    loop.pass();
    const auto start = Clock::now();
    const long sleptBefore = timesSlept();
    while (ticks < 15 && Clock::now() - start < 20s)
        loop.pass();
    EXPECT_EQ(ticks, 15);
    EXPECT_GE(Clock::now() - start, 15 * 20ms - 20ms);
    // A pass that sleeps would do so before nearly every tick.
    EXPECT_LT(timesSlept() - sleptBefore, 10);
}

TEST(HostEventLoop, aTimerNeverEntersItsOwnHandlerAndMissedTicksBecomeOne)
{
    host::HostEventLoop loop;
    int inside = 0;
    int deepest = 0;
    int ticks = 0;
    int others = 0;
    const auto timer = loop.every(5ms, [&] {
        ++ticks;
        deepest = std::max(deepest, ++inside);
        if (ticks == 1)
            for (const auto start = Clock::now(); Clock::now() - start < 200ms;)
                loop.wait(5ms);
        --inside;
    });
    const auto other = loop.every(5ms, [&] { ++others; });
    while (ticks == 0)
        loop.wait(1s);
    EXPECT_EQ(deepest, 1);
    EXPECT_GT(others, 10) << "other timers go on inside";
    const int afterFirst = ticks;
    loop.wait(0ms);
    EXPECT_LE(ticks - afterFirst, 2) << "40 missed ticks are not made up for";
}

TEST(HostEventLoop, aTimerMayEndItselfAndOthersInsideItsHandler)
{
    host::HostEventLoop loop;
    std::unique_ptr<platform::EventLoop::LoopTimer> first;
    std::unique_ptr<platform::EventLoop::LoopTimer> second;
    int ticks = 0;
    first = loop.every(1ms, [&] {
        ++ticks;
        first.reset();
        second.reset();
    });
    second = loop.every(1ms, [&] {
        ++ticks;
        first.reset();
        second.reset();
    });
    for (int i = 0; i < 5; ++i)
        loop.wait(10ms);
    EXPECT_EQ(ticks, 1);
}

TEST(HostEventLoop, waitsNestInHandlersAndEachEndsByItself)
{
    host::HostEventLoop loop;
    std::vector<int> order;
    loop.post([&] {
        order.push_back(1);
        loop.post([&] { order.push_back(2); });
        loop.wait(10s);
        order.push_back(3);
    });
    const auto start = Clock::now();
    loop.wait(10s);
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
    EXPECT_LT(Clock::now() - start, 5s);
}

TEST(HostEventLoop, waitUntilSleepsBetweenItsLooks)
{
    host::HostEventLoop loop;
    std::atomic<bool> done = false;
    std::thread other([&] {
        std::this_thread::sleep_for(300ms);
        done = true;
    });
    int looks = 0;
    platform::waitUntil(loop, [&] {
        ++looks;
        return done.load();
    });
    other.join();
    EXPECT_LT(looks, 20);
}

TEST(HostEventLoop, aWatchedDescriptorWakesTheLoopUntilTheWatchEnds)
{
    host::HostEventLoop loop;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    int calls = 0;
    std::unique_ptr<host::HostEventLoop::Watch> watch;
    watch = loop.watch(ends[0], [&] {
        char byte = 0;
        calls += static_cast<int>(read(ends[0], &byte, 1));
        if (calls == 2)
            watch.reset();
    });
    ASSERT_EQ(write(ends[1], "abc", 3), 3);
    for (int i = 0; i < 5; ++i)
        loop.wait(20ms);
    EXPECT_EQ(calls, 2);
    close(ends[0]);
    close(ends[1]);
}

}

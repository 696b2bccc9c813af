// SPDX-License-Identifier: MIT
// Loops and threads: in which order tasks run, where, and what happens to those that come too late.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <future>
#include <mutex>
#include <set>
#include <thread>

#include "platform/scheduler.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr auto deadline = 60s;  // a wait that takes this long has failed

bool comes(const std::future<void>& future) {
    return future.wait_for(deadline) == std::future_status::ready;
}

TEST(RunLoop, runsTasksInOrderOnItsThread) {
    RunLoop loop;
    std::vector<int> ran;
    loop.post([&] {
        ran.push_back(1);
        loop.post([&] { ran.push_back(4); });  // later, not within
        ran.push_back(2);
    });
    loop.post([&] { ran.push_back(3); });
    EXPECT_TRUE(ran.empty());
    loop.poll();
    EXPECT_THAT(ran, ElementsAre(1, 2, 3, 4));
    loop.poll();  // nothing is there, and nothing is waited for
    EXPECT_EQ(ran.size(), 4u);
}

TEST(RunLoop, takesTasksOfOtherThreads) {
    RunLoop loop;
    static constexpr int each = 200;
    std::vector<int> ran;
    const auto poster = [&](int first) {
        for (int i = 0; i < each; ++i)
            loop.post([&ran, &loop, number = first + i] {
                ran.push_back(number);
                if (ran.size() == 2 * each) loop.stop();
            });
    };
    std::thread one(poster, 0), two(poster, each);
    loop.run();
    one.join();
    two.join();
    // Those of one thread keep their order.
    std::vector<int> first, second;
    for (const int number : ran) (number < each ? first : second).push_back(number);
    EXPECT_TRUE(std::is_sorted(first.begin(), first.end()) && std::is_sorted(second.begin(), second.end()));
    EXPECT_EQ(std::set<int>(ran.begin(), ran.end()).size(), std::size_t{2 * each});
}

TEST(RunLoop, canBeStoppedBeforeItRunsAndRunAgain) {
    RunLoop loop;
    int ran = 0;
    loop.post([&] { ++ran; });
    loop.stop();
    loop.run();  // ends at once
    const int afterStop = ran;
    loop.post([&] { loop.stop(); });
    loop.runFor(deadline);
    EXPECT_EQ(ran, 1);
    EXPECT_LE(afterStop, 1);
    loop.runFor(0ms);
}

TEST(RunLoop, dropsWhatHasNotRun) {
    const auto held = std::make_shared<int>();
    {
        RunLoop loop;
        loop.post([held] { FAIL() << "nobody runs the loop"; });
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_EQ(held.use_count(), 1);
}

class Threads : public testing::Test {
protected:
    const std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    SchedulerThreads threads{loop};
};

TEST_F(Threads, runEachTaskWhereItBelongs) {
    std::thread::id worker, background, main;
    threads.postWorker([&] {
        worker = std::this_thread::get_id();
        threads.postBackground([&] {
            background = std::this_thread::get_id();
            threads.postMain([&] {
                main = std::this_thread::get_id();
                loop->stop();
            });
        });
    });
    loop->runFor(deadline);
    EXPECT_EQ(main, std::this_thread::get_id());
    EXPECT_NE(worker, main);
    EXPECT_NE(background, main);
    EXPECT_NE(background, worker);
}

// The worker takes one after the other; in the background two are under way at once.
TEST_F(Threads, keepTheWorkersOrder) {
    std::vector<int> ran;
    std::atomic<int> under = 0;
    std::promise<void> done;
    for (int i = 0; i < 100; ++i)
        threads.postWorker([&, i] {
            EXPECT_EQ(++under, 1);
            ran.push_back(i);
            --under;
            if (i == 99) done.set_value();
        });
    ASSERT_TRUE(comes(done.get_future()));
    EXPECT_TRUE(std::is_sorted(ran.begin(), ran.end()));
    std::promise<void> first, second;
    std::future<void> ofFirst = first.get_future(), ofSecond = second.get_future();
    const auto meet = [](std::promise<void>& mine, std::future<void>& other) {
        mine.set_value();
        EXPECT_TRUE(comes(other));
    };
    std::promise<void> both;
    std::atomic<int> left = 2;
    threads.postBackground([&] {
        meet(first, ofSecond);
        if (--left == 0) both.set_value();
    });
    threads.postBackground([&] {
        meet(second, ofFirst);
        if (--left == 0) both.set_value();
    });
    EXPECT_TRUE(comes(both.get_future()));
    threads.close();  // before what the tasks use goes
}

TEST_F(Threads, dropWhatComesAfterTheirEnd) {
    const Scheduler handle = threads;
    std::promise<void> started, release;
    std::future<void> released = release.get_future();
    bool ended = false;
    threads.postWorker([&] {
        started.set_value();
        EXPECT_TRUE(comes(released));
        ended = true;
    });
    ASSERT_TRUE(comes(started.get_future()));
    const auto held = std::make_shared<int>();
    threads.postWorker([held] {});
    threads.postBackgroundAfter(24h, [held] { FAIL() << "a day has not passed"; });
    std::thread releaser([&] { release.set_value(); });
    threads.close();  // waits for the task under way
    releaser.join();
    EXPECT_TRUE(ended);
    EXPECT_EQ(held.use_count(), 1);
    std::atomic<bool> late = false;
    const auto tooLate = [&late, held] { late = true; };
    const std::unique_ptr<Scheduler::Timer> timer = handle.every(0ms, tooLate);
    handle.postMain(tooLate);
    handle.postWorker(tooLate);
    handle.postBackground(tooLate);
    handle.postBackgroundAfter(0ms, tooLate);
    threads.close();  // again
    loop->poll();
    EXPECT_FALSE(late);
    EXPECT_EQ(held.use_count(), 3);  // here, and by the timer
}

// A main thread that is busy: what is posted waits until somebody runs it.
class BusyExecutor : public Executor {
public:
    void post(std::function<void()> task) override {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
        changed_.notify_all();
    }
    bool waitFor(std::size_t count) {
        std::unique_lock lock(mutex_);
        return changed_.wait_for(lock, deadline, [&] { return tasks_.size() >= count; });
    }
    void runOne() {
        std::unique_lock lock(mutex_);
        const auto task = std::move(tasks_.front());
        tasks_.erase(tasks_.begin());
        lock.unlock();
        task();
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<std::function<void()>> tasks_;
};

TEST(Timer, ticksNoMoreOnceItIsGone) {
    const auto main = std::make_shared<BusyExecutor>();
    SchedulerThreads threads(main);
    int ticks = 0;
    std::unique_ptr<Scheduler::Timer> timer = threads.every(
        1ms, [&] { ++ticks; }, 0ms);
    ASSERT_TRUE(main->waitFor(3));
    main->runOne();
    EXPECT_EQ(ticks, 1);
    timer.reset();  // two ticks are on their way
    main->runOne();
    main->runOne();
    EXPECT_EQ(ticks, 1);
    // One that its own tick ends.
    timer = threads.every(1ms, [&] {
        ++ticks;
        timer.reset();
    });
    while (ticks == 1) {
        ASSERT_TRUE(main->waitFor(1));
        main->runOne();
    }
    EXPECT_EQ(ticks, 2);
}

}  // namespace
}  // namespace vemo::test

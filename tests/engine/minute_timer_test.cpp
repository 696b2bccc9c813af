// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>

#include "platform/scheduler.h"
#include "records/context_map.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

Date at(double seconds) {
    return Date(std::chrono::duration<double>(seconds));
}

// Keeps what is posted until it is asked for.
class HeldTasks : public Executor {
public:
    void post(std::function<void()> task) override {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
        posted_.notify_all();
    }
    // The next task; an empty one when none comes in time.
    std::function<void()> take(std::chrono::seconds patience = std::chrono::seconds(20)) {
        std::unique_lock lock(mutex_);
        if (!posted_.wait_for(lock, patience, [&] { return !tasks_.empty(); })) return {};
        auto task = std::move(tasks_.front());
        tasks_.erase(tasks_.begin());
        return task;
    }

private:
    std::mutex mutex_;
    std::condition_variable posted_;
    std::vector<std::function<void()>> tasks_;
};

class Notified : public CalculatorDelegate {
public:
    void calculatorContextUpdated(const Context& context) override {
        times_.post([now = *context.get<Date>(context_keys::currentTime), this] { latest = now; });
    }
    void calculatorCryptoInitialized() override {}
    bool wait() {
        const auto told = times_.take();
        if (told) told();
        return told != nullptr;
    }
    Date latest;

private:
    HeldTasks times_;
};

TEST(MinuteTimer, ticksWhenTheMinuteTurnsUntilTheCalculatorGoes) {
    const auto main = std::make_shared<HeldTasks>();
    SchedulerThreads scheduler(main);
    std::atomic<double> now = 1795525259.99;  // 10 ms before 13:01
    Environment environment = fixedEnvironment();
    environment.clock = [&] { return at(now); };
    const auto delegate = std::make_shared<Notified>();
    const auto make = [&](bool testMode) {
        VemoEngine::Config config;
        config.testMode = testMode;
        auto calculator = std::make_shared<Calculator>(config, environment, scheduler);
        calculator->initialize();
        calculator->setDelegate(delegate);
        calculator->start();
        return calculator;
    };
    auto quiet = make(true);
    auto calculator = make(false);
    const auto tick = main->take();
    ASSERT_TRUE(tick);
    now = 1795525260;
    tick();
    ASSERT_TRUE(delegate->wait());
    EXPECT_EQ(delegate->latest, at(now));
    const std::lock_guard lock(quiet->context().mutex());
    EXPECT_EQ(*quiet->context().get<Date>(context_keys::currentTime), at(1795525259.99));

    // A tick that is on its way when the calculator goes has nothing left to do.
    now = 1795525319.99;
    auto retired = make(false);
    const auto late = main->take();
    ASSERT_TRUE(late);
    retired->retire();
    retired = nullptr;
    late();
}

// Without an executor no timer runs: the time is that of each calculation, but for test mode.
TEST(EngineWithoutExecutor, takesTheTimeAnewWithEachCalculation) {
    for (const bool testMode : {false, true}) {
        double now = 1795525259;  // 24 November 2026, 13:00 UTC
        Environment environment = fixedEnvironment();
        environment.clock = [&] { return at(now); };
        VemoEngine engine(environment);
        VemoEngine::Config config;
        config.testMode = testMode;
        engine.buildVemoWorker(config);
        const auto result = [&](bool wait) {
            std::string text;
            const auto take = [&](const VemoEngine::Result& calculated) {
                for (const auto& line : calculated.lines)
                    text += plainSpaces(utf8(line.formattedResult().regular.value_or(u""))) + ";";
            };
            Context context;
            if (wait)
                take(*engine.calculateSync(u"time\ntoday", context));
            else
                engine.calculate(u"time\ntoday", context, take);
            return text;
        };
        const std::string first = result(true);
        EXPECT_EQ(result(false), first);
        now += 60;
        const std::string minuteLater = result(true);
        EXPECT_EQ(minuteLater == first, testMode) << minuteLater;
        now += 86400;
        const std::string dayLater = result(false);
        EXPECT_EQ(dayLater == minuteLater, testMode) << dayLater;
        EXPECT_EQ(dayLater.substr(dayLater.find(';')) == first.substr(first.find(';')), testMode) << dayLater;
    }
}

}  // namespace
}  // namespace vemo::test

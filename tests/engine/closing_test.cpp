// SPDX-License-Identifier: MIT
// Engines that end while something is on its way to them. VEMO_STRESS_SECONDS lets each test run for longer.

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>
#include <random>
#include <vector>

#include "support/scripted.h"
#include "support/test_server.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;

// Runs `round` a few times, or for as long as the environment says.
template <class Round>
void stress(int rounds, Round&& round) {
    const char* seconds = std::getenv("VEMO_STRESS_SECONDS");
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds ? std::atoi(seconds) : 0);
    for (int i = 0; i < rounds || std::chrono::steady_clock::now() < end; ++i) round(i);
}

// Destroys the engine at the `fatal`th thing it hears; 0 for never.
class Destroyer : public VemoEngineDelegate {
public:
    Destroyer(std::unique_ptr<VemoEngine>& engine, int fatal) : engine_(engine), left_(fatal) {}
    void engineContextUpdated(const Context&) override { hear(); }
    void engineLog(std::string_view) override { hear(); }
    void engineInitialized() override { hear(); }
    void engineCryptoInitialized() override { hear(); }
    void engineOnlineProblem(const OnlineProblem&) override { hear(); }
    void hear() {
        EXPECT_TRUE(engine_) << "an engine that is gone says nothing";
        if (--left_ == 0) engine_ = nullptr;
    }

private:
    std::unique_ptr<VemoEngine>& engine_;
    int left_;
};

TEST(Closing, isSafeWhileAnythingArrives) {
    TestServer server;
    server.on("/timezone?q=Tokyo", {ok("Asia/Tokyo")});
    server.on("/rates/currency.json", {ok(R"({"rates":{"EUR":0.5}})")});
    server.on("/rates/coins2.json", {ok(R"({"rates":{"BTC":0.00002}})")});
    const std::map<std::string, std::string> script = {
        {"a.js", "vemo.addFunction({id: 'loud', phrases: 'loud'}, () => { log('x'); return 1; })"}};
    const Folder scripts(script);
    const Folder caches{std::map<std::string, std::string>()};
    std::mt19937 random(1);
    // A clock that soon turns the minute.
    Environment environment = fixedEnvironment();
    environment.clock = [base = fixedEnvironment().clock()] { return base + std::chrono::duration<double>(59.995); };
    environment.caches = caches.path();
    environment.sources.timeZones = server.url("/timezone");
    environment.sources.ratesHost = server.url();
    stress(60, [&](int i) {
        const auto loop = std::make_shared<RunLoop>();
        auto engine = std::make_unique<VemoEngine>(environment, loop);
        const auto delegate = std::make_shared<Destroyer>(engine, static_cast<int>(random() % 8));
        engine->setDelegate(delegate);
        VemoEngine::Config config;
        if (i % 4 == 0) config.extensions = scripts.path();
        engine->buildVemoWorker(config,
                                i % 3 == 0 ? VemoEngine::WorkerThread::main : VemoEngine::WorkerThread::background);
        // Answers arrive some tenths of a millisecond after they were asked for.
        const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 40'000);
        while (engine && std::chrono::steady_clock::now() < end) {
            engine->calculate(u"time in Tokyo\nloud()\n$5 in EUR\ntime in Atlantis", Context(),
                              [&](VemoEngine::Result) {
                                  if (random() % 8 == 0) engine = nullptr;
                              });
            if (engine && random() % 16 == 0)
                engine->buildQuickTypeEngine(VemoEngine::WorkerThread::background, [](auto) {});
            if (engine && engine->pending().places) loop->poll();
            loop->runFor(std::chrono::milliseconds(random() % 3));
        }
        engine = nullptr;
        loop->poll();
    });
}

// An executor that keeps what is posted, as one whose loop has ended does.
class Keeper : public Executor {
public:
    void post(std::function<void()> task) override {
        const std::lock_guard lock(mutex_);
        tasks_.push_back(std::move(task));
        posted_.notify_all();
    }
    void awaitTask() {
        std::unique_lock lock(mutex_);
        posted_.wait_for(lock, 60s, [&] { return !tasks_.empty(); });
    }

private:
    std::mutex mutex_;
    std::condition_variable posted_;
    std::vector<std::function<void()>> tasks_;
};

TEST(Closing, letsGoOfACalculatorThatNobodyTook) {
    auto executor = std::make_shared<Keeper>();
    const std::weak_ptr<Keeper> kept = executor;
    auto engine = std::make_unique<VemoEngine>(fixedEnvironment(), executor);
    engine->buildVemoWorker(VemoEngine::Config(), VemoEngine::WorkerThread::background);
    executor->awaitTask();  // that there is a calculator now
    engine = nullptr;
    executor = nullptr;
    EXPECT_TRUE(kept.expired());
}

// Without an executor everything happens within a call of the engine.
TEST(Closing, isSafeWithinACallOfTheEngine) {
    const std::map<std::string, std::string> script = {
        {"a.js", "vemo.addFunction({id: 'loud', phrases: 'loud'}, () => { log('x'); return 1; })"}};
    const Folder scripts(script);
    for (int fatal = 1; fatal <= 5; ++fatal) {
        for (const bool sync : {false, true}) {
            auto engine = std::make_unique<VemoEngine>(fixedEnvironment());
            const auto delegate = std::make_shared<Destroyer>(engine, fatal);
            engine->setDelegate(delegate);
            VemoEngine::Config config;
            config.extensions = scripts.path();
            engine->buildVemoWorker(config);
            Context context;
            if (engine && sync) engine->calculateSync(u"loud()\nloud()", context);
            if (engine && !sync) engine->calculate(u"loud()\nloud()", context, [](VemoEngine::Result) {});
            if (engine) engine->takeRates(VemoEngine::RatesFile::currency, R"({"rates":{"EUR":0.5}})");
            engine = nullptr;
        }
    }
}

}  // namespace
}  // namespace vemo::test

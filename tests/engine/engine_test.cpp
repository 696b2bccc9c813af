// SPDX-License-Identifier: MIT
// The engine as an application with a main loop uses it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include "support/calculators.h"
#include "vemo/documents.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr auto deadline = 60s;  // a wait that takes this long has failed

class Listener : public VemoEngineDelegate {
public:
    explicit Listener(std::vector<std::string>& events) : events_(events) {}
    void engineInitialized() override { events_.emplace_back("initialized"); }
    void engineLog(std::string_view text) override { events_.push_back("log " + std::string(text)); }

private:
    std::vector<std::string>& events_;
};

class Engine : public testing::Test {
protected:
    void build(VemoEngine::WorkerThread thread = VemoEngine::WorkerThread::background) {
        VemoEngine::Config config;
        config.testMode = true;
        engine->buildVemoWorker(config, thread);
    }

    void ask(std::u16string_view text, const Context& context = Context()) {
        engine->calculate(text, context, [this](VemoEngine::Result result) {
            std::string all;
            for (const auto& line : result.lines) all += utf8(line.formattedResult().regular.value_or(u"")) + ";";
            events.push_back(all);
            latest = std::move(result);
            answeredOn = std::this_thread::get_id();
            loop->stop();
        });
    }

    // Runs the loop until an answer has come, and what came with it.
    void awaitAnswer() {
        loop->runFor(deadline);
        loop->poll();
    }

    std::shared_ptr<RunLoop> loop = std::make_shared<RunLoop>();
    std::vector<std::string> events;
    std::shared_ptr<Listener> listener = std::make_shared<Listener>(events);
    VemoEngine::Result latest;
    std::thread::id answeredOn;
    std::unique_ptr<VemoEngine> engine = std::make_unique<VemoEngine>(fixedEnvironment(), loop);
};

// Who wants no answer gives nothing to call.
TEST_F(Engine, takesNoCallbackForAnAnswer) {
    build();
    engine->calculate(u"1", Context(), nullptr);  // which is answered first
    VemoDocument document(*engine, u"2", 0, Context());
    document.calculate(nullptr);
    engine->buildCompletions(VemoEngine::WorkerThread::background, nullptr);
    EXPECT_NO_THROW({
        while (!document.latest()) loop->runFor(1ms);
        engine->buildQuickTypeEngine(VemoEngine::WorkerThread::main, nullptr);
    });
    EXPECT_EQ(document.latest()->result.lines.size(), 1u);
}

std::u16string longDocument(std::size_t lines) {
    std::u16string text;
    for (std::size_t i = 0; i < lines; ++i) text += utf16(std::to_string(i) + " * 3 + (7 - 2)\n");
    return text;
}

TEST_F(Engine, answersOnTheMainLoopWithACopyOfTheContext) {
    for (const auto thread : {VemoEngine::WorkerThread::background, VemoEngine::WorkerThread::main}) {
        events.clear();
        build(thread);
        Context context;
        context.setValue(Value(DecimalNumber::fromInt64(2)), u"a");
        ask(u"b = a * 3\nb + 1", context);
        EXPECT_TRUE(events.empty());  // never before the call returns
        awaitAnswer();
        EXPECT_THAT(events, ElementsAre("6;7;"));
        EXPECT_EQ(answeredOn, std::this_thread::get_id());
        EXPECT_EQ(*latest.context->getVariable(u"b"), Value(DecimalNumber::fromInt64(6)));
        EXPECT_EQ(context.getVariable(u"b"), nullptr);
    }
}

TEST_F(Engine, answersARequestMadeBeforeTheWorkerIsReady) {
    engine->setDelegate(listener);
    ask(u"1");
    ask(u"2 + 2");
    build();
    awaitAnswer();
    EXPECT_THAT(events, ElementsAre("log Initialization...\n", "initialized", "4;"));
}

TEST_F(Engine, answersOnlyTheLatestOfABurst) {
    build();
    constexpr int requests = 10000;
    for (int i = 1; i <= requests; ++i) {
        ask(utf16(std::to_string(i) + " + 0"));
        if (i % 1000 == 0) std::this_thread::yield();
    }
    awaitAnswer();
    loop->runFor(20ms);
    EXPECT_THAT(events, ElementsAre("10,000;"));
}

TEST_F(Engine, givesUpARequestThatIsReplaced) {
    build();
    ask(u"0");
    awaitAnswer();
    events.clear();
    const std::u16string text = longDocument(100000);
    ask(text);
    std::this_thread::yield();  // so that it may have begun; the outcome must not depend on it
    ask(u"1 + 1");
    awaitAnswer();
    EXPECT_THAT(events, ElementsAre("2;"));
    // The same text again is a request of its own.
    Context three;
    three.setValue(Value(DecimalNumber::fromInt64(3)), u"a");
    ask(u"a * 2", Context());
    ask(u"a * 2", three);
    awaitAnswer();
    EXPECT_THAT(events, ElementsAre("2;", "6;"));
}

TEST_F(Engine, movesAPendingRequestToARebuiltWorker) {
    build();
    ask(longDocument(2000));
    build();
    build(VemoEngine::WorkerThread::main);
    awaitAnswer();
    loop->runFor(20ms);
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(latest.lines.size(), 2000u);
}

TEST_F(Engine, canBeDestroyedAtAnyMoment) {
    for (const auto wait : {0ms, 1ms, 10ms}) {
        build();
        ask(longDocument(50000));
        loop->runFor(wait);
        engine = std::make_unique<VemoEngine>(fixedEnvironment(), loop);
    }
    loop->runFor(20ms);
    EXPECT_TRUE(events.empty());
    // From within an answer, too.
    build();
    engine->calculate(u"1", Context(), [&](VemoEngine::Result) {
        engine = nullptr;
        loop->stop();
    });
    awaitAnswer();
    EXPECT_EQ(engine, nullptr);
}

TEST_F(Engine, doesNotTellADelegateThatIsGone) {
    engine->setDelegate(listener);
    build();
    listener = nullptr;
    ask(u"1");
    awaitAnswer();
    EXPECT_THAT(events, ElementsAre("1;"));
}

TEST(EngineWithoutALoop, answersBeforeTheCallReturns) {
    VemoEngine engine(fixedEnvironment());
    int answers = 0;
    engine.calculate(u"1", Context(), [&](VemoEngine::Result) { ++answers; });
    EXPECT_EQ(answers, 0);
    engine.buildVemoWorker();
    EXPECT_EQ(answers, 1);
    engine.calculate(u"2", Context(), [&](VemoEngine::Result result) {
        engine.calculate(u"3", *result.context, [&](VemoEngine::Result) { ++answers; });
        ++answers;
    });
    EXPECT_EQ(answers, 3);
}

TEST(EngineWithoutALoop, hasNoResultBeforeAWorkerIsBuilt) {
    VemoEngine engine(fixedEnvironment());
    Context context;
    EXPECT_FALSE(engine.calculateSync(u"1", context));
}

}  // namespace
}  // namespace vemo::test

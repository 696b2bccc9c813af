// SPDX-License-Identifier: MIT
// Rates as documents see them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/calculators.h"
#include "support/temporary_folder.h"
#include "support/test_server.h"

namespace vemo::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

constexpr auto deadline = 60s;

std::vector<std::string> texts(const VemoEngine::Result& result) {
    std::vector<std::string> texts;
    for (const auto& line : result.lines) texts.push_back(utf8(line.formattedResult().regular.value_or(u"")));
    return texts;
}

class RatesOfAnEngine : public testing::Test {
protected:
    std::vector<std::string> calculate(std::u16string_view text) {
        Context context;
        return texts(*engine.calculateSync(text, context));
    }

    VemoEngine engine{fixedEnvironment()};
};

TEST_F(RatesOfAnEngine, areTakenAndReplacedAsAWhole) {
    engine.buildVemoWorker();
    EXPECT_THAT(calculate(u"$10 in EUR\n1 + 1"), ElementsAre("", "2"));
    EXPECT_EQ(engine.takeRates(VemoEngine::RatesFile::currency, R"({"rates":{"EUR":0.5,"USD":1}})"), "");
    EXPECT_THAT(calculate(u"$10 in EUR\n1 + 1"), ElementsAre("€5", "2"));
    EXPECT_EQ(engine.takeRates(VemoEngine::RatesFile::currency, "garbage"), "not JSON");
    EXPECT_THAT(calculate(u"$10 in EUR"), ElementsAre("€5"));
    EXPECT_EQ(engine.takeRates(VemoEngine::RatesFile::currency, R"({"rates":{"EUR":0.6}})"), "");
    EXPECT_THAT(calculate(u"$10 in EUR"), ElementsAre("€6"));
}

TEST_F(RatesOfAnEngine, bringCryptoCurrencies) {
    engine.buildVemoWorker();
    EXPECT_THAT(calculate(u"2 QQQ in USD\n3 MB in kB"), ElementsAre("$2", "3,000 kB"));  // QQQ is a word
    EXPECT_EQ(engine.takeRates(VemoEngine::RatesFile::crypto, R"({"rates":{"QQQ":0.25,"BTC":7,"MB":3,"USD":1}})"), "");
    // Lines are read anew; units keep their symbols.
    EXPECT_THAT(calculate(u"2 QQQ in USD\n3 MB in kB"), ElementsAre("$8", "3,000 kB"));
    EXPECT_EQ(engine.takeRates(VemoEngine::RatesFile::crypto, R"({"rates":{"QQQ":0.5}})"), "");
    EXPECT_THAT(calculate(u"2 QQQ in USD"), ElementsAre("$4"));
    // Bitcoin is in the list of currencies, whose file may lack it.
    EXPECT_THAT(calculate(u"1 BTC in QQQ"), ElementsAre(""));
    EXPECT_EQ(engine.takeRates(VemoEngine::RatesFile::currency, R"({"rates":{"EUR":0.5}})"), "");
    EXPECT_EQ(engine.takeRates(VemoEngine::RatesFile::crypto, R"({"rates":{"QQQ":0.5,"BTC":0.25}})"), "");
    EXPECT_THAT(calculate(u"1 BTC in QQQ\n1 BTC in EUR\n$1 in btc"), ElementsAre("2 QQQ", "€2", "0.25 BTC"));
}

// A host without a main executor hears of them before the call returns.
TEST_F(RatesOfAnEngine, areToldOf) {
    struct Delegate : VemoEngineDelegate {
        void engineContextUpdated(const Context& context) override { rates += context.find(u"currency_rates") ? 1 : 0; }
        void engineCryptoInitialized() override { ++crypto; }
        int rates = 0, crypto = 0;
    };
    const auto delegate = std::make_shared<Delegate>();
    engine.setDelegate(delegate);
    engine.buildVemoWorker();
    engine.takeRates(VemoEngine::RatesFile::currency, R"({"rates":{"EUR":0.5}})");
    engine.takeRates(VemoEngine::RatesFile::crypto, R"({"rates":{"QQQ":0.25}})");
    EXPECT_EQ(delegate->rates, 1);
    EXPECT_EQ(delegate->crypto, 1);
}

TEST_F(RatesOfAnEngine, takeNoWordAwayFromItsMeaning) {
    engine.buildVemoWorker();
    EXPECT_EQ(engine.takeRates(
                  VemoEngine::RatesFile::crypto,
                  R"({"rates":{"QQQ":0.25,"300":7,"sum":7,"to":7,"million":7,"date":7,"nautical_mile":7,"+":7}})"),
              "");
    EXPECT_THAT(
        calculate(u"300 + 5\nsum\n1 m to cm\n2 million\ntoday + 1 day - today\n1 nautical mile in m\n2 QQQ in USD"),
        ElementsAre("305", "305", "100 cm", "2,000,000", "1 day", "1,853.18 m", "$8"));
}

// Lines that know nothing of money keep the very results they had.
TEST(Rates, changeTheLinesThatDependOnThem) {
    const auto calculator = newCalculator();
    const auto rates = [](const char* euros) {
        CurrencyRatesContainer container;
        container.rates[u"EUR"] = DecimalNumber::parse(euros);
        return container;
    };
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += i % 100 == 7 ? "$" + std::to_string(i) + " in EUR\n" : std::to_string(i) + " * 2\n";
    Context context;
    const auto calculated = [&] {
        Context copy = context.copyContext();
        return calculator->calculate(utf16(text), copy).lines;
    };
    calculator->setCurrencyRates(rates("0.5"));
    const auto before = calculated();
    EXPECT_EQ(calculated(), before);
    calculator->setCurrencyRates(rates("0.25"));
    const auto after = calculated();
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i) EXPECT_EQ(after[i] == before[i], i % 100 != 7) << i;
    EXPECT_EQ(utf8(after[107]->formattedValue().regular.value_or(u"")), "\u20ac26.75");
}

TEST(EngineWithARatesServer, calculatesWithWhatArrives) {
    struct Application : VemoEngineDelegate {
        std::vector<std::string> events;
        void engineContextUpdated(const Context&) override { events.emplace_back("updated"); }
        void engineCryptoInitialized() override { events.emplace_back("crypto"); }
    };
    TemporaryFolder folder;
    TestServer server;
    server.on("/rates/currency.json", {ok(R"({"rates":{"EUR":0.5}})")});
    server.on("/rates/coins2.json", {ok(R"({"rates":{"QQQ":0.25}})")});
    for (const bool fresh : {true, false}) {
        const auto loop = std::make_shared<RunLoop>();
        Environment environment = fixedEnvironment();
        environment.sources.ratesHost = server.url();
        environment.caches = folder.path() / "cache";
        const auto application = std::make_shared<Application>();
        VemoEngine engine(environment, loop);
        engine.setDelegate(application);
        engine.buildVemoWorker(VemoEngine::Config());
        EXPECT_TRUE(engine.pending().rates);
        // Once from the server, and from the copies of an earlier run before that.
        const std::size_t expected = fresh ? 2 : 4;
        const auto end = std::chrono::steady_clock::now() + deadline;
        while (application->events.size() < expected && std::chrono::steady_clock::now() < end) loop->runFor(10ms);
        EXPECT_EQ(application->events.size(), expected);
        while (engine.pending().rates && std::chrono::steady_clock::now() < end) loop->runFor(1ms);
        EXPECT_FALSE(engine.pending().rates);
        EXPECT_EQ(std::count(application->events.begin(), application->events.end(), "crypto"), 1);
        Context context;
        EXPECT_THAT(texts(*engine.calculateSync(u"$10 in EUR\n1 QQQ in EUR", context)), ElementsAre("€5", "€2"));
    }
}

}  // namespace
}  // namespace vemo::test

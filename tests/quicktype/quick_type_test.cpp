// SPDX-License-Identifier: MIT
#include "vemo/quick_type.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>

#include "base/text.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

using Hints = std::vector<QuickTypeHint>;

// With ASCII letters in lower case.
std::u16string folded(std::u16string text) {
    for (char16_t& c : text)
        if (c >= u'A' && c <= u'Z') c = static_cast<char16_t>(c + 32);
    return text;
}

// What an answer is, word for word: a list under every beginning of every hint.
class PlainEngine {
public:
    void registerHint(const QuickTypeHint& hint) {
        const std::u16string key = lowercased(hint.string);
        for (std::size_t length = 0; length <= key.size(); ++length) {
            Hints& list = hints_[key.substr(0, length)];
            std::erase_if(list, [&](const auto& other) { return other.string == hint.string; });
            list.insert(std::lower_bound(list.begin(), list.end(), hint,
                                         [](const QuickTypeHint& a, const QuickTypeHint& b) {
                                             return a.weight != b.weight ? a.weight > b.weight
                                                                         : std::pair(folded(a.string), a.string) <
                                                                               std::pair(folded(b.string), b.string);
                                         }),
                        hint);
            if (list.size() > 5) list.resize(5);
        }
    }

    Hints hintsFor(const QuickTypeEngine::Context& context, const Hints& additional) const {
        const std::u16string key = lowercased(context.string);
        const auto found = hints_.find(key);
        Hints answer = context.ignoreRegisteredHints || found == hints_.end() ? Hints() : found->second;
        for (const QuickTypeHint& hint : additional) {
            if (lowercased(hint.string).substr(0, key.size()) != key) continue;
            std::erase_if(answer, [&](const auto& other) { return other.string == hint.string; });
            answer.insert(std::upper_bound(answer.begin(), answer.end(), hint,
                                           [](const auto& a, const auto& b) { return a.weight > b.weight; }),
                          hint);
            if (answer.size() > 5) answer.resize(5);
        }
        return answer;
    }

private:
    std::map<std::u16string, Hints> hints_;
};

std::string shown(const Hints& hints) {
    std::string text;
    for (const QuickTypeHint& hint : hints)
        text += (text.empty() ? "" : " ") + utf8(hint.string) + ":" + std::to_string(hint.weight);
    return text;
}

std::u16string arbitraryWord() {
    const std::size_t length = *rc::gen::inRange<std::size_t>(0, 5);
    return *rc::gen::container<std::u16string>(length, rc::gen::elementOf(std::u16string(u"aAbB°é\u0130")));
}

Hints arbitraryHints(std::size_t most) {
    Hints hints(*rc::gen::inRange<std::size_t>(0, most));
    for (QuickTypeHint& hint : hints) hint = {arbitraryWord(), *rc::gen::inRange(-2, 3)};
    return hints;
}

RC_GTEST_PROP(QuickType, answersAsDefined, ()) {
    QuickTypeEngine engine;
    PlainEngine plain;
    for (const QuickTypeHint& hint : arbitraryHints(80)) {
        engine.registerHint(hint);
        plain.registerHint(hint);
    }
    for (int i = 0; i < 10; ++i) {
        const QuickTypeEngine::Context context{arbitraryWord(), *rc::gen::arbitrary<bool>()};
        const Hints additional = arbitraryHints(8);
        RC_ASSERT(shown(engine.hintsFor(context, additional)) == shown(plain.hintsFor(context, additional)));
    }
}

TEST(QuickType, answersWithTheDocumentsTokens) {
    QuickTypeEngine engine;
    engine.registerHints({{u"million", 0}, {u"mile", 0}, {u"minute", 5}, {u"m", 1}});
    EXPECT_EQ(shown(engine.hintsFor(u"Mi", {u"mix", u"rate", u"mile"}, 2)), "minute:5 mix:2 mile:2 million:0");
    EXPECT_EQ(shown(engine.hintsFor({u"mi", true}, {{u"mix", 2}})), "mix:2");
    EXPECT_EQ(shown(engine.hintsFor(u"q", {}, 0)), "");
}

// Under a calculator every beginning of every candidate answers as the definition does with the same candidates.
TEST(QuickType, aCalculatorsVocabulary) {
    const auto calculator = newCalculator();
    const auto engine = calculator->buildQuickTypeEngine();
    PlainEngine plain;
    std::map<std::u16string, int> weights;  // the best that a text is offered with
    std::map<std::u16string, bool> keys;
    for (const QuickTypeHint& hint : calculator->quickTypeHints()) {
        const bool digit = !hint.string.empty() && hint.string[0] >= u'0' && hint.string[0] <= u'9';
        if (digit || hint.string.find(u"variants") != hint.string.npos || graphemeCount(hint.string, 2) < 2) continue;
        const auto [weight, added] = weights.try_emplace(hint.string, hint.weight);
        if (!added) weight->second = std::max(weight->second, hint.weight);
        const std::u16string key = lowercased(hint.string);
        for (std::size_t length = 0; length <= key.size(); ++length) keys[key.substr(0, length)] = true;
    }
    for (const auto& [string, weight] : weights) plain.registerHint({string, weight});
    EXPECT_GT(keys.size(), 1000u);
    for (const auto& [key, _] : keys)
        ASSERT_EQ(shown(engine->hintsFor({key, false})), shown(plain.hintsFor({key, false}, {}))) << utf8(key);
    EXPECT_EQ(shown(engine->hintsFor(u"squar", {}, 0)), "square:10 squared:0");
    EXPECT_EQ(shown(engine->hintsFor(u"Millio", {}, 0)), "million:0 millions:0 milliohm:-1 milliohms:-1");
    EXPECT_EQ(shown(engine->hintsFor(u"into", {}, 0)), "into:20");
    EXPECT_EQ(shown(engine->hintsFor(u"cel", {}, 0)), "celsius:0");
    EXPECT_EQ(shown(engine->hintsFor(u"eur", {}, 0)), "EUR:20 euro:0 euros:0");
}

// What is offered first; the list stands in the documentation, too.
TEST(QuickType, offersWhatIsTypedMostFirst) {
    const auto engine = newCalculator()->buildQuickTypeEngine();
    std::string offered;
    const auto list = [&](std::u16string_view key) {
        offered += "\n|";
        for (const QuickTypeHint& hint : engine->hintsFor(key, {}, 0)) offered += ' ' + utf8(hint.string);
    };
    list(u"");
    for (char16_t letter = u'a'; letter <= u'z'; ++letter) list(std::u16string_view(&letter, 1));
    EXPECT_EQ(offered, R"(
| as EUR in into JPY
| as AUD abs acos AED
| BYN BAM BBD BDT BGN
| CAD CHF CNY cbrt CDF
| daB dabit dag dal dam
| EUR EAC EB Ebit Eg
| fact FCT fg FJD FKP
| GBP GB Gbit gcd GEL
| hB hbit hg HKD hl
| in into IDR ILS INR
| JPY JMD JOD jamaican japanese
| kB kbit KES kg KGS
| LAK last LBP lcm LD
| MAD max maximum MB Mbit
| NZD NAD ng NGN NIO
| of OMR of what is off off of
| PAB PB Pbit PEN Pg
| QAR qatari qt qts quart
| RUB RON root round RSD
| SAR SBD SCR SDG SEK
| to tan tanh TB Tbit
| USD UAH UGX unixtime UYU
| VEF VND VTC VUV vanuatu
| WST week weeks west wk
| XAF XCD XMR XOF XPF
| YB Ybit YER yesterday Yg
| ZAR ZB Zbit Zg zg)");
    EXPECT_EQ(engine->hintsFor(u"km", {}, 0)[0].string, u"km");
}

TEST(QuickType, isSwitchedOffByTheConfiguration) {
    VemoEngine::Config config;
    config.testMode = true;
    config.enableQuickTypeHints = false;
    Calculator calculator(config, fixedEnvironment());
    calculator.initialize();
    EXPECT_TRUE(calculator.quickTypeHints().empty());
    EXPECT_EQ(shown(calculator.buildQuickTypeEngine()->hintsFor(u"", {u"rate"}, 1)), "rate:1");
}

TEST(QuickType, comesFromTheEngine) {
    std::string answer;
    const auto ask = [&](std::shared_ptr<QuickTypeEngine> engine) { answer = shown(engine->hintsFor(u"sqr", {}, 0)); };
    VemoEngine synchronous(fixedEnvironment());
    synchronous.buildQuickTypeEngine(VemoEngine::WorkerThread::main, ask);
    EXPECT_EQ(answer, "");  // no calculator yet
    synchronous.buildVemoWorker();
    synchronous.buildQuickTypeEngine(VemoEngine::WorkerThread::background, ask);
    EXPECT_EQ(answer, "sqrt:10");

    const auto loop = std::make_shared<RunLoop>();
    VemoEngine engine(fixedEnvironment(), loop);
    engine.buildVemoWorker();
    engine.buildQuickTypeEngine(VemoEngine::WorkerThread::background, [&](std::shared_ptr<QuickTypeEngine> built) {
        ask(std::move(built));
        answer += " on the loop";
        loop->stop();
    });
    loop->runFor(std::chrono::seconds(60));
    EXPECT_EQ(answer, "sqrt:10 on the loop");
}

}  // namespace
}  // namespace vemo::test

// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include "documents.h"
#include "vemo/engine.h"

namespace {

using namespace vemo;
using namespace vemo::bench;

// A document of 10,000 lines, some of which convert money, calculated again: after new rates came, or with nothing new.
void documentWithMoney(benchmark::State& state, bool newRates) {
    constexpr std::size_t lines = 10'000;
    const auto money = static_cast<std::size_t>(state.range(0));
    Environment environment;
    environment.locale = "en_US";
    environment.language = "en";
    environment.timeZone = "UTC";
    VemoEngine engine(environment);
    VemoEngine::Config config;
    config.testMode = true;
    engine.buildVemoWorker(config);
    const std::u16string text = document(lines, [&](std::size_t i) {
        const bool converts = money > 0 && i % (lines / money) == 0;
        return converts ? std::u16string(u"$").append(digits(i)) + u" in EUR" : arithmeticLine(i);
    });
    // Each set of rates is new, so that no earlier result is of use.
    std::size_t count = 0;
    const auto takeRates = [&] {
        const std::string euro = "0." + std::to_string(100'000 + ++count % 800'000);
        if (!engine.takeRates(VemoEngine::RatesFile::currency, "{\"rates\":{\"EUR\":" + euro + "}}").empty())
            std::abort();
    };
    const auto calculate = [&] {
        Context context;
        benchmark::DoNotOptimize(engine.calculateSync(text, context));
    };
    takeRates();
    calculate();
    for (auto _ : state) {
        state.PauseTiming();
        if (newRates) takeRates();
        state.ResumeTiming();
        calculate();
    }
}

void unchangedRates(benchmark::State& state) {
    documentWithMoney(state, false);
}
void changedRates(benchmark::State& state) {
    documentWithMoney(state, true);
}
BENCHMARK(unchangedRates)->Arg(0)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(changedRates)->Arg(0)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace

// SPDX-License-Identifier: MIT
// Vemo and libqalculate on the same lines in the same run. Both give the result as text.

#include <benchmark/benchmark.h>
#include <libqalculate/qalculate.h>

#include <memory>

#include "../documents.h"
#include "vemo/engine.h"

namespace {

using namespace vemo::bench;

std::unique_ptr<vemo::VemoEngine> newEngine() {
    vemo::Environment environment;
    environment.locale = "en_US";
    environment.language = "en";
    environment.timeZone = "UTC";
    auto engine = std::make_unique<vemo::VemoEngine>(environment);
    vemo::VemoEngine::Config config;
    config.testMode = true;
    engine->buildVemoWorker(config);
    return engine;
}

constexpr std::size_t lines = 5000;

// All lines as one document that the engine has not seen.
template <std::u16string (*Line)(std::size_t)>
void vemoLines(benchmark::State& state) {
    const std::u16string text = document(lines, Line);
    for (auto _ : state) {
        state.PauseTiming();
        auto engine = newEngine();
        state.ResumeTiming();
        vemo::Context context;
        const auto result = engine->calculateSync(text, context);
        for (const auto& line : result->lines) benchmark::DoNotOptimize(vemo::utf8(*line.formattedResult().regular));
        state.PauseTiming();
        engine.reset();
        state.ResumeTiming();
    }
    state.counters["perLine"] = benchmark::Counter(static_cast<double>(lines) * static_cast<double>(state.iterations()),
                                                   benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// One expression after the other, each calculated and printed.
template <std::u16string (*Line)(std::size_t)>
void qalculateLines(benchmark::State& state) {
    const EvaluationOptions evaluation;
    const PrintOptions print;
    for (auto _ : state) {
        for (std::size_t i = 0; i < lines; ++i) {
            MathStructure result = CALCULATOR->calculate(vemo::utf8(Line(i)), evaluation);
            result.format(print);
            benchmark::DoNotOptimize(result.print(print));
        }
    }
    state.counters["perLine"] = benchmark::Counter(static_cast<double>(lines) * static_cast<double>(state.iterations()),
                                                   benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

BENCHMARK(vemoLines<arithmeticLine>)->Name("arithmetic/vemo")->Unit(benchmark::kMillisecond);
BENCHMARK(qalculateLines<arithmeticLine>)->Name("arithmetic/libqalculate")->Unit(benchmark::kMillisecond);
BENCHMARK(vemoLines<unitLine>)->Name("units/vemo")->Unit(benchmark::kMillisecond);
BENCHMARK(qalculateLines<unitLine>)->Name("units/libqalculate")->Unit(benchmark::kMillisecond);

void vemoStartUp(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(newEngine());
}

void qalculateStartUp(benchmark::State& state) {
    for (auto _ : state) {
        CALCULATOR->reset();
        CALCULATOR->loadGlobalDefinitions();
    }
}

BENCHMARK(vemoStartUp)->Name("startUp/vemo")->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(qalculateStartUp)->Name("startUp/libqalculate")->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    new Calculator();
    CALCULATOR->loadGlobalDefinitions();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}

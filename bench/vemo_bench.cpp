// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "documents.h"
#include "scanning/dates/date_detector.h"
#include "scanning/words/localizer.h"
#include "vemo/engine.h"

namespace {

using namespace vemo;
using namespace vemo::bench;

VemoEngine::Config quiet() {
    VemoEngine::Config config;
    config.testMode = true;
    return config;
}

Environment english() {
    Environment environment;
    environment.locale = "en_US";
    environment.language = "en";
    environment.timeZone = "UTC";
    return environment;
}

std::unique_ptr<VemoEngine> newEngine(bool hints = true) {
    auto engine = std::make_unique<VemoEngine>(english());
    VemoEngine::Config config = quiet();
    config.enableQuickTypeHints = hints;
    engine->buildVemoWorker(config);
    return engine;
}

void calculate(VemoEngine& engine, const std::u16string& text) {
    Context context;
    benchmark::DoNotOptimize(engine.calculateSync(text, context));
}

void startUp(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(newEngine());
}
BENCHMARK(startUp)->Unit(benchmark::kMicrosecond);

void startUpWithoutHints(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(newEngine(false));
}
BENCHMARK(startUpWithoutHints)->Unit(benchmark::kMicrosecond);

std::shared_ptr<QuickTypeEngine> newQuickType(VemoEngine& engine) {
    std::shared_ptr<QuickTypeEngine> built;
    engine.buildQuickTypeEngine(VemoEngine::WorkerThread::main, [&](auto quickType) { built = std::move(quickType); });
    return built;
}

void quickTypeBuild(benchmark::State& state) {
    const auto engine = newEngine();
    for (auto _ : state) benchmark::DoNotOptimize(newQuickType(*engine));
}
BENCHMARK(quickTypeBuild)->Unit(benchmark::kMicrosecond);

// One letter more, with the words of a line.
void quickTypeRequest(benchmark::State& state) {
    const auto engine = newEngine();
    const auto quickType = newQuickType(*engine);
    const std::vector<std::u16string> tokens{u"in", u"inch", u"hourly rate", u"cm"};
    constexpr std::u16string_view texts[] = {u"", u"m", u"mi", u"sq", u"Square", u"us", u"h", u"q"};
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(quickType->hintsFor(texts[i++ % std::size(texts)], tokens, 5));
}
BENCHMARK(quickTypeRequest)->Unit(benchmark::kMicrosecond);

std::u16string durationLine(std::size_t i) {
    return digits(i) + u" days in hours";
}
std::u16string dateLine(std::size_t i) {
    return std::u16string(u"March 4, ").append(digits(1000 + i)).append(u" at 10:30");
}

// One line at a time, never the same twice.
template <std::u16string (*Line)(std::size_t)>
void coldLine(benchmark::State& state) {
    const auto engine = newEngine();
    std::size_t i = 0;
    for (auto _ : state) calculate(*engine, Line(i++));
}
BENCHMARK(coldLine<arithmeticLine>)->Name("coldLine/arithmetic")->Iterations(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK(coldLine<unitLine>)->Name("coldLine/units")->Iterations(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK(coldLine<durationLine>)->Name("coldLine/durations")->Iterations(5000)->Unit(benchmark::kMicrosecond);
BENCHMARK(coldLine<dateLine>)->Name("coldLine/dates")->Iterations(5000)->Unit(benchmark::kMicrosecond);

// The search for dates alone, in lines such as those above: to be compared with the whole.
template <std::u16string (*Line)(std::size_t)>
void detectDates(benchmark::State& state) {
    const DateDetector detector(Localizer("en"), "en", "en_US");
    const auto utc = TimeZoneRules::find(u"UTC");
    std::vector<std::u16string> lines;
    for (std::size_t i = 0; i < 5000; ++i) lines.push_back(Line(i));
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(detector.detect(lines[i++ % lines.size()], Date(), *utc));
}
BENCHMARK(detectDates<arithmeticLine>)->Name("detectDates/arithmetic");
BENCHMARK(detectDates<unitLine>)->Name("detectDates/units");
BENCHMARK(detectDates<durationLine>)->Name("detectDates/durations");
BENCHMARK(detectDates<dateLine>)->Name("detectDates/dates");

void dateVocabulary(benchmark::State& state) {
    const Localizer localizer("en");
    for (auto _ : state) benchmark::DoNotOptimize(DateDetector(localizer, "en", "en_US"));
}
BENCHMARK(dateVocabulary)->Unit(benchmark::kMicrosecond);

// The cost of a call into a script, beside the same line with a built-in function.
std::u16string builtInFunctionLine(std::size_t i) {
    return std::u16string(u"sqrt 1234.").append(digits(i));
}
std::u16string scriptFunctionLine(std::size_t i) {
    return std::u16string(u"scriptfn 1234.").append(digits(i));
}

template <std::u16string (*Line)(std::size_t)>
void coldCall(benchmark::State& state) {
    const auto folder = std::filesystem::temp_directory_path() / "vemo_bench_extensions";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "scriptfn.js")
        << "vemo.addFunction({id: 'scriptfn', phrases: 'scriptfn'}, a => Math.sqrt(a[0].double))";
    VemoEngine engine(english());
    VemoEngine::Config config = quiet();
    config.extensions = folder;
    engine.buildVemoWorker(config);
    std::filesystem::remove_all(folder);
    std::size_t i = 0;
    for (auto _ : state) calculate(engine, Line(i++));
}
BENCHMARK(coldCall<builtInFunctionLine>)
    ->Name("coldLine/builtInFunction")
    ->Iterations(20000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(coldCall<scriptFunctionLine>)
    ->Name("coldLine/scriptFunction")
    ->Iterations(20000)
    ->Unit(benchmark::kMicrosecond);

std::u16string assigningLine(std::size_t i) {
    return std::u16string(u"v").append(digits(i)) + u" = " + digits(i * 7 % 1000);
}
std::u16string usingLine(std::size_t i) {
    return std::u16string(u"prev + ").append(digits(i));
}
std::u16string summingLine(std::size_t i) {
    return i % 2 == 0 ? digits(i) : u"sum";
}

void reportPerLine(benchmark::State& state, std::size_t lines) {
    state.counters["perLine"] = benchmark::Counter(static_cast<double>(lines) * static_cast<double>(state.iterations()),
                                                   benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// A whole document by an engine that has not seen it.
template <std::u16string (*Line)(std::size_t)>
void coldDocument(benchmark::State& state) {
    const auto lines = static_cast<std::size_t>(state.range(0));
    const std::u16string text = document(lines, Line);
    for (auto _ : state) {
        state.PauseTiming();
        auto engine = newEngine();
        state.ResumeTiming();
        calculate(*engine, text);
        state.PauseTiming();
        engine.reset();
        state.ResumeTiming();
    }
    reportPerLine(state, lines);
}

// The same with one line changed in the middle since the last time: the others come from the cache, but for
// those that depend on it.
template <std::u16string (*Line)(std::size_t)>
void changedDocument(benchmark::State& state) {
    const auto lines = static_cast<std::size_t>(state.range(0));
    const auto engine = newEngine();
    std::size_t edit = 0;
    const auto edited = [&] {
        ++edit;
        return document(lines,
                        [&](std::size_t i) { return i == lines / 2 ? Line(i) + u" + " + digits(edit) : Line(i); });
    };
    calculate(*engine, edited());
    for (auto _ : state) {
        state.PauseTiming();
        const std::u16string text = edited();
        state.ResumeTiming();
        calculate(*engine, text);
    }
    reportPerLine(state, lines);
}

#define DOCUMENTS(line)                  \
    BENCHMARK(coldDocument<line>)        \
        ->Name("coldDocument/" #line)    \
        ->RangeMultiplier(10)            \
        ->Range(1000, 100000)            \
        ->Unit(benchmark::kMillisecond); \
    BENCHMARK(changedDocument<line>)     \
        ->Name("changedDocument/" #line) \
        ->RangeMultiplier(10)            \
        ->Range(1000, 100000)            \
        ->Unit(benchmark::kMillisecond)
DOCUMENTS(arithmeticLine);
DOCUMENTS(assigningLine);
DOCUMENTS(usingLine);
DOCUMENTS(summingLine);

// From a request to its answer when it takes the place of one in a document of so many lines, against the answer when
// nothing is under way ("idle").
void replacedRequest(benchmark::State& state) {
    const auto lines = static_cast<std::size_t>(state.range(0));
    const auto loop = std::make_shared<RunLoop>();
    VemoEngine engine(english(), loop);
    engine.buildVemoWorker(quiet(), VemoEngine::WorkerThread::background);
    std::size_t edit = 0;
    const auto answer = [&](const std::u16string& text) {
        engine.calculate(text, Context(), [&](VemoEngine::Result) { loop->stop(); });
        loop->run();
    };
    answer(u"1");
    for (auto _ : state) {
        state.PauseTiming();
        const std::u16string before = document(lines, [&](std::size_t i) { return arithmeticLine(i + lines * edit); });
        const std::u16string text = arithmeticLine(1000000 + ++edit);
        if (lines > 0) {
            engine.calculate(before, Context(), [](VemoEngine::Result) {});
            std::this_thread::sleep_for(std::chrono::milliseconds(20));  // it is under way
        }
        state.ResumeTiming();
        answer(text);
    }
}
BENCHMARK(replacedRequest)->Arg(0)->Arg(100000)->Iterations(20)->UseRealTime()->Unit(benchmark::kMicrosecond);

// Assignments, then as many uses.
void variables(benchmark::State& state) {
    const auto count = static_cast<std::size_t>(state.range(0));
    const std::u16string text =
        document(count,
                 [](std::size_t i) { return std::u16string(u"price ").append(digits(i)) + u" = " + digits(i); }) +
        document(count, [](std::size_t i) { return std::u16string(u"price ").append(digits(i)) + u" * 2"; });
    for (auto _ : state) {
        state.PauseTiming();
        auto engine = newEngine();
        state.ResumeTiming();
        calculate(*engine, text);
    }
    reportPerLine(state, 2 * count);
}
BENCHMARK(variables)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// What a calculated document keeps in memory.
void bytesPerLine(benchmark::State& state) {
    constexpr std::size_t lines = 20000;
    const std::u16string text = document(lines, arithmeticLine);
    for (auto _ : state) {
        const auto engine = newEngine();
        Context context;
        const std::size_t before = mallinfo2().uordblks;
        const auto result = engine->calculateSync(text, context);
        state.counters["bytesPerLine"] =
            static_cast<double>(mallinfo2().uordblks - before) / static_cast<double>(lines);
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(bytesPerLine)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

// SPDX-License-Identifier: MIT
// How an application uses the engine: a document is calculated off the main thread and shown in colours, a word is
// completed, and the result is kept in a file for the next start.
//
//   embed RESULT_FILE [WORD] < DOCUMENT

#include <unistd.h>
#include <vemo/engine.h>
#include <vemo/quick_type.h>
#include <vemo/result_serializer.h>

#include <functional>
#include <iostream>
#include <iterator>

namespace {

const char* colorOf(vemo::RunType type) {
    switch (type) {
        case vemo::RunType::number:
            return "\033[36m";
        case vemo::RunType::unit:
            return "\033[32m";
        case vemo::RunType::variable:
            return "\033[35m";
        case vemo::RunType::function:
            return "\033[34m";
        case vemo::RunType::operatorWord:
        case vemo::RunType::operatorSymbol:
            return "\033[33m";
        case vemo::RunType::comment:
        case vemo::RunType::label:
            return "\033[2m";
        default:
            return "";
    }
}

void show(const vemo::VemoEngine::Result& result) {
    const bool color = isatty(STDOUT_FILENO) != 0;
    for (const auto& line : result.lines) {
        line.attributedText().enumerate([&](std::u16string_view text, vemo::RunType type, std::size_t) {
            if (color)
                std::cout << colorOf(type) << vemo::utf8(text) << "\033[0m";
            else
                std::cout << vemo::utf8(text);
        });
        if (const auto text = line.formattedResult().regular) std::cout << "  =>  " << vemo::utf8(*text);
        std::cout << '\n';
    }
    if (const auto* total = result.context->grandTotalFormatted(); total && total->regular)
        std::cout << "total  =>  " << vemo::utf8(*total->regular) << '\n';
}

// Completions of a word: the engine's vocabulary and the document's own words.
void complete(const vemo::QuickTypeEngine& quickType, const std::u16string& word,
              const vemo::VemoEngine::Result& result) {
    std::vector<std::u16string> tokens;
    for (const auto& line : result.lines) {
        const vemo::QuickTypeData data = line.quickTypeData();
        tokens.insert(tokens.end(), data.tokens.begin(), data.tokens.end());
        tokens.insert(tokens.end(), data.expressions.begin(), data.expressions.end());
    }
    std::cout << "completions:";
    for (const vemo::QuickTypeHint& hint : quickType.hintsFor(word, tokens, 15))
        std::cout << ' ' << vemo::utf8(hint.string);
    std::cout << '\n';
}

class Application : public vemo::VemoEngineDelegate {
public:
    std::function<void()> recalculate;  // the document, with new completions

    void engineInitialized() override { std::cout << "ready\n"; }
    void engineLog(std::string_view text) override { std::cerr << text; }
    // The minute turned, rates came, a place was found: lines that used them are out of date.
    void engineContextUpdated(const vemo::Context&) override { recalculate(); }
    // The first crypto-currencies: words of the document may now be units.
    void engineCryptoInitialized() override { recalculate(); }
    void engineOnlineProblem(const vemo::OnlineProblem& problem) override {
        std::cerr << problem.source << ": " << problem.message << '\n';
    }
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: embed RESULT_FILE [WORD] < DOCUMENT\n";
        return 2;
    }
    const std::string file = argv[1];
    const std::u16string word = vemo::utf16(argc > 2 ? argv[2] : "squ");
    std::u16string document = vemo::utf16(std::string(std::istreambuf_iterator<char>(std::cin), {}));
    if (document.empty()) document = vemo::VemoEngine::welcomeSample();

    // What was stored last time can be shown at once.
    const vemo::VemoEngineResultSerializer serializer;
    if (const auto stored = serializer.deserialize(file)) {
        std::cout << "from the last time:\n";
        show(*stored);
    }

    // A real application has a loop of its own, and gives the engine an Executor that posts to it.
    const auto loop = std::make_shared<vemo::RunLoop>();
    const auto application = std::make_shared<Application>();
    vemo::VemoEngine engine({}, loop);
    engine.setDelegate(application);
    engine.buildVemoWorker(vemo::VemoEngine::Config(), vemo::VemoEngine::WorkerThread::background);

    const vemo::Context context;
    // The request waits until the engine is ready; then everything comes back to this thread.
    application->recalculate = [&] {
        engine.calculate(document, context, [&](vemo::VemoEngine::Result result) {
            show(result);
            serializer.serialize(result, file);
            const auto offer = [&, result = std::move(result)](std::shared_ptr<vemo::QuickTypeEngine> quickType) {
                complete(*quickType, word, result);
                loop->stop();
            };
            engine.buildQuickTypeEngine(vemo::VemoEngine::WorkerThread::background, offer);
        });
    };
    application->recalculate();
    loop->run();
    return 0;
}

// SPDX-License-Identifier: MIT
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <utility>

#include "document.h"
#include "extensions.h"
#include "lsp/run.h"
#include "online.h"
#include "options.h"
#include "output.h"
#include "presentation.h"
#include "prompt/prompt.h"
#include "prompt/raw_terminal.h"
#include "session/printable.h"
#include "session/sources.h"
#include "watch.h"

namespace vemo::cli {

namespace {

constexpr int unusable = 2;

session::Layout layoutFor(const Options& options) {
    session::Layout layout;
    layout.writing = {options.shortTexts, options.plain, options.precision};
    layout.total = options.expressions.empty();
    const bool terminal = isatty(STDOUT_FILENO) != 0;
    layout.remarks = terminal && !options.quiet;
    if (terminal) layout.width = RawTerminal::size().columns;
    const char *noColor = std::getenv("NO_COLOR"), *kind = std::getenv("TERM");
    const bool colors = terminal && !(noColor && *noColor) && !(kind && std::string_view(kind) == "dumb");
    layout.color = options.color == Options::Color::always || (options.color == Options::Color::automatic && colors);
    return layout;
}

bool wantsPrompt(const Options& options) {
    if (options.interactive) return true;
    return options.file.empty() && options.expressions.empty() && options.format == Options::Format::table &&
           !options.results && isatty(STDIN_FILENO) && isatty(STDOUT_FILENO);
}

// False when the file is no use; the person has been told then.
bool takeRates(VemoEngine& engine, VemoEngine::RatesFile kind, const std::string& source) {
    const std::string problem = session::takeRates(engine, kind, source);
    if (!problem.empty()) complain(problem);
    return problem.empty();
}

Environment environmentFor(const Options& options, const std::shared_ptr<Online>& online) {
    Environment environment;
    environment.locale = options.locale;
    environment.language = options.language;
    environment.timeZone = options.timeZone;
    if (options.now) environment.clock = [now = *options.now] { return now; };
    if (online) environment.sources = online->sources();
    if (options.debug) {
        environment.log = [](std::string_view message) { std::cerr << session::printable(message) << '\n'; };
    }
    // The trace stands before the result, unless a program reads that.
    const bool table = options.format == Options::Format::table && !options.results;
    environment.trace = [table](std::string_view line) {
        (table ? std::cout : std::cerr) << session::printableLines(line) << '\n';
    };
    return environment;
}

// Hears what scripts say, and passes on the rest.
class Listener : public VemoEngineDelegate {
public:
    explicit Listener(std::shared_ptr<VemoEngineDelegate> next) : next_(std::move(next)) {}

    // What lines have said since the last call, in the order of the lines.
    std::vector<std::string> takeLogs() { return std::exchange(logs_, {}); }

    void engineLog(std::string_view text) override { logs_.emplace_back(text); }
    void engineInitialized() override {
        if (next_) next_->engineInitialized();
    }
    void engineContextUpdated(const Context& context) override {
        if (next_) next_->engineContextUpdated(context);
    }
    void engineOnlineProblem(const OnlineProblem& problem) override {
        if (next_) next_->engineOnlineProblem(problem);
    }

private:
    std::shared_ptr<VemoEngineDelegate> next_;
    std::vector<std::string> logs_;
};

int run(const Options& options) {
    if (!options.extensions.empty() && !isFolder(options.extensions)) return unusable;
    const bool prompt = !options.checkExtensions && wantsPrompt(options);
    if (prompt && !(isatty(STDIN_FILENO) && isatty(STDOUT_FILENO))) {
        complain("--interactive needs a terminal");
        return unusable;
    }
    const auto text = prompt || options.checkExtensions ? std::optional<std::string>("") : readDocument(options);
    if (!text) return unusable;
    const auto online = Online::forOptions(options);
    // At the prompt time goes on between the lines. Without a prompt, and with nothing to fetch, there is nothing to
    // wait for.
    const auto loop = online ? online->loop() : prompt ? std::make_shared<RunLoop>() : nullptr;
    VemoEngine engine(environmentFor(options, online), loop);
    const auto listener = std::make_shared<Listener>(online);
    // What lines say while they are typed is of no interest, and what they say in the end the prompt hears by itself.
    if (prompt)
        engine.setDelegate(online);
    else
        engine.setDelegate(listener);
    VemoEngine::Config config;
    config.testMode = !loop;
    config.debug = options.debug;
    config.extensions = options.extensions;
    engine.buildVemoWorker(config);
    if (options.checkExtensions) {
        std::ostringstream said;
        const bool usable = report(said, engine.extensions());
        return writeOutput(said.str()) && usable ? 0 : 1;
    }
    printLogs(std::cerr, engine.extensions());
    listener->takeLogs();
    if (!takeRates(engine, VemoEngine::RatesFile::currency, options.rates) ||
        !takeRates(engine, VemoEngine::RatesFile::crypto, options.coins))
        return unusable;
    Context settings;
    settings.setPrecision(options.precision);
    if (prompt) {
        const auto takeProblems = [&] { return online ? online->takeProblems() : std::vector<std::string>(); };
        return runPrompt({engine, *loop, settings, layoutFor(options), takeProblems}, options);
    }
    const auto answer = [&](const std::string& document) {
        Context context = settings.copyContext();
        const auto result = online ? online->calculate(engine, utf16(document), context)
                                   : *engine.calculateSync(utf16(document), context);
        std::string log;
        for (const std::string& said : listener->takeLogs()) log += said;
        auto problems = online ? online->takeProblems() : std::vector<std::string>();
        const bool noRates = std::any_of(result.lines.begin(), result.lines.end(), [](const auto& line) {
            const auto reason = line.reason();
            return reason && reason->code == ReasonCode::noRates;
        });
        if (noRates && options.rates.empty() && options.coins.empty())
            problems.push_back("money needs exchange rates: give --rates a file or a URL");
        std::vector<std::string> readings;
        for (std::size_t i = 0; options.explain && i < result.lines.size(); ++i)
            readings.push_back(utf8(engine.readingOf(i, utf16(document), settings).value_or(u"")));
        const int status = present(options, layoutFor(options), result, log, problems, readings);
        if (online && online->isLate() && !options.watch) fetchAfterwards(options);
        return status;
    };
    return options.watch ? watch(options, *text, answer) : answer(*text);
}

int serve(const Options& options) {
    if (!options.file.empty() || !options.expressions.empty()) {
        complain("lsp takes its documents from an editor, not from the command line");
        return unusable;
    }
    lsp::Settings settings;
    settings.locale = options.locale;
    settings.language = options.language;
    settings.timeZone = options.timeZone;
    settings.precision = options.precision;
    settings.rates = options.rates;
    settings.coins = options.coins;
    settings.places = options.places;
    settings.offline = options.offline;
    settings.extensions = options.extensions;
    settings.now = options.now;
    return lsp::run(settings);
}

}  // namespace

}  // namespace vemo::cli

int main(int argc, char** argv) {
    // The widths of characters are those of the terminal's character set.
    if (!std::setlocale(LC_CTYPE, "") || MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");
    // The word takes the place of the command's name.
    const bool server = argc > 1 && std::string_view(argv[1]) == "lsp";
    const auto options = vemo::cli::parseOptions(argc - (server ? 1 : 0), argv + (server ? 1 : 0));
    if (const int* status = std::get_if<int>(&options)) return *status;
    return server ? vemo::cli::serve(std::get<vemo::cli::Options>(options))
                  : vemo::cli::run(std::get<vemo::cli::Options>(options));
}

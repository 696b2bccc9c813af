// SPDX-License-Identifier: MIT
#include <sys/ioctl.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <iostream>
#include <utility>

#include "extensions.h"
#include "files.h"
#include "online.h"
#include "options.h"
#include "prompt.h"
#include "terminal.h"

namespace vemo::cli {

namespace {

constexpr int unusable = 2;

// The offset of the first byte that is not UTF-8, or nothing.
std::optional<std::size_t> firstInvalidByte(const std::string& text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const std::size_t length = byte < 0x80   ? 1
                                   : byte < 0xc2 ? 0
                                   : byte < 0xe0 ? 2
                                   : byte < 0xf0 ? 3
                                   : byte < 0xf5 ? 4
                                                 : 0;
        if (length == 0 || i + length > text.size()) return i;
        for (std::size_t k = 1; k < length; ++k)
            if ((static_cast<unsigned char>(text[i + k]) & 0xc0) != 0x80) return i;
        const auto second = length > 1 ? static_cast<unsigned char>(text[i + 1]) : 0;
        // Overlong forms, surrogates and code points past U+10FFFF.
        if ((byte == 0xe0 && second < 0xa0) || (byte == 0xed && second > 0x9f) || (byte == 0xf0 && second < 0x90) ||
            (byte == 0xf4 && second > 0x8f))
            return i;
        i += length;
    }
    return std::nullopt;
}

// The document; nothing when it can't be read, which has been said.
std::optional<std::string> readDocument(const Options& options) {
    const bool fromInput = options.file.empty() || options.file == "-";
    const std::string name = fromInput ? "standard input" : options.file;
    std::optional<std::string> text;
    if (options.expressions.empty()) {
        text = fromInput ? readInput() : readFile(options.file);
    } else {
        text.emplace();
        for (const std::string& line : options.expressions) *text += line + "\n";
    }
    if (!text) {
        std::cerr << "vemo: " << name << ": cannot be read\n";
        return std::nullopt;
    }
    if (const auto offset = firstInvalidByte(*text)) {
        std::cerr << "vemo: " << name << ": not UTF-8 at byte " << *offset << '\n';
        return std::nullopt;
    }
    return text;
}

Layout layoutFor(const Options& options) {
    Layout layout;
    layout.shortTexts = options.shortTexts;
    layout.remarks = !options.quiet && isatty(STDOUT_FILENO) != 0;
    winsize size{};
    const bool terminal = isatty(STDOUT_FILENO) != 0;
    if (terminal && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) layout.width = size.ws_col;
    const char* noColor = std::getenv("NO_COLOR");
    layout.color = options.color == Options::Color::always ||
                   (options.color == Options::Color::automatic && terminal && !(noColor && *noColor));
    return layout;
}

bool wantsPrompt(const Options& options) {
    return options.file.empty() && options.expressions.empty() && !options.json && isatty(STDIN_FILENO) &&
           isatty(STDOUT_FILENO);
}

// False when the file is no use, which has been said.
bool takeRates(VemoEngine& engine, VemoEngine::RatesFile kind, const std::string& file) {
    if (file.empty() || isUrl(file)) return true;
    constexpr std::size_t largestRates = std::size_t(16) << 20;  // bytes; no file of rates is larger
    const auto json = readFile(file, largestRates);
    const std::string problem = json ? engine.takeRates(kind, *json) : "cannot be read";
    if (!problem.empty()) std::cerr << "vemo: " << file << ": " << problem << '\n';
    return problem.empty();
}

Environment environmentFor(const Options& options, const std::shared_ptr<Online>& online) {
    Environment environment;
    environment.locale = options.locale;
    environment.language = options.language;
    environment.timeZone = options.timeZone;
    if (options.now) environment.clock = [now = *options.now] { return now; };
    if (online) environment.sources = online->sources();
    environment.log = [debug = options.debug, online](std::string_view message) {
        if (debug) std::cerr << message << '\n';
        if (online) online->hear(message);
    };
    if (options.json) environment.trace = [](std::string_view line) { std::cerr << line << '\n'; };
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

private:
    std::shared_ptr<VemoEngineDelegate> next_;
    std::vector<std::string> logs_;
};

int run(const Options& options) {
    if (!options.extensions.empty() && !isFolder(options.extensions)) return unusable;
    const bool prompt = !options.checkExtensions && wantsPrompt(options);
    const auto text = prompt || options.checkExtensions ? std::optional<std::string>("") : readDocument(options);
    if (!text) return unusable;
    const auto online = Online::forOptions(options);
    // At the prompt time goes on between the lines; without it, and with nothing to fetch, there is nothing to wait
    // for.
    const auto loop = online ? online->loop() : prompt ? std::make_shared<RunLoop>() : nullptr;
    VemoEngine engine(environmentFor(options, online), loop);
    const auto listener = std::make_shared<Listener>(online);
    engine.setDelegate(listener);
    VemoEngine::Config config;
    config.testMode = !loop;
    config.debug = options.debug;
    config.extensions = options.extensions;
    engine.buildVemoWorker(config);
    if (options.checkExtensions) return report(std::cout, engine.extensions()) ? 0 : 1;
    printLogs(std::cerr, engine.extensions());
    listener->takeLogs();
    if (!takeRates(engine, VemoEngine::RatesFile::currency, options.rates) ||
        !takeRates(engine, VemoEngine::RatesFile::crypto, options.coins))
        return unusable;
    Context context;
    context.setPrecision(options.precision);
    if (prompt) return runPrompt(engine, *loop, context, layoutFor(options), [&] { return listener->takeLogs(); });
    const auto result =
        online ? online->calculate(engine, utf16(*text), context) : *engine.calculateSync(utf16(*text), context);
    std::string log;
    for (const std::string& said : listener->takeLogs()) log += said;
    if (options.json)
        printJson(std::cout, result, log);
    else
        printResult(std::cout, result, layoutFor(options));
    if (!options.json && !options.quiet && isatty(STDOUT_FILENO) == 0)
        printRemarks(std::cerr, result, options.file.empty() ? "vemo" : options.file);
    printLog(std::cerr, log);
    return 0;
}

}  // namespace

}  // namespace vemo::cli

int main(int argc, char** argv) {
    // The widths of characters are those of the terminal's character set.
    if (!std::setlocale(LC_CTYPE, "") || MB_CUR_MAX == 1) std::setlocale(LC_CTYPE, "C.UTF-8");
    const auto options = vemo::cli::parseOptions(argc, argv);
    if (const int* status = std::get_if<int>(&options)) return *status;
    return vemo::cli::run(std::get<vemo::cli::Options>(options));
}

// SPDX-License-Identifier: MIT
#include "prompt.h"

#include <algorithm>
#include <fstream>
#include <iostream>

#include "completion.h"
#include "extensions.h"
#include "line_editor.h"
#include "session/printable.h"

namespace vemo::cli {

namespace {

constexpr std::string_view help =
    "Every line is calculated; names and results hold for the lines below.\n"
    "  Tab          completes a word, or shows what there is\n"
    "  Up, Down     go through earlier lines\n"
    "  Ctrl-C       clears the line\n"
    "  :explain     tells how the last line was calculated\n"
    "  :save FILE   writes the lines to a file\n"
    "  :quit        ends, as Ctrl-D does\n";

// The words after a command, if the line is that command.
std::optional<std::string> argument(std::string_view line, std::string_view command) {
    if (!line.starts_with(command)) return std::nullopt;
    line.remove_prefix(command.size());
    if (!line.empty() && line.front() != ' ') return std::nullopt;
    const std::size_t first = line.find_first_not_of(' ');
    if (first == line.npos) return "";
    return std::string(line.substr(first, line.find_last_not_of(' ') - first + 1));
}

class Session {
public:
    Session(VemoEngine& engine, RunLoop& loop, const Context& settings, const Layout& layout, TakeLogs takeLogs)
        : engine_(engine),
          loop_(loop),
          settings_(settings),
          layout_(layout),
          takeLogs_(std::move(takeLogs)),
          completion_(vocabulary(engine)) {}

    void run() {
        std::cout << "vemo " << VemoEngine::version() << ", :help for help" << std::endl;
        LineEditor editor(historyFile(), [&](std::u16string_view text) { return completion_.complete(text); });
        while (const auto line = editor.read()) {
            if (line->find_first_not_of(u" \t") != line->npos) editor.remember(*line);
            if (line->starts_with(u':')) {
                if (!obey(utf8(*line))) return;
            } else {
                calculate(*line);
            }
        }
    }

private:
    static std::shared_ptr<const QuickTypeEngine> vocabulary(VemoEngine& engine) {
        std::shared_ptr<const QuickTypeEngine> quickType;
        engine.buildQuickTypeEngine(VemoEngine::WorkerThread::main, [&](auto built) { quickType = std::move(built); });
        return quickType ? quickType : std::make_shared<const QuickTypeEngine>();
    }

    // False when that was the last one.
    bool obey(const std::string& line) {
        if (argument(line, ":quit")) return false;
        if (argument(line, ":help"))
            std::cout << help << std::flush;
        else if (argument(line, ":explain"))
            explain();
        else if (const auto file = argument(line, ":save"))
            save(*file);
        else
            std::cout << "no such command; :help lists them" << std::endl;
        return true;
    }

    void save(const std::string& file) const {
        if (file.empty()) {
            std::cout << ":save needs the name of a file" << std::endl;
            return;
        }
        std::ofstream stream(file, std::ios::binary);
        stream << utf8(document_);
        stream.close();
        std::cout << (stream ? "saved " : "cannot write ") << file << std::endl;
    }

    void explain() const {
        const auto lines = static_cast<std::size_t>(std::count(document_.begin(), document_.end(), u'\n'));
        const auto reading = lines > 0 ? engine_.readingOf(lines - 1, document_, settings_) : std::nullopt;
        std::cout << (reading ? session::printable(utf8(*reading)) : "the last line has no result") << std::endl;
    }

    // The document as a whole: what did not change comes from the engine's cache.
    void calculate(std::u16string_view line) {
        loop_.poll();
        document_.append(line).append(u"\n");
        Context context = settings_.copyContext();
        const auto result = engine_.calculateSync(document_, context);
        // The lines above say again what they said before.
        const auto logs = takeLogs_();
        for (; printed_ < logs.size(); ++printed_) printLog(std::cerr, logs[printed_]);
        if (!result || result->lines.empty()) return;
        completion_.learn(*result);
        const std::string text =
            session::printable(session::rowOf(*result, result->lines.size() - 1, layout_.writing).result);
        if (!text.empty()) std::cout << "= " << (layout_.color ? "\033[1m" + text + "\033[0m" : text) << '\n';
        if (layout_.remarks) printRemarksOf(std::cout, result->lines.back(), layout_);
        std::cout << std::flush;
    }

    VemoEngine& engine_;
    RunLoop& loop_;
    const Context& settings_;
    Layout layout_;
    TakeLogs takeLogs_;
    std::size_t printed_ = 0;  // of the logs
    Completion completion_;
    std::u16string document_;
};

}  // namespace

int runPrompt(VemoEngine& engine, RunLoop& loop, const Context& settings, const Layout& layout, TakeLogs takeLogs) {
    Session(engine, loop, settings, layout, std::move(takeLogs)).run();
    return 0;
}

}  // namespace vemo::cli

// SPDX-License-Identifier: MIT
#include "prompt/session.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "document.h"
#include "extensions.h"
#include "online.h"
#include "output.h"
#include "prompt/commands.h"
#include "session/printable.h"
#include "session/saving.h"

namespace vemo::cli {

namespace {

using namespace std::chrono_literals;

constexpr auto step = 5ms;
constexpr auto longestWaitForPlaces = 2000ms;
constexpr int pauseBeforeAsking = 400;  // milliseconds without a key: a service is not asked for half a name

std::u16string_view trimmed(std::u16string_view text) {
    const std::size_t first = text.find_first_not_of(u" \t");
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(u" \t") - first + 1);
}

std::shared_ptr<const Completions> vocabularyOf(VemoEngine& engine) {
    std::shared_ptr<const Completions> vocabulary;
    engine.buildCompletions(VemoEngine::WorkerThread::main, [&](auto built) { vocabulary = std::move(built); });
    return vocabulary ? vocabulary : std::make_shared<const Completions>(std::vector<Completion>());
}

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

Session::Session(const PromptSetting& setting, const Options& options)
    : setting_(setting),
      context_(setting.context.copyContext()),
      layout_(setting.layout),
      toldOfRates_(!options.rates.empty() || !options.coins.empty()),
      completer_([this] { return vocabularyOf(setting_.engine); }),
      history_(historyFile()),
      editor_(history_, hooks_) {
    hooks_.preview = [this](std::u16string_view line) { return preview(line); };
    hooks_.complete = [this](std::u16string_view text) { return complete(text); };
    hooks_.awaits = [this] { return waited_ = isWaiting(); };
    hooks_.refresh = [this] { return setting_.loop.poll(), std::exchange(waited_, isWaiting()) && !waited_; };
    hooks_.previewWait = options.places.empty() ? 0 : pauseBeforeAsking;
    hooks_.color = layout_.color;
    layout_.total = true;
}

bool Session::begin(const Options& options) {
    std::cout << "vemo " << VemoEngine::version() << "; help tells what there is, quit ends" << std::endl;
    if (!options.file.empty()) return load(options.file, true);
    for (const std::string& line : options.expressions) {
        say("> " + line);
        enter(utf16(line));
    }
    return true;
}

int Session::run() {
    while (!ended_) {
        const auto entry = editor_.read();
        if (!entry) {
            leave();
            continue;
        }
        const std::u16string_view line = trimmed(entry->text);
        if (!line.empty()) history_.add(entry->text);
        const std::string command = entry->pasted ? std::string() : commandIn(line);
        if (command.empty())
            enter(entry->text);
        else
            runCommand(*this, command);
        tellProblems();
    }
    return 0;
}

// A word such as "help" is a command where it has no value as a name.
std::string Session::commandIn(std::u16string_view line) {
    if (line.starts_with(u':')) return utf8(line);
    const std::string_view command = commandOfWord(utf8(line));
    if (command.empty()) return "";
    const auto result = calculateWith(notebook_.size(), line);
    const bool means = result && result->lines.back().formattedResult().regular.has_value();
    return means ? "" : std::string(":").append(command);
}

void Session::setPrecision(std::optional<std::int64_t> digits) {
    context_.setPrecision(digits);
    layout_.writing.precision = digits;
}

void Session::say(std::string_view text) const {
    std::cout << session::printable(text) << std::endl;
}

bool Session::agrees(const std::string& question) {
    say(question);
    const auto answer = editor_.ask("[y/N] ");
    return answer && (*answer == u"y" || *answer == u"Y" || *answer == u"yes");
}

std::optional<VemoEngine::Result> Session::calculate(std::u16string_view text) {
    setting_.loop.poll();
    const auto context = std::make_shared<Context>(context_.copyContext());
    auto result = setting_.engine.calculateSync(text, *context);
    if (result) result->context = context;  // which lives as long as the result
    return result;
}

std::optional<VemoEngine::Result> Session::calculateWith(std::size_t index, std::u16string_view line) {
    return calculate(notebook_.textWith(index, line));
}

bool Session::isWaiting() const {
    const auto pending = setting_.engine.pending();
    return pending.rates || pending.places;
}

// Waits a little for what the line needs and is on its way.
std::optional<VemoEngine::Result> Session::settled(std::size_t index, std::u16string_view line) {
    auto result = calculateWith(index, line);
    const auto start = std::chrono::steady_clock::now();
    while (result && index < result->lines.size()) {
        const auto reason = result->lines[index].reason();
        if (!reason) break;
        const auto pending = setting_.engine.pending();
        const bool place = reason->code == ReasonCode::placeAwaited && pending.places;
        const bool rates = reason->code == ReasonCode::noRates && pending.rates;
        const std::chrono::milliseconds most = rates ? waitForRates() : longestWaitForPlaces;
        if ((!place && !rates) || std::chrono::steady_clock::now() - start >= most) break;
        setting_.loop.runFor(step);
        const auto now = setting_.engine.pending();
        if (now.places != pending.places || now.rates != pending.rates) result = calculateWith(index, line);
    }
    return result;
}

LineEditor::Preview Session::preview(std::u16string_view line) {
    LineEditor::Preview shown;
    const std::size_t index = std::min(edited_, notebook_.size());
    if (line.starts_with(u':') && edited_ > notebook_.size()) {
        shown.answer = commandHint(utf8(line));
        return shown;
    }
    if (trimmed(line).empty()) return shown;
    const auto result = calculateWith(index, line);
    if (!result || index >= result->lines.size()) return shown;
    const AttributedText runs = result->lines[index].attributedText();
    runs.enumerate([&](std::u16string_view text, RunType type, std::size_t) {
        shown.tints.push_back({text.size(), session::colorOf(type)});
    });
    const std::string answer = session::printable(session::rowOf(*result, index, layout_.writing).result);
    const std::string_view command = commandOfWord(utf8(trimmed(line)));
    if (!answer.empty())
        shown.answer = "= " + answer;
    else if (!command.empty())
        shown.answer = commandHint(std::string(":").append(command));
    if (!layout_.remarks) return shown;
    for (const Note& note : result->lines[index].notes()) shown.remarks.push_back("  " + utf8(note.message));
    if (const auto reason = result->lines[index].reason()) shown.remarks.push_back("  " + utf8(reason->message));
    return shown;
}

Completer::Answer Session::complete(std::u16string_view text) {
    if (text.starts_with(u':')) return completeCommand(text);
    if (!std::exchange(learned_, true))
        if (const auto result = calculate(notebook_.text())) completer_.learn(*result);
    return completer_.complete(text);
}

void Session::show(const VemoEngine::Result& result, std::size_t index) const {
    const auto& line = result.lines[index];
    printLog(std::cerr, utf8(line.extensionsLog()));
    const std::string text = session::printable(session::rowOf(result, index, layout_.writing).result);
    if (!text.empty()) std::cout << "= " << (layout_.color ? "\033[1m" + text + "\033[0m" : text) << '\n';
    if (layout_.remarks) session::printRemarksOf(std::cout, line, layout_);
    std::cout << std::flush;
}

void Session::enter(std::u16string_view line) {
    const std::size_t index = notebook_.size();
    const auto result = settled(index, line);
    const bool calculated = result && index < result->lines.size();
    if (calculated) show(*result, index);
    const auto reason = calculated ? result->lines[index].reason() : std::nullopt;
    if (reason) return tellOfRates(reason->code);
    notebook_.add(line);
    learned_ = false;
}

void Session::edit(std::size_t index) {
    edited_ = index;
    const auto text = editor_.change(notebook_.at(index), std::to_string(index + 1) + "> ");
    edited_ = newLine;
    if (!text || *text == notebook_.at(index)) return;
    const auto before = calculate(notebook_.text());
    const auto result = settled(index, *text);
    if (!result || !before || index >= result->lines.size()) {
        notebook_.replace(index, *text);
        return;
    }
    show(*result, index);
    if (result->lines[index].reason()) return say("line " + std::to_string(index + 1) + " stays as it was");
    notebook_.replace(index, *text);
    learned_ = false;
    std::size_t changed = 0;
    for (std::size_t i = index + 1; i < std::min(result->lines.size(), before->lines.size()); ++i)
        if (session::rowOf(*result, i, layout_.writing).result != session::rowOf(*before, i, layout_.writing).result)
            ++changed;
    if (changed > 0) say(counted(changed, "line") + " below changed");
}

void Session::remove(std::size_t index) {
    notebook_.remove(index);
    learned_ = false;
    say("line " + std::to_string(index + 1) + " is gone");
}

void Session::undo() {
    learned_ = false;
    say(notebook_.undo() ? counted(notebook_.size(), "line") + ", as before" : "there is nothing to undo");
}

void Session::clear() {
    notebook_.load(u"", "");
    learned_ = false;
    say("no lines; :undo brings them back");
}

void Session::list() {
    if (notebook_.size() == 0) return say("no lines");
    const auto result = calculate(notebook_.text());
    if (!result) return;
    session::Layout layout = layout_;
    layout.numbered = true;
    layout.width = RawTerminal::size().columns;
    session::printResult(std::cout, *result, layout);
    std::cout << std::flush;
}

bool Session::load(const std::string& name, bool mayBeNew) {
    const std::string file = session::expanded(name).string();
    std::error_code error;
    if (mayBeNew && !std::filesystem::exists(file, error)) {
        notebook_.markSaved(file);
        say(name + ": a new file, which :save writes");
        return true;
    }
    Options options;
    options.file = file == "-" ? "./-" : file;  // which would be the terminal
    const auto text = readDocument(options);
    if (!text) return false;
    notebook_.load(utf16(*text), file);
    fileStamp_ = session::stampOf(file);
    learned_ = false;
    const auto result = calculate(notebook_.text());
    const auto total = result ? session::totalOf(*result, layout_.writing.shortTexts) : std::nullopt;
    say(name + ": " + counted(notebook_.size(), "line") +
        (total ? ", " + total->label + (total->text.empty() ? "" : " " + total->text) : "") + "; :list shows them");
    return true;
}

bool Session::save(const std::string& name) {
    const std::string file = name.empty() ? notebook_.file() : session::expanded(name).string();
    if (file.empty()) return say(":save needs the name of a file"), false;
    std::error_code error;
    const bool exists = std::filesystem::exists(file, error);
    const bool known = file == notebook_.file() && session::stampOf(file) == fileStamp_;
    const std::string there = file == notebook_.file() ? " has changed since" : " is there already";
    if (exists && !known && !agrees(file + there + "; write over it?")) return say("not saved"), false;
    const std::string problem = session::replaceFile(file, utf8(notebook_.fileText()));
    if (!problem.empty()) return say("cannot write " + file + ": " + problem), false;
    notebook_.markSaved(file);
    fileStamp_ = session::stampOf(file);
    say("saved " + file);
    return true;
}

void Session::leave() {
    const std::string& file = notebook_.file();
    const bool saves = !file.empty() && !notebook_.isSaved() && agrees(file + " is not saved; save it?");
    ended_ = !saves || save("");
}

void Session::tellOfRates(ReasonCode reason) {
    if (reason != ReasonCode::noRates || std::exchange(toldOfRates_, true)) return;
    complain("money needs exchange rates: give --rates a file or a URL");
}

void Session::tellProblems() const {
    for (const std::string& problem : setting_.takeProblems()) complain(problem);
}

}  // namespace vemo::cli

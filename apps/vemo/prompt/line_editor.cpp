// SPDX-License-Identifier: MIT
#include "prompt/line_editor.h"

#include <algorithm>
#include <iostream>

#include "session/characters.h"
#include "session/printable.h"
#include "vemo/engine.h"

namespace vemo::cli {

namespace {

constexpr std::string_view dim = "\033[2m";
constexpr std::string_view reversed = "\033[7m";
constexpr int refreshTime = 100;  // milliseconds between looks at what may have arrived
constexpr int pause = 700;        // milliseconds after which somebody who typed a line looks at it

}  // namespace

std::optional<LineEditor::Entry> LineEditor::read() {
    if (!terminal_.isUsable()) return readPlain("> ");
    line_.set({});
    return edit("> ", Mode::line);
}

std::optional<std::u16string> LineEditor::change(std::u16string_view present, const std::string& prompt) {
    line_.set(present);
    if (!terminal_.isUsable())
        std::cout << std::string(prompt.size(), ' ') << session::printable(utf8(present)) << '\n';
    auto entry = terminal_.isUsable() ? edit(prompt, Mode::change) : readPlain(prompt);
    return entry ? std::optional(std::move(entry->text)) : std::nullopt;
}

std::optional<std::u16string> LineEditor::ask(const std::string& question) {
    line_.set({});
    auto entry = terminal_.isUsable() ? edit(question, Mode::question) : readPlain(question);
    return entry ? std::optional(std::move(entry->text)) : std::nullopt;
}

std::optional<LineEditor::Entry> LineEditor::readPlain(const std::string& prompt) {
    std::cout << prompt << std::flush;
    std::string line;
    if (!std::getline(std::cin, line)) {
        std::cout << '\n';
        return std::nullopt;
    }
    std::u16string text = utf16(line);
    // These characters would end a line.
    std::replace_if(
        text.begin(), text.end(), [](char16_t c) { return c != u'\t' && session::isControl(c); }, u' ');
    return Entry{std::move(text), false};
}

std::optional<LineEditor::Entry> LineEditor::edit(const std::string& prompt, Mode mode) {
    std::cout << std::flush;
    prompt_ = prompt;
    mode_ = mode;
    recalled_ = history_.size();
    menu_.reset();
    search_.reset();
    preview_.reset();
    show();
    for (;;) {
        const Key key = keys_.next(waitTime());
        if (key.press == Press::none) {
            if (hooks_.refresh() || (!preview_ && !keys_.hasMore()))
                calculate();
            else if (paused_ || !preview_ || preview_->remarks.empty())
                continue;
            else
                paused_ = true;
            show();
            continue;
        }
        const Step step = searches(key) ? Step::goesOn : take(key);
        if (step == Step::ended) {
            terminal_.write(frame_.finish(view(), RawTerminal::size()));
            return std::nullopt;
        }
        if (step == Step::entered) {
            menu_.reset();
            terminal_.write(frame_.finish(view(), RawTerminal::size()));
            return Entry{line_.text(), key.pasted};
        }
        // Keys that came meanwhile are taken first, and all of them are shown at once.
        if (keys_.hasMore()) continue;
        if (!preview_ && hooks_.previewWait == 0) calculate();
        show();
    }
}

void LineEditor::calculate() {
    paused_ = false;
    preview_ = mode_ == Mode::question ? Preview() : hooks_.preview(line_.text());
}

int LineEditor::waitTime() const {
    if (!preview_) return std::max(hooks_.previewWait, 1);
    const bool awaits = hooks_.awaits();
    if (!paused_ && !preview_->remarks.empty()) return pause;
    return awaits ? refreshTime : -1;
}

LineEditor::Step LineEditor::take(const Key& key) {
    const std::u16string before = line_.text();
    Press press = key.press;
    if (menu_ && press == Press::up) press = Press::completeBack;
    if (menu_ && press == Press::down) press = Press::complete;
    if (press != Press::complete && press != Press::completeBack && press != Press::resized) menu_.reset();
    switch (press) {
        case Press::character:
            line_.insert(key.text);
            break;
        case Press::enter:
            return Step::entered;
        case Press::complete:
        case Press::completeBack:
            if (mode_ != Mode::question) complete(press == Press::completeBack);
            break;
        case Press::up:
        case Press::down:
            if (mode_ != Mode::question) recall(press == Press::up);
            break;
        case Press::search:
            if (mode_ != Mode::question) search_ = Search{{}, line_.text(), history_.size(), false};
            break;
        case Press::clearScreen:
            terminal_.write("\033[H\033[2J");
            frame_.forget();
            break;
        case Press::drop:
            if (mode_ != Mode::line) return Step::ended;
            line_.obey(Press::end);
            terminal_.write(frame_.finish(view(), RawTerminal::size()));
            if (line_.text().empty()) terminal_.write("Ctrl-D ends\n");
            line_.set({});
            recalled_ = history_.size();
            break;
        case Press::suspend:
            terminal_.write(frame_.finish(view(), RawTerminal::size()));
            terminal_.suspend();
            break;
        case Press::resized:
            frame_.resized(view(), RawTerminal::size());
            break;
        case Press::hangUp:
            return Step::ended;
        case Press::endOrErase:
            if (line_.text().empty()) return Step::ended;
            line_.obey(press);
            break;
        default:
            line_.obey(press);
            break;
    }
    if (line_.text() != before) preview_.reset();
    return Step::goesOn;
}

void LineEditor::choose(std::size_t index) {
    Menu& menu = *menu_;
    const std::u16string& text = menu.answer.choices[index].text;
    line_.replaceBefore(menu.answer.typed, text);
    menu.answer.typed = text.size();
    menu.chosen = index;
}

// The first time puts in what all choices begin with, further times the choices one by one.
void LineEditor::complete(bool back) {
    if (menu_) {
        const std::size_t count = menu_->answer.choices.size(), chosen = menu_->chosen;
        if (chosen == Menu::none) return choose(back ? count - 1 : 0);
        return choose((chosen + (back ? count - 1 : 1)) % count);
    }
    Completer::Answer answer = hooks_.complete(line_.beforeCursor());
    if (answer.choices.empty()) return terminal_.write("\a");
    if (!answer.insertion.empty()) {
        line_.replaceBefore(answer.typed, answer.insertion);
        answer.typed = answer.insertion.size();
    }
    if (answer.choices.size() > 1) menu_ = Menu{std::move(answer), Menu::none};
}

void LineEditor::recall(bool earlier) {
    if (earlier ? recalled_ == 0 : recalled_ >= history_.size()) return;
    if (recalled_ == history_.size()) unfinished_ = line_.text();
    recalled_ = earlier ? recalled_ - 1 : recalled_ + 1;
    line_.set(recalled_ == history_.size() ? unfinished_ : history_.at(recalled_));
}

void LineEditor::find(std::size_t end) {
    const auto found = history_.find(search_->text, end);
    search_->failed = !found;
    if (!found) return terminal_.write("\a");
    search_->at = *found;
    line_.set(history_.at(*found));
}

// False for a key that is not the search's.
bool LineEditor::searches(const Key& key) {
    if (!search_) return false;
    if (key.press == Press::character) {
        search_->text += key.text;
        find(std::min(search_->at + 1, history_.size()));
    } else if (key.press == Press::erase && !search_->text.empty()) {
        search_->text.erase(session::previousStop(search_->text, search_->text.size()));
        if (!search_->text.empty()) find(history_.size());
    } else if (key.press == Press::search) {
        if (!search_->text.empty()) find(search_->at);
    } else if (key.press == Press::drop || key.press == Press::escape) {
        line_.set(search_->before);
        search_.reset();
    } else if (key.press != Press::resized) {
        search_.reset();
        return false;
    } else {
        return false;
    }
    preview_.reset();
    return true;
}

View LineEditor::view() const {
    View view{prompt_, line_.text(), line_.cursor(), {}, {}};
    if (preview_ && hooks_.color) view.tints = preview_->tints;
    if (preview_ && !preview_->answer.empty())
        view.below.push_back({preview_->answer, hooks_.color ? dim : std::string_view()});
    for (std::size_t i = 0; paused_ && preview_ && i < preview_->remarks.size(); ++i)
        view.below.push_back({session::printable(preview_->remarks[i]), hooks_.color ? dim : std::string_view()});
    if (search_) view.below.push_back({(search_->failed ? "nothing has: " : "search: ") + utf8(search_->text), {}});
    if (!menu_) return view;
    std::size_t widest = 0;
    for (const auto& choice : menu_->answer.choices) widest = std::max(widest, session::columnsOf(choice.text));
    for (std::size_t i = 0; i < menu_->answer.choices.size(); ++i) {
        const auto& choice = menu_->answer.choices[i];
        const bool chosen = i == menu_->chosen;
        std::string text = (chosen ? "> " : "  ") + session::printable(utf8(choice.text));
        if (!choice.kind.empty()) text += std::string(widest - session::columnsOf(choice.text) + 2, ' ') + choice.kind;
        view.below.push_back({std::move(text), chosen && hooks_.color ? reversed : std::string_view()});
    }
    return view;
}

void LineEditor::show() {
    terminal_.write(frame_.draw(view(), RawTerminal::size()));
}

}  // namespace vemo::cli

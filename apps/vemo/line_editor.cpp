// SPDX-License-Identifier: MIT
#include "line_editor.h"

#include <histedit.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace vemo::cli {

namespace {

constexpr int rememberedLines = 1000;

std::wstring wide(std::u16string_view text) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        wchar_t character = text[i];
        if (character >= 0xd800 && character < 0xdc00 && i + 1 < text.size())
            character = 0x10000 + ((character - 0xd800) << 10) + (text[++i] - 0xdc00);
        result += character;
    }
    return result;
}

std::u16string narrowed(std::wstring_view text) {
    std::u16string result;
    for (const wchar_t character : text) {
        if (character < 0x10000) {
            result += static_cast<char16_t>(character);
        } else {
            result += static_cast<char16_t>(0xd800 + ((character - 0x10000) >> 10));
            result += static_cast<char16_t>(0xdc00 + ((character - 0x10000) & 0x3ff));
        }
    }
    return result;
}

// Lines, as they are in a file.
class History {
public:
    explicit History(const std::string& file) : history_(history_winit()) {
        HistEventW event{};
        history_w(history_, &event, H_SETSIZE, rememberedLines);
        history_w(history_, &event, H_SETUNIQUE, 1);
        if (!file.empty()) history_w(history_, &event, H_LOAD, file.c_str());
    }
    ~History() { history_wend(history_); }
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    void enter(std::u16string_view line) {
        HistEventW event{};
        history_w(history_, &event, H_ENTER, wide(line).c_str());
    }
    void save(const std::string& file) {
        HistEventW event{};
        history_w(history_, &event, H_SAVE, file.c_str());
    }
    HistoryW* get() const { return history_; }

private:
    HistoryW* history_;
};

wchar_t* promptText(EditLine*) {
    static wchar_t text[] = L"> ";
    return text;
}

}  // namespace

struct LineEditor::State {
    explicit State(const std::filesystem::path& historyFile) : file(historyFile.string()), history(file) {}

    EditLine* editor = nullptr;
    std::string file;
    History history;
    Complete complete;
    bool dropped = false;  // the line, by Ctrl-C
    void (*before)(int) = SIG_DFL;

    unsigned char completeHere() {
        const LineInfoW* line = el_wline(editor);
        const std::wstring_view typedText(line->buffer, static_cast<std::size_t>(line->cursor - line->buffer));
        const std::u16string text = narrowed(typedText);
        const Completion::Answer answer = complete(text);
        if (answer.choices.empty()) return CC_REFRESH_BEEP;
        if (!answer.insertion.empty()) {
            const std::wstring typed = wide(std::u16string_view(text).substr(text.size() - answer.typed));
            el_wdeletestr(editor, static_cast<int>(typed.size()));
            return el_winsertstr(editor, wide(answer.insertion).c_str()) == 0 ? CC_REFRESH : CC_REFRESH_BEEP;
        }
        if (answer.choices.size() == 1) return CC_REFRESH;
        std::fputc('\n', stdout);
        for (const std::u16string& choice : answer.choices) std::fprintf(stdout, "%s  ", utf8(choice).c_str());
        std::fputc('\n', stdout);
        std::fflush(stdout);
        return CC_REDISPLAY;
    }

    static unsigned char completeWord(EditLine* editor, int) {
        State* state = nullptr;
        el_wget(editor, EL_CLIENTDATA, &state);
        return state->completeHere();
    }

    static unsigned char dropLine(EditLine* editor, int) {
        State* state = nullptr;
        el_wget(editor, EL_CLIENTDATA, &state);
        state->dropped = true;
        return CC_EOF;
    }

    static unsigned char suspend(EditLine* editor, int) {
        el_wset(editor, EL_PREP_TERM, 0);
        raise(SIGTSTP);
        el_wset(editor, EL_PREP_TERM, 1);
        return CC_REDISPLAY;
    }
};

LineEditor::LineEditor(const std::filesystem::path& history, Complete complete)
    : state_(std::make_unique<State>(history)) {
    state_->complete = std::move(complete);
    EditLine* editor = state_->editor = el_init("vemo", stdin, stdout, stderr);
    if (!editor) return;  // no terminal after all
    el_wset(editor, EL_CLIENTDATA, state_.get());
    el_wset(editor, EL_PROMPT, promptText);
    el_wset(editor, EL_EDITOR, L"emacs");
    el_wset(editor, EL_SIGNAL, 1);  // the window's size, and a sane terminal while suspended
    el_wset(editor, EL_HIST, history_w, state_->history.get());
    el_wset(editor, EL_ADDFN, L"vemo-complete", L"Complete the word", State::completeWord);
    el_wset(editor, EL_BIND, L"^I", L"vemo-complete", nullptr);
    // Ctrl-C is a key like others: as a signal it would be lost whenever it comes just before the next read.
    el_wset(editor, EL_SETTY, L"-d", L"-isig", nullptr);
    el_wset(editor, EL_ADDFN, L"vemo-drop", L"Drop the line", State::dropLine);
    el_wset(editor, EL_BIND, L"^C", L"vemo-drop", nullptr);
    el_wset(editor, EL_ADDFN, L"vemo-suspend", L"Suspend the program", State::suspend);
    el_wset(editor, EL_BIND, L"^Z", L"vemo-suspend", nullptr);
    el_source(editor, nullptr);
    state_->before = std::signal(SIGINT, SIG_IGN);  // between the lines
}

LineEditor::~LineEditor() {
    if (!state_->editor) return;
    std::signal(SIGINT, state_->before);
    el_end(state_->editor);
}

std::optional<std::u16string> LineEditor::read() {
    while (state_->editor) {
        state_->dropped = false;
        int count = 0;
        // Before the prompt is shown, not after: Ctrl-D typed in between would be lost to the terminal's own editing.
        el_wset(state_->editor, EL_PREP_TERM, 1);
        const wchar_t* line = el_wgets(state_->editor, &count);
        if (line && count > 0) {
            std::wstring_view text(line, static_cast<std::size_t>(count));
            while (!text.empty() && (text.back() == L'\n' || text.back() == L'\r')) text.remove_suffix(1);
            return narrowed(text);
        }
        const int fault = errno;
        std::fputc('\n', stdout);
        if (!state_->dropped && !(count < 0 && fault == EINTR)) return std::nullopt;
    }
    return std::nullopt;
}

void LineEditor::remember(std::u16string_view line) {
    state_->history.enter(line);
    if (state_->file.empty()) return;
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(state_->file).parent_path(), error);
    History latest(state_->file);  // with what prompts on other terminals have added
    latest.enter(line);
    latest.save(state_->file);
}

std::filesystem::path historyFile() {
    const char* state = std::getenv("XDG_STATE_HOME");
    const char* home = std::getenv("HOME");
    std::filesystem::path folder;
    if (state && *state == '/')
        folder = state;
    else if (home && *home == '/')
        folder = std::filesystem::path(home) / ".local" / "state";
    else
        return {};
    return folder / "vemo" / "history";
}

}  // namespace vemo::cli

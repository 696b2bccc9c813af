// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "prompt/completer.h"
#include "prompt/edited_line.h"
#include "prompt/frame.h"
#include "prompt/history.h"
#include "prompt/keys.h"
#include "prompt/raw_terminal.h"

namespace vemo::cli {

// Edits lines on the terminal. Where that can't move its cursor, lines are read as the terminal hands them on.
class LineEditor {
public:
    struct Entry {
        std::u16string text;
        bool pasted = false;  // with its end, so that nobody has seen it before it was entered
    };
    // What is shown of a line while it is typed.
    struct Preview {
        std::vector<Tint> tints;
        std::string answer;                // in the row under it; empty: none
        std::vector<std::string> remarks;  // under that, once nobody types on: half a line has many
    };
    struct Hooks {
        std::function<Preview(std::u16string_view line)> preview;
        std::function<Completer::Answer(std::u16string_view beforeCursor)> complete;
        std::function<bool()> awaits;   // true while something may still arrive that changes what is shown
        std::function<bool()> refresh;  // takes what has arrived; true when there was something
        int previewWait = 0;            // milliseconds without a key after which there is a preview
        bool color = false;
    };

    // The hooks stay as they are while the editor lives.
    LineEditor(History& history, const Hooks& hooks) : history_(history), hooks_(hooks), keys_(0) {}

    // The next line, without its end; nothing at the end of the input. Ctrl-C drops what was typed.
    std::optional<Entry> read();
    // A line that is there already, changed; nothing after Ctrl-C.
    std::optional<std::u16string> change(std::u16string_view present, const std::string& prompt);
    // An answer to a question; nothing after Ctrl-C.
    std::optional<std::u16string> ask(const std::string& question);

private:
    struct Menu {
        Completer::Answer answer;
        std::size_t chosen = none;
        static constexpr std::size_t none = ~std::size_t(0);
    };
    // Looks for earlier lines with a text.
    struct Search {
        std::u16string text, before;
        std::size_t at = 0;
        bool failed = false;
    };
    enum class Step { goesOn, entered, ended };
    enum class Mode { line, change, question };

    std::optional<Entry> readPlain(const std::string& prompt);
    std::optional<Entry> edit(const std::string& prompt, Mode mode);
    Step take(const Key& key);
    void complete(bool back);
    void choose(std::size_t index);
    void recall(bool earlier);
    bool searches(const Key& key);
    void find(std::size_t end);
    void show();
    void calculate();
    View view() const;
    int waitTime() const;

    History& history_;
    const Hooks& hooks_;
    RawTerminal terminal_;
    KeyReader keys_;
    Frame frame_;
    EditedLine line_;
    std::string prompt_;
    Mode mode_ = Mode::line;
    std::optional<Preview> preview_;
    bool paused_ = false;  // nobody has typed for a while
    std::optional<Menu> menu_;
    std::optional<Search> search_;
    std::size_t recalled_ = 0;  // the line of the history that is shown; their number: none
    std::u16string unfinished_;
};

}  // namespace vemo::cli

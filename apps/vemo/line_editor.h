// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "completion.h"

namespace vemo::cli {

// Edits lines on the terminal, with a history that is kept in a file. One at a time.
class LineEditor {
public:
    using Complete = std::function<Completion::Answer(std::u16string_view beforeCursor)>;

    // An empty path keeps no file.
    LineEditor(const std::filesystem::path& history, Complete complete);
    ~LineEditor();
    LineEditor(const LineEditor&) = delete;
    LineEditor& operator=(const LineEditor&) = delete;

    // The next line, without its end; nothing at the end of the input. An interrupt (Ctrl-C) drops what was typed.
    std::optional<std::u16string> read();
    void remember(std::u16string_view line);

private:
    struct State;

    std::unique_ptr<State> state_;
};

// $XDG_STATE_HOME/vemo/history, else ~/.local/state/vemo/history; empty when neither is known.
std::filesystem::path historyFile();

}  // namespace vemo::cli

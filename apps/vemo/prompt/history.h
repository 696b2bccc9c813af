// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vemo::cli {

// The lines that were entered at prompts, the oldest first; a file keeps them from one prompt to the next.
class History {
public:
    // An empty path keeps nothing.
    explicit History(std::filesystem::path file);

    std::size_t size() const { return lines_.size(); }
    const std::u16string& at(std::size_t index) const { return lines_[index]; }
    // The latest line before `end` that has the text in it.
    std::optional<std::size_t> find(std::u16string_view text, std::size_t end) const;
    // A line that is the latest already is not added again.
    void add(std::u16string_view line);

private:
    void rewrite() const;

    std::filesystem::path file_;
    std::vector<std::u16string> lines_;
};

// $XDG_STATE_HOME/vemo/history, else ~/.local/state/vemo/history; empty when neither is known.
std::filesystem::path historyFile();

}  // namespace vemo::cli

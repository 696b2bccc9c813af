// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vemo::cli {

// The lines of the prompt's document. Every change can be undone.
class Notebook {
public:
    std::size_t size() const { return lines_.size(); }
    const std::u16string& at(std::size_t index) const { return lines_[index]; }
    // The lines, each with a line feed after it.
    const std::u16string& text() const { return text_; }
    // The text with a line in place of another, or after all.
    std::u16string textWith(std::size_t index, std::u16string_view line) const;

    void add(std::u16string_view line) { splice(lines_.size(), 0, {std::u16string(line)}); }
    void replace(std::size_t index, std::u16string_view line) { splice(index, 1, {std::u16string(line)}); }
    void remove(std::size_t index) { splice(index, 1, {}); }
    // Puts the text of a file, or of none, in place of all lines.
    void load(std::u16string_view text, std::string file);
    // False when nothing was changed.
    bool undo();

    // The file that the lines are kept in; empty: none.
    const std::string& file() const { return origin_.file; }
    // The text as it is kept in a file: with the ends of lines that it was loaded with.
    std::u16string fileText() const;
    // Tells that the present text is in this file.
    void markSaved(std::string file);
    bool isSaved() const { return saved_ == text_; }

private:
    struct Origin {
        std::string file;
        std::u16string lineEnd = u"\n";
    };
    struct Change {
        std::size_t at = 0, count = 0;  // of the lines that came
        std::vector<std::u16string> before;
        Origin origin;
    };

    void splice(std::size_t at, std::size_t count, std::vector<std::u16string> lines);
    Change exchange(std::size_t at, std::size_t count, std::vector<std::u16string> lines);

    std::vector<std::u16string> lines_;
    std::u16string text_;
    std::u16string saved_;
    Origin origin_;
    std::vector<Change> changes_;
};

}  // namespace vemo::cli

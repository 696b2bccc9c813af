// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "prompt/keys.h"

namespace vemo::cli {

// A line with a cursor in it.
class EditedLine {
public:
    const std::u16string& text() const { return text_; }
    std::size_t cursor() const { return cursor_; }
    std::u16string_view beforeCursor() const { return std::u16string_view(text_).substr(0, cursor_); }

    // Replaces the line, with the cursor after it.
    void set(std::u16string_view text);
    void insert(std::u16string_view text);
    // Puts the text in place of so many units before the cursor.
    void replaceBefore(std::size_t units, std::u16string_view text);
    // False for a key that moves or changes nothing in a line.
    bool obey(Press press);

private:
    std::size_t wordLeft() const;
    std::size_t wordRight() const;
    void erase(std::size_t from, std::size_t to, bool keeps);
    void swap();

    std::u16string text_;
    std::size_t cursor_ = 0;
    std::u16string kept_;  // what was erased last, to be put back
};

}  // namespace vemo::cli

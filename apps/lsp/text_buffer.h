// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vemo::lsp {

// What the columns of positions count.
enum class Encoding : std::uint8_t { utf16, utf8 };

// A place as clients tell it: both counted from 0.
struct Position {
    std::size_t line = 0;
    std::size_t character = 0;
    friend bool operator==(const Position&, const Position&) = default;
};

// A document's text with its lines, which end with LF, CRLF or CR. Positions past the end of a line or of the text are
// those of the end.
class TextBuffer {
public:
    explicit TextBuffer(std::u16string text = u"");

    const std::u16string& text() const { return text_; }
    std::size_t lineCount() const { return starts_.size(); }
    std::size_t lineStart(std::size_t line) const { return line < starts_.size() ? starts_[line] : text_.size(); }
    // The text of a line without its end; empty past the last line.
    std::u16string_view line(std::size_t line) const;

    // UTF-16 units from the beginning of the line, and of the text.
    std::size_t unitOf(const Position& position, Encoding encoding) const;
    std::size_t offsetOf(const Position& position, Encoding encoding) const;
    std::size_t characterOf(std::size_t line, std::size_t unit, Encoding encoding) const;

    // Replaces so many units from `start` on, and gives the line on which the replacement ends.
    std::size_t replace(std::size_t start, std::size_t length, std::u16string_view replacement);

private:
    void findStarts(std::size_t from, std::size_t to, std::vector<std::size_t>& starts) const;
    std::size_t lineAt(std::size_t offset) const;

    std::u16string text_;
    std::vector<std::size_t> starts_;  // the first is 0
};

// The columns that a text takes in an encoding.
std::size_t lengthIn(Encoding encoding, std::u16string_view text);

}  // namespace vemo::lsp

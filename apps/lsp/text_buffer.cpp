// SPDX-License-Identifier: MIT
#include "lsp/text_buffer.h"

#include <algorithm>

namespace vemo::lsp {

namespace {

bool isHighSurrogate(char16_t unit) {
    return unit >= 0xd800 && unit < 0xdc00;
}
bool isLowSurrogate(char16_t unit) {
    return unit >= 0xdc00 && unit < 0xe000;
}

bool isPairAt(std::u16string_view text, std::size_t at) {
    return isHighSurrogate(text[at]) && at + 1 < text.size() && isLowSurrogate(text[at + 1]);
}

// The bytes of a character in UTF-8, where half a pair is the replacement character.
std::size_t bytesAt(std::u16string_view text, std::size_t at) {
    return text[at] < 0x80 ? 1 : text[at] < 0x800 ? 2 : isPairAt(text, at) ? 4 : 3;
}

}  // namespace

TextBuffer::TextBuffer(std::u16string text) : text_(std::move(text)), starts_{0} {
    findStarts(0, text_.size(), starts_);
}

// The starts of lines after `from`, as far as `to`.
void TextBuffer::findStarts(std::size_t from, std::size_t to, std::vector<std::size_t>& starts) const {
    for (std::size_t i = from; i < to; ++i) {
        const char16_t unit = text_[i];
        if (unit == u'\n' || (unit == u'\r' && !(i + 1 < text_.size() && text_[i + 1] == u'\n')))
            starts.push_back(i + 1);
    }
}

std::size_t TextBuffer::lineAt(std::size_t offset) const {
    return static_cast<std::size_t>(std::upper_bound(starts_.begin(), starts_.end(), offset) - starts_.begin()) - 1;
}

std::u16string_view TextBuffer::line(std::size_t line) const {
    if (line >= starts_.size()) return {};
    std::u16string_view text = std::u16string_view(text_).substr(starts_[line], lineStart(line + 1) - starts_[line]);
    if (text.ends_with(u'\n')) text.remove_suffix(1);
    if (text.ends_with(u'\r')) text.remove_suffix(1);
    return text;
}

std::size_t TextBuffer::unitOf(const Position& position, Encoding encoding) const {
    const std::u16string_view line = this->line(position.line);
    if (encoding == Encoding::utf16) {
        const std::size_t unit = std::min(position.character, line.size());
        return unit > 0 && unit < line.size() && isPairAt(line, unit - 1) ? unit - 1 : unit;
    }
    std::size_t bytes = 0, unit = 0;
    while (unit < line.size() && bytes < position.character) {
        bytes += bytesAt(line, unit);
        if (bytes > position.character) break;  // within a character
        unit += isPairAt(line, unit) ? 2 : 1;
    }
    return unit;
}

std::size_t TextBuffer::offsetOf(const Position& position, Encoding encoding) const {
    return position.line < starts_.size() ? starts_[position.line] + unitOf(position, encoding) : text_.size();
}

std::size_t TextBuffer::characterOf(std::size_t line, std::size_t unit, Encoding encoding) const {
    return lengthIn(encoding, this->line(line).substr(0, unit));
}

std::size_t TextBuffer::replace(std::size_t start, std::size_t length, std::u16string_view replacement) {
    start = std::min(start, text_.size());
    length = std::min(length, text_.size() - start);
    // A line feed may join the carriage return of the line before, and the one after what was replaced.
    const std::size_t line = lineAt(start);
    const std::size_t first = line > 0 ? line - 1 : 0;
    const std::size_t after = std::min(lineAt(start + length) + 2, starts_.size());
    const std::size_t from = starts_[first];
    const std::size_t to = lineStart(after) + replacement.size() - length;
    text_.replace(start, length, replacement);
    std::vector<std::size_t> found;
    findStarts(from, to, found);
    if (after < starts_.size()) {
        found.pop_back();  // the one that `after` is
        if (replacement.size() != length)
            for (std::size_t i = after; i < starts_.size(); ++i) starts_[i] += replacement.size() - length;
    }
    const auto begin = starts_.begin() + static_cast<std::ptrdiff_t>(first) + 1;
    const auto end = starts_.begin() + static_cast<std::ptrdiff_t>(after);
    const auto common = std::min(end - begin, static_cast<std::ptrdiff_t>(found.size()));
    std::copy(found.begin(), found.begin() + common, begin);
    if (begin + common != end)
        starts_.erase(begin + common, end);
    else
        starts_.insert(end, found.begin() + common, found.end());
    return lineAt(start + replacement.size());
}

std::size_t lengthIn(Encoding encoding, std::u16string_view text) {
    if (encoding == Encoding::utf16) return text.size();
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < text.size(); i += isPairAt(text, i) ? 2 : 1) bytes += bytesAt(text, i);
    return bytes;
}

}  // namespace vemo::lsp

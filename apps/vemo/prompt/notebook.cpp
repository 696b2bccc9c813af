// SPDX-License-Identifier: MIT
#include "prompt/notebook.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vemo::cli {

namespace {

// What ends lines for the engine.
constexpr std::u16string_view ends = u"\n\r\u0085\u2028\u2029";

std::vector<std::u16string> linesOf(std::u16string_view text) {
    std::vector<std::u16string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(ends), text.size());
        lines.emplace_back(text.substr(0, end));
        const bool both = text.substr(end).starts_with(u"\r\n");
        text.remove_prefix(std::min(end + (both ? 2 : 1), text.size()));
    }
    return lines;
}

}  // namespace

std::u16string Notebook::textWith(std::size_t index, std::u16string_view line) const {
    if (index >= lines_.size()) return text_ + std::u16string(line);
    std::u16string text;
    for (std::size_t i = 0; i < lines_.size(); ++i) text.append(i == index ? line : lines_[i]).append(u"\n");
    return text;
}

void Notebook::load(std::u16string_view text, std::string file) {
    splice(0, lines_.size(), linesOf(text));
    const std::size_t end = text.find(u'\n');
    const bool both = end != text.npos && end > 0 && text[end - 1] == u'\r';
    origin_ = {std::move(file), both ? u"\r\n" : u"\n"};
    saved_ = text_;
}

void Notebook::markSaved(std::string file) {
    origin_.file = std::move(file);
    saved_ = text_;
}

std::u16string Notebook::fileText() const {
    std::u16string text;
    for (const std::u16string& line : lines_) text.append(line).append(origin_.lineEnd);
    return text;
}

Notebook::Change Notebook::exchange(std::size_t at, std::size_t count, std::vector<std::u16string> lines) {
    const auto first = lines_.begin() + static_cast<std::ptrdiff_t>(at);
    const auto last = first + static_cast<std::ptrdiff_t>(count);
    Change change{at, lines.size(), {std::make_move_iterator(first), std::make_move_iterator(last)}, origin_};
    const bool appends = at == lines_.size();
    if (appends)
        for (const std::u16string& line : lines) text_.append(line).append(u"\n");
    lines_.insert(lines_.erase(first, last), std::make_move_iterator(lines.begin()),
                  std::make_move_iterator(lines.end()));
    if (appends) return change;
    text_.clear();
    for (const std::u16string& line : lines_) text_.append(line).append(u"\n");
    return change;
}

void Notebook::splice(std::size_t at, std::size_t count, std::vector<std::u16string> lines) {
    changes_.push_back(exchange(at, count, std::move(lines)));
}

bool Notebook::undo() {
    if (changes_.empty()) return false;
    Change change = std::move(changes_.back());
    changes_.pop_back();
    exchange(change.at, change.count, std::move(change.before));
    origin_ = std::move(change.origin);
    return true;
}

}  // namespace vemo::cli

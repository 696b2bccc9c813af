// SPDX-License-Identifier: MIT
#include "support/screen.h"

#include <wchar.h>

#include <algorithm>
#include <cstdlib>
#include <cwchar>

namespace vemo::test {

void Screen::feed() {
    if (row_ + 1 < cells_.size()) {
        ++row_;
        return;
    }
    cells_.erase(cells_.begin());
    cells_.emplace_back(columns_);
}

void Screen::put(const std::string& character) {
    wchar_t wide = 0;
    std::mbstate_t state{};
    std::mbrtowc(&wide, character.data(), character.size(), &state);
    const auto width = static_cast<std::size_t>(std::max(wcwidth(wide), 0));
    if (width == 0) {
        // It combines with the one before.
        std::size_t at = wraps_ ? column_ : std::max<std::size_t>(column_, 1) - 1;
        while (at > 0 && cells_[row_][at].text.empty()) --at;
        cells_[row_][at].text += character;
        return;
    }
    if (wraps_ || column_ + width > columns_) {
        column_ = 0;
        wraps_ = false;
        feed();
    }
    cells_[row_][column_] = {character, dim_};
    if (width == 2) cells_[row_][column_ + 1] = {"", dim_};
    column_ += width;
    wraps_ = column_ >= columns_;
    if (wraps_) column_ = columns_ - 1;
}

void Screen::control(std::string_view sequence) {
    const char kind = sequence.back();
    const std::string parameters(sequence.substr(2, sequence.size() - 3));
    const auto count = static_cast<std::size_t>(std::max(std::atoi(parameters.c_str()), 1));
    if (kind != 'm') wraps_ = false;
    const auto erase = [&](std::size_t row, std::size_t from) {
        for (std::size_t i = from; i < columns_; ++i) cells_[row][i] = {};
    };
    if (kind == 'A') row_ -= std::min(count, row_);
    if (kind == 'B') row_ = std::min(row_ + count, cells_.size() - 1);
    if (kind == 'C') column_ = std::min(column_ + count, columns_ - 1);
    if (kind == 'D') column_ -= std::min(count, column_);
    if (kind == 'H') row_ = column_ = 0;
    if (kind == 'K') erase(row_, column_);
    if (kind == 'm') dim_ = parameters == "2" || (dim_ && parameters != "0");
    if (kind != 'J') return;
    if (parameters != "2") erase(row_, column_);
    for (std::size_t row = parameters == "2" ? 0 : row_ + 1; row < cells_.size(); ++row) erase(row, 0);
}

void Screen::write(std::string_view bytes) {
    for (const char byte : bytes) {
        pending_ += byte;
        const auto first = static_cast<unsigned char>(pending_[0]);
        if (first == 0x1b) {
            const bool ended = pending_.size() > 2 ? byte >= 0x40 : pending_.size() == 2 && byte != '[';
            if (!ended) continue;
            if (pending_[1] == '[') control(pending_);
        } else if (first < 0x20) {
            if (byte == '\r') column_ = 0;
            if (byte == '\n') feed();
            if (byte == '\a') ++bells_;
            if (byte != '\a') wraps_ = false;
        } else {
            const std::size_t length = first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
            if (pending_.size() < length) continue;
            put(pending_);
        }
        pending_.clear();
    }
}

std::string Screen::row(std::size_t index) const {
    std::string text;
    for (const Cell& cell : cells_[index]) text += cell.text;
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string Screen::text() const {
    std::string text, blank;
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        const std::string shown = row(i);
        blank += shown + "\n";
        if (shown.empty()) continue;
        text += blank;
        blank.clear();
    }
    return text;
}

}  // namespace vemo::test

// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vemo::test {

// What somebody sees on a terminal to which this was written: the part of a terminal that programs here use.
class Screen {
public:
    Screen(std::size_t rows, std::size_t columns) : columns_(columns), cells_(rows, std::vector<Cell>(columns)) {}

    void write(std::string_view bytes);

    // A row without the blanks at its end.
    std::string row(std::size_t index) const;
    // All rows down to the last that has something in it, each with a line feed after it.
    std::string text() const;
    std::size_t cursorRow() const { return row_; }
    std::size_t cursorColumn() const { return column_; }
    // True where the row begins dimmed.
    bool isDim(std::size_t index) const { return cells_[index][0].dim; }
    std::size_t bells() const { return bells_; }

private:
    struct Cell {
        std::string text = " ";  // empty: the right half of a wide character
        bool dim = false;
    };

    void put(const std::string& character);
    void feed();
    void control(std::string_view sequence);

    std::size_t columns_;
    std::vector<std::vector<Cell>> cells_;
    std::size_t row_ = 0, column_ = 0;
    bool wraps_ = false;  // the next character begins a row
    bool dim_ = false;
    std::size_t bells_ = 0;
    std::string pending_;  // the beginning of a character or sequence
};

}  // namespace vemo::test

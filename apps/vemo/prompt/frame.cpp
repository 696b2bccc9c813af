// SPDX-License-Identifier: MIT
#include "prompt/frame.h"

#include <algorithm>

#include "session/characters.h"
#include "session/printable.h"
#include "vemo/engine.h"

namespace vemo::cli {

namespace {

constexpr std::string_view reset = "\033[0m";
constexpr std::string_view clearRow = "\033[K";
constexpr std::string_view clearBelow = "\033[J";

std::string moved(std::size_t count, char direction) {
    return count > 0 ? "\033[" + std::to_string(count) + direction : std::string();
}

// Where the rows of a text begin, and where in them its cursor stands. A text that ends at the margin has a row more,
// for what is typed next.
struct Rows {
    std::vector<std::size_t> starts{0};
    std::size_t endColumn = 0;
    std::size_t cursorRow = 0;
    std::size_t cursorColumn = 0;
};

Rows rowsOf(const View& view, std::size_t width) {
    Rows rows;
    std::size_t column = view.prompt.size();
    const auto atCursor = [&] {
        rows.cursorRow = rows.starts.size() - 1;
        rows.cursorColumn = column;
    };
    for (std::size_t i = 0; i < view.text.size();) {
        const session::Character character = session::characterAt(view.text, i);
        const std::size_t columns = session::columnsOf(character.code);
        if (column + columns > width) {
            rows.starts.push_back(i);
            column = 0;
        }
        if (i == view.cursor) atCursor();
        column += columns;
        i += character.length;
    }
    if (column >= width) {
        rows.starts.push_back(view.text.size());
        column = 0;
    }
    if (view.cursor >= view.text.size()) atCursor();
    rows.endColumn = column;
    return rows;
}

// A tab is one blank here, so that it has one place for the cursor.
std::string shown(std::u16string_view text) {
    std::u16string blanks(text);
    std::replace(blanks.begin(), blanks.end(), u'\t', u' ');
    return session::printable(utf8(blanks));
}

std::string tinted(const View& view, std::size_t from, std::size_t to) {
    std::string result;
    std::size_t start = 0;
    for (const Tint& tint : view.tints) {
        const std::size_t end = start + tint.units;
        const std::size_t first = std::max(start, from), last = std::min({end, to, view.text.size()});
        if (first < last) {
            result += std::string(tint.code) + shown(view.text.substr(first, last - first));
            if (!tint.code.empty()) result += reset;
        }
        start = end;
    }
    if (std::max(start, from) < to)
        result += shown(view.text.substr(std::max(start, from), to - std::max(start, from)));
    return result;
}

// As much of the text as a row has room for. The last column stays free, since a terminal that is written full may go
// on to the next row.
std::string clipped(const std::string& text, std::size_t width) {
    const std::u16string units = utf16(text);
    if (session::columnsOf(units) < width) return text;
    std::size_t end = 0, columns = 0;
    while (end < units.size()) {
        const session::Character character = session::characterAt(units, end);
        columns += session::columnsOf(character.code);
        if (columns + 2 > width) break;
        end += character.length;
    }
    return utf8(std::u16string_view(units).substr(0, end)) + "…";
}

std::string textRows(const View& view, const Rows& rows, std::size_t first, std::size_t last, std::size_t width) {
    std::string out;
    for (std::size_t row = first; row < last; ++row) {
        const std::size_t start = rows.starts[row];
        const std::size_t end = row + 1 < rows.starts.size() ? rows.starts[row + 1] : view.text.size();
        if (row > first && start == view.text.size()) out += " \r";  // makes the terminal begin the row
        if (row == 0) out += view.prompt;
        out += tinted(view, start, end);
        if (row + 1 == rows.starts.size()) continue;
        // A wide character that did not fit leaves a column, in which something may stand.
        const std::size_t columns =
            session::columnsOf(view.text.substr(start, end - start)) + (row == 0 ? view.prompt.size() : 0);
        if (columns < width) out += std::string(width - columns, ' ');
    }
    return out;
}

}  // namespace

std::string Frame::draw(const View& view, RawTerminal::Size size) {
    const Rows rows = rowsOf(view, size.columns);
    const std::size_t below = std::min(view.below.size(), size.rows - 1);
    // A line that takes more rows than the screen has is shown around the cursor.
    const std::size_t shownRows = std::min(rows.starts.size(), size.rows - below);
    const std::size_t first =
        std::min(rows.cursorRow - std::min(rows.cursorRow, shownRows / 2), rows.starts.size() - shownRows);
    const std::size_t last = first + shownRows;
    std::string out = moved(cursorRow_, 'A') + "\r" + textRows(view, rows, first, last, size.columns);
    if (last == rows.starts.size()) out += clearRow;
    for (std::size_t i = 0; i < below; ++i) {
        const ViewRow& row = view.below[i];
        out += "\r\n" + std::string(row.code) + clipped(row.text, size.columns);
        out += std::string(row.code.empty() ? std::string_view() : reset) + std::string(clearRow);
    }
    if (last == rows.starts.size() || below > 0) out += clearBelow;
    cursorRow_ = rows.cursorRow - first;
    const std::size_t lastRow = shownRows - 1 + below;
    return out + moved(lastRow - cursorRow_, 'A') + "\r" + moved(rows.cursorColumn, 'C');
}

std::string Frame::finish(const View& view, RawTerminal::Size size) {
    Rows rows = rowsOf(view, size.columns);
    if (rows.endColumn == 0 && rows.starts.size() > 1) rows.starts.pop_back();
    std::string out = moved(cursorRow_, 'A') + "\r" + textRows(view, rows, 0, rows.starts.size(), size.columns);
    if (rows.endColumn > 0) out += clearRow;
    cursorRow_ = 0;
    return out + "\r\n" + std::string(clearBelow);
}

void Frame::resized(const View& view, RawTerminal::Size size) {
    cursorRow_ = std::min(rowsOf(view, size.columns).cursorRow, size.rows - 1);
}

}  // namespace vemo::cli

// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "prompt/raw_terminal.h"

namespace vemo::cli {

// Units of a line that are shown alike.
struct Tint {
    std::size_t units = 0;
    std::string_view code;  // what turns it on; empty: nothing
};

// A row under the line, without anything that controls a terminal.
struct ViewRow {
    std::string text;
    std::string_view code;
};

// What an editor shows at one moment.
struct View {
    std::string_view prompt;  // of ASCII
    std::u16string_view text;
    std::size_t cursor = 0;
    std::vector<Tint> tints;  // of the text, from its beginning
    std::vector<ViewRow> below;
};

// Draws an edited line, over as many rows as it takes, and the rows under it: each view in place of the one before,
// and over it, so that nothing of it is gone for a moment.
class Frame {
public:
    // What is to be written for a view, in one piece.
    std::string draw(const View& view, RawTerminal::Size size);
    // What is to be written for a line that is done: all of it and nothing under it, with the cursor in the row after
    // it.
    std::string finish(const View& view, RawTerminal::Size size);
    // To be called for a terminal that has got another size since, and has broken its rows anew.
    void resized(const View& view, RawTerminal::Size size);
    // Nothing is on the screen any more.
    void forget() { cursorRow_ = 0; }

private:
    std::size_t cursorRow_ = 0;  // below the first row that was drawn
};

}  // namespace vemo::cli

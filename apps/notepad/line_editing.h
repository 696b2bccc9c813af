// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>

namespace vemo::notepad {

// What is done to the lines of the selection, or to that of the cursor: each is one step to undo.
enum class Direction { up, down };
void moveLines(QPlainTextEdit& page, Direction direction);
// Comments become lines again where all of them are comments.
void toggleComment(QPlainTextEdit& page);

// The first and the last line of a selection; one whose first unit is not in it does not count.
struct SelectedLines {
    int first = 0, last = 0;
};
SelectedLines selectedLines(const QTextCursor& cursor);

}  // namespace vemo::notepad

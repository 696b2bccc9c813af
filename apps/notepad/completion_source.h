// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>
#include <vector>

#include "notepad/line_list.h"
#include "vemo/completions.h"

namespace vemo::notepad {

// What may take the place of the last words before the cursor.
struct CompletionOffer {
    int typed = 0;  // units before the cursor
    std::vector<Completion> items;
};

// The names of the page come first, then the words that people type most. `least` units must have been typed. Nothing
// is offered in headers and comments, nor a word that is there already alone.
CompletionOffer completionsFor(const LineList& lines, int line, QStringView before, const Completions* vocabulary,
                               int least);

}  // namespace vemo::notepad

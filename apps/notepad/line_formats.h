// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QTextBlock>
#include <QTextLayout>

#include "notepad/theme.h"
#include "vemo/engine.h"

namespace vemo::notepad {

// How a line is written: the colours of its runs, larger headers, and a quiet underline below what notes are about.
// These are formats of the block's layout, not of the document, so that undo knows nothing of them.
using LineFormats = QList<QTextLayout::FormatRange>;

enum class Notes { marked, left };
LineFormats formatsOf(const VemoEngine::Result::Line& line, const Theme& theme, Notes notes = Notes::marked);

// The formats of a line in which so many units were replaced by others, until the engine has told of it.
LineFormats editedFormats(const LineFormats& formats, int start, int removed, int added);

// Sets the formats of a block, beside those of an input method at work. False when it has them already. The document is
// to be told by `markContentsDirty`.
bool setFormats(const QTextBlock& block, LineFormats formats);

}  // namespace vemo::notepad

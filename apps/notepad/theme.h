// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>
#include <cstdint>

#include "vemo/attributed_text.h"

namespace vemo::notepad {

enum class ThemeChoice : std::uint8_t { desktop, light, dark };

// The colours of a page.
struct Theme {
    QColor background, text, currentLine, divider, lineNumber;
    QColor answer, reason, hover, note, match;
    QColor number, unit, variable, function, operatorColor, parenthesis, comment, label, header, plain;

    QColor of(RunType type) const;

    static const Theme& light();
    static const Theme& dark();
    // The one that goes with the colours of widgets.
    static const Theme& matching(const QPalette& palette);
};

// Gives the whole application the choice's colours; those of the desktop are what it began with.
void applyTheme(ThemeChoice choice);

}  // namespace vemo::notepad

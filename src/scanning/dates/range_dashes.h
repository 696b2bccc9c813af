// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "scanning/dates/date_shapes.h"

namespace vemo {

// Turns every dash between the ends of a span into the word that joins them: "3-5pm", "9:30–17:00", "10-12 Uhr", "3-5
// December", "December 3-5". Where both ends are times and blanks stand around a minus, it stays a difference.
void readRangeDashes(const DateText& text, std::vector<DateLexeme>& lexemes);

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "scanning/dates/date_shapes.h"

namespace vemo {

// Makes the word between the ends of a span of every dash that is one: "3-5pm", "9:30–17:00", "10-12 Uhr",
// "3-5 December", "December 3-5". Where both ends are times with blanks around a minus, it stays a difference.
void readRangeDashes(const DateText& text, std::vector<DateLexeme>& lexemes);

}  // namespace vemo

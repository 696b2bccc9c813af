// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

#include "notepad/calculation.h"

namespace vemo::notepad {

using AnsweredLine = VemoEngine::Result::Line;

// The number alone, with all its digits and "." as its point; of a date, its instant. Empty for neither.
QString plainNumber(const AnsweredLine& line);

// An answer as a line can take it up: with more digits than are shown, where there are more.
QString valueText(Calculation& calculation, const AnsweredLine& line);

// What is told of an answer to those who want to know: the value in full, what was rounded, and how the line was read.
// As HTML; empty for a line without either answer or reason.
QString answerTip(const AnsweredLine& line, const std::optional<std::u16string>& reading);

}  // namespace vemo::notepad

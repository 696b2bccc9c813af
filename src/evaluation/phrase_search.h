// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "evaluation/phrase_pattern.h"

namespace vemo {

// The elements of each piece, where all of them together cover what is calculated in the line; of several ways, the one
// in which the first slots take least. Nothing for other lines, and for one that would take too many steps.
std::optional<std::vector<ElementRange>> searchedPieces(const PhrasePattern::Line& line,
                                                        const std::vector<PhrasePattern::Piece>& pieces);

}  // namespace vemo

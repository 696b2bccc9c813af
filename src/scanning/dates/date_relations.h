// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "scanning/dates/date_shapes.h"

namespace vemo {

// A reading and the lexemes that it takes.
struct PlacedReading {
    DateReading reading;
    std::size_t start;
    std::size_t end;
};

// The words between dates and durations. Tells the readings which of them end a span, and on which side of the present
// those lie whose text leaves that open.
std::vector<DateRelation> relationsOf(const DateText& text, std::vector<PlacedReading>& readings);

}  // namespace vemo

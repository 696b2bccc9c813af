// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>
#include <vector>

#include "vemo/documents.h"

namespace vemo {

// How much of a text no edit has touched: UTF-16 units at its beginning and at its end.
struct UntouchedEnds {
    std::size_t head = std::numeric_limits<std::size_t>::max();
    std::size_t tail = std::numeric_limits<std::size_t>::max();

    void touch(std::size_t before, std::size_t after) {
        head = std::min(head, before);
        tail = std::min(tail, after);
    }
};

// What turns the lines of an answer into those of the next one, whose text this is. Lines are compared with those that
// stand as far from an untouched end; between the ends, one by one where there are as many as before.
std::vector<VemoDocument::LineChange> lineChanges(const std::vector<VemoEngine::Result::Line>& before,
                                                  const std::vector<VemoEngine::Result::Line>& after,
                                                  std::u16string_view text, UntouchedEnds untouched);

}  // namespace vemo

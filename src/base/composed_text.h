// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace vemo {

// A text in which letters and the marks after them are one character, where there is one: some systems and programs
// write "é" as two.
struct ComposedText {
    std::u16string text;
    std::vector<std::size_t> places;  // of each unit, and of the end, in the text as it was given

    TextRange given(TextRange range) const {
        return {places[range.location], places[range.end()] - places[range.location]};
    }
};

// Nothing for a text without such marks, which is told quickly.
std::optional<ComposedText> composedText(std::u16string_view text);

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "vemo/attributed_text.h"

namespace vemo {

// What is stored of a calculated document: what is needed to show it, a line each.
struct VemoEngineResultSerializerResult {
    std::vector<AttributedText> attributedText;
    std::vector<FormattedValue> formattedResult;

    std::string encode() const;
    // Nothing when the bytes hold no such thing. The lists may differ in length.
    static std::optional<VemoEngineResultSerializerResult> decode(std::string bytes);
};

}  // namespace vemo

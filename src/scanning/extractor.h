// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "records/element.h"

namespace vemo {

class Context;

// Proposes tokens anywhere in a line without regard to other extractors. Keeps nothing from line to line.
class Extractor {
public:
    virtual ~Extractor() = default;
    virtual std::u16string_view name() const = 0;  // for the trace
    // Appends the candidates found in `text` to `result`.
    virtual void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const = 0;
};

}  // namespace vemo

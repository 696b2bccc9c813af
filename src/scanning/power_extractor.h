// SPDX-License-Identifier: MIT
#pragma once

#include "scanning/extractor.h"

namespace vemo {

// Raised digits after a number, a name or a bracket ("5\u00b2"), and the exclamation mark of a factorial right after
// one. Their elements carry "type" until the line is known.
class PowerExtractor : public Extractor {
public:
    std::u16string_view name() const override { return u"PowerExtractor"; }
    void extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const override;
};

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include "output/value_formatter.h"

namespace vemo {

// Durations: "1 h 30 min". The short text is that of the whole amount, "1.5 h".
class TimeFormatter : public ValueFormatter {
public:
    // Formats the components; must outlive this.
    explicit TimeFormatter(const ValueFormatter& decimalFormatter) : decimalFormatter_(decimalFormatter) {}
    std::optional<FormattedValue> format(const Value& value, Context& context) const override;

private:
    const ValueFormatter& decimalFormatter_;
};

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "vemo/attributed_text.h"
#include "vemo/context.h"
#include "vemo/value.h"

namespace vemo {

class ValueFormatter {
public:
    virtual ~ValueFormatter() = default;
    // Nothing when the formatter is not for this value. May record what the text depends on.
    virtual std::optional<FormattedValue> format(const Value& value, Context& context) const = 0;
};

}  // namespace vemo

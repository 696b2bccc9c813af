// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

#include "base/text.h"
#include "vemo/context.h"
#include "vemo/value.h"

namespace vemo {

class UnitConverter;

// Remarks on one operator applied to two values.
class OperationRemarks {
public:
    explicit OperationRemarks(const UnitConverter& unitConverter) : unitConverter_(unitConverter) {}

    // Records why there is no result, or none that is a number.
    void failed(std::u16string_view operatorId, const Value& left, const Value& right, Context& context) const;
    // Records what may surprise in the result of the part of the line in `range`.
    void applied(std::u16string_view operatorId, const Value& left, const Value& right, TextRange range,
                 Context& context) const;

private:
    // The quotient with the left quantity in the right one's unit; empty where they do not convert.
    Value convertedQuotient(const Value& left, const Value& right, Context& context) const;
    Value area(const Value& left, const Value& right, Context& context) const;

    const UnitConverter& unitConverter_;
};

}  // namespace vemo

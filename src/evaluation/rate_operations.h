// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/operation_collection.h"
#include "units/unit_converter.h"

namespace vemo {

// A rate and what it is told of: "$120/h * 15 min" is $30, "540 km / 90 km/h" is 6 h. Both decline where no rate is;
// where one is and the units don't go together, the result is not-a-number.

class RateMultiplicationOperation : public Operation {
public:
    explicit RateMultiplicationOperation(const UnitConverter& converter) : converter_(converter) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;

private:
    const UnitConverter& converter_;
};

class RateDivisionOperation : public Operation {
public:
    explicit RateDivisionOperation(const UnitConverter& converter) : converter_(converter) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;

private:
    const UnitConverter& converter_;
};

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include "evaluation/operation_collection.h"

namespace vemo {

class UnitConverter;

// Operations on plain numbers and quantities. Each declines operands without a number.

// The left operand in the right one's unit (as it is when it can't be converted) and the right one merged,
// so that the right operand's unit and marks win.
class DecimalAdditionOperation : public Operation {
public:
    explicit DecimalAdditionOperation(const UnitConverter& unitConverter) : unitConverter_(unitConverter) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;

private:
    const UnitConverter& unitConverter_;
};

// As addition; an empty left operand counts as 0, which makes the unary minus.
class DecimalSubtractionOperation : public Operation {
public:
    explicit DecimalSubtractionOperation(const UnitConverter& unitConverter) : unitConverter_(unitConverter) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;

private:
    const UnitConverter& unitConverter_;
};

// The right operand's unit wins, but for money, which stays money: "$42 * 35 h".
class DecimalMultiplicationOperation : public Operation {
public:
    explicit DecimalMultiplicationOperation(const UnitConverter& unitConverter) : unitConverter_(unitConverter) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;

private:
    const UnitConverter& unitConverter_;
};

// The result has no unit when the right operand has one.
class DecimalDivisionOperation : public Operation {
public:
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;
};

// The remaining operations keep the left operand's marks and ignore the right operand's.

// a - b × floor(a ÷ b): the result takes the sign of b.
class ModuloOperation : public Operation {
public:
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;
};

class ExponentOperation : public Operation {
public:
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;
};

// Adds the bitwise operations and shifts. The former work on 64 bits in two's complement, and are not-a-number where a
// number has more; what is whole but for rounding is whole, other fractions are dropped. Shifts work on signed 64-bit
// integers: a count above 63 counts as 63, a negative one is declined, and the right shift keeps the sign.
void registerBitOperations(OperationCollection& operations);

// "in": the left operand in the right one's unit, declined when it can't be converted; without a unit there, the right
// operand's marks (a numeral system) go to the left one.
class ConversionOperation : public Operation {
public:
    explicit ConversionOperation(const UnitConverter& unitConverter) : unitConverter_(unitConverter) {}
    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override;

private:
    std::u16string partsOf(std::u16string_view unit, std::u16string_view parts, Context& context) const;

    const UnitConverter& unitConverter_;
};

}  // namespace vemo

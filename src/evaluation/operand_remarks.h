// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "records/element.h"
#include "records/remarks.h"
#include "vemo/context.h"

namespace vemo {

// Remarks on the operands of a line. Told of each in order, it remarks on words where a value was expected, on
// operators that lack a side, and on values that take no part.
class OperandRemarks {
public:
    OperandRemarks(const ElementList& elements, std::size_t operands, Context& context)
        : elements_(elements), context_(context) {
        operands_.reserve(operands);
    }

    // Tells of the operand between two operators, or an operator and an end of the line: its elements, and the value
    // they gave, which has to stay where it is.
    void operand(std::size_t from, std::size_t to, const Value& value) { operands_.push_back({from, to, value}); }
    // Tells what an operand was reduced to, of which only the first value is used.
    void unusedValues(const ElementList& reduced);
    void finish();

private:
    struct Operand {
        std::size_t from, to;
        const Value& value;

        bool hasValue() const { return value.has(Attribute::decimal) || value.has(Attribute::date); }
        bool isBareNumber() const { return value.has(Attribute::decimal) && !value.has(Attribute::unit); }
        bool isZone() const { return value.has(Attribute::timeZone) && !value.has(Attribute::date); }
    };

    // Asked only where a remark depends on it, for most operands are numbers.
    bool hasWords(const Operand& operand) const;
    bool isBlank(const Operand& operand) const;
    bool isWord(const Operand& operand) const;  // one

    void atOperator(std::size_t index);
    void atPhrase(const Operand& left, const Operand& right, const Element& op);
    bool isSignOfNumber(std::size_t index) const;
    bool isHyphen(std::size_t index) const;
    void atConversion(const Operand& left, const Operand& right, bool last);
    void unknown(const Operand& operand, NoteKind kind);

    const ElementList& elements_;
    Context& context_;
    std::vector<Operand> operands_;
};

}  // namespace vemo

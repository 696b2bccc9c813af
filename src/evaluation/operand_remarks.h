// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "records/element.h"
#include "records/remarks.h"
#include "vemo/context.h"

namespace vemo {

// What there is to say about the operands of a line: told of each in order, it remarks on words where a value was
// expected, on operators that lack a side, and on values that take no part.
class OperandRemarks {
public:
    OperandRemarks(const ElementList& elements, Context& context) : elements_(elements), context_(context) {}

    // The operand between two operators, or an end of the line: those elements, and the value they gave.
    void operand(std::size_t from, std::size_t to, const Value& value);
    // What an operand was reduced to: its first value is used.
    void unusedValues(const ElementList& reduced);
    void finish();

private:
    struct Operand {
        std::size_t from, to;
        bool hasValue = false;      // a number or a date
        bool isBareNumber = false;  // a number without a unit
        bool isPercentage = false;
        bool isZone = false;   // a zone alone
        bool isEmpty = false;  // without any value
    };

    // Looked at only where a remark depends on it: most operands are numbers.
    bool hasWords(const Operand& operand) const;
    bool isBlank(const Operand& operand) const;
    bool isWord(const Operand& operand) const;  // one

    void atOperator(std::size_t index);
    void atPhrase(const Operand& left, const Operand& right, const Element& op);
    bool isHyphen(std::size_t index) const;
    void atConversion(const Operand& left, const Operand& right, bool last);
    void unknown(const Operand& operand, NoteKind kind);

    const ElementList& elements_;
    Context& context_;
    std::vector<Operand> operands_;
};

}  // namespace vemo

// SPDX-License-Identifier: MIT
#include "evaluation/operand_remarks.h"

#include <algorithm>

#include "records/remarks.h"

namespace vemo {

namespace {

bool isSymbol(const Element& element) {
    return element.attributedText.runs().begin()->type == RunType::operatorSymbol;
}

bool isPlain(const Element& element) {
    const auto& runs = element.attributedText.runs();
    return std::all_of(runs.begin(), runs.end(), [](const auto& run) { return run.type == RunType::none; });
}

}  // namespace

void OperandRemarks::operand(std::size_t from, std::size_t to, const Value& value) {
    Operand operand{from, to, !value.isEmpty(), false, true};
    for (std::size_t i = from; i < to; ++i) {
        const std::u16string& text = elements_[i].text();
        if (!trimmed(text).empty()) operand.isBlank = false;
        if (isPlain(elements_[i]) && std::any_of(text.begin(), text.end(), [](char16_t c) { return isLetter(c); }))
            operand.hasWords = true;
    }
    operands_.push_back(operand);
}

void OperandRemarks::unusedValues(const ElementList& reduced) {
    if (reduced.size() < 2 || !reduced[0].value.has(Attribute::decimal)) return;
    for (std::size_t i = 1; i < reduced.size(); ++i)
        if (reduced[i].value.has(Attribute::decimal))
            context_.remarks().note(NoteKind::unusedValue, reduced.trimmedRangeOf(i, i + 1));
}

void OperandRemarks::finish() {
    for (std::size_t i = 0; i + 1 < operands_.size(); ++i)
        atOperator(operands_[i], operands_[i + 1], i == 0, i + 2 == operands_.size());
}

void OperandRemarks::atOperator(const Operand& left, const Operand& right, bool first, bool last) {
    const Element& op = elements_[left.to];
    const auto range = [&](const Operand& operand) { return elements_.trimmedRangeOf(operand.from, operand.to); };
    const auto unknown = [&](const Operand& operand) {
        const std::u16string words = elements_.slice(operand.from, operand.to).text();
        context_.remarks().note(NoteKind::unknownWord, range(operand), trimmed(words));
    };
    if (isSymbol(op)) {
        const bool sign = op.value.is(Attribute::operation, u"-") || op.value.is(Attribute::operation, u"+");
        const bool missing =
            (last && right.isBlank && left.hasValue) || (first && left.isBlank && !sign && right.hasValue);
        if (missing) context_.remarks().note(NoteKind::missingOperand, elements_.rangeOf(left.to, left.to + 1));
        if (!left.hasValue && left.hasWords && right.hasValue) unknown(left);
        if (!right.hasValue && right.hasWords && left.hasValue) unknown(right);
    } else if (op.value.is(Attribute::operation, u"in") && left.hasValue && !right.hasValue && right.hasWords) {
        // One word in lower case may be a unit misspelt; "5 km in Berlin" and "10 km in the park" are prose.
        const std::u16string words = elements_.slice(right.from, right.to).text();
        const std::u16string_view word = trimmed(words);
        if (word.find(u' ') == word.npos && lowercased(word) == word)
            context_.remarks().note(NoteKind::notConverted, elements_.trimmedRangeOf(left.to, right.to), word);
    }
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#include "evaluation/operand_remarks.h"

#include <algorithm>

#include "evaluation/date_relation_operations.h"
#include "evaluation/element_tests.h"

namespace vemo {

namespace {

bool isSymbol(const Element& element) {
    return element.attributedText.runs().begin()->type == RunType::operatorSymbol;
}

bool isSign(const Element& op) {
    return op.value.is(Attribute::operation, u"-") || op.value.is(Attribute::operation, u"+");
}

bool isPlain(const Element& element) {
    const auto& runs = element.attributedText.runs();
    return std::all_of(runs.begin(), runs.end(), [](const auto& run) { return run.type == RunType::none; });
}

}  // namespace

bool OperandRemarks::hasWords(const Operand& operand) const {
    for (std::size_t i = operand.from; i < operand.to; ++i) {
        const std::u16string& text = elements_[i].text();
        if (isPlain(elements_[i]) && hasLetter(text)) return true;
    }
    return false;
}

bool OperandRemarks::isBlank(const Operand& operand) const {
    if (!operand.value.isEmpty()) return false;
    for (std::size_t i = operand.from; i < operand.to; ++i)
        if (!trimmed(elements_[i].text()).empty()) return false;
    return true;
}

bool OperandRemarks::isWord(const Operand& operand) const {
    return operand.to == operand.from + 1 &&
           trimmed(elements_[operand.from].text()).find(u' ') == std::u16string_view::npos;
}

void OperandRemarks::unusedValues(const ElementList& reduced) {
    if (reduced.size() < 2 || !reduced[0].value.has(Attribute::decimal)) return;
    for (std::size_t i = 1; i < reduced.size(); ++i)
        if (reduced[i].value.has(Attribute::decimal))
            remarksOf(context_).note(NoteKind::unusedValue, reduced.trimmedRangeOf(i, i + 1));
}

void OperandRemarks::finish() {
    for (std::size_t i = 0; i + 1 < operands_.size(); ++i) atOperator(i);
}

void OperandRemarks::unknown(const Operand& operand, NoteKind kind) {
    std::size_t from = operand.from, to = operand.to;
    const auto isBeside = [&](std::size_t i) {
        const RunType type = runTypeOf(elements_[i]);
        return type == RunType::label || type == RunType::comment;
    };
    for (std::size_t i = from; i < to; ++i)
        if (isBeside(i)) (i == from ? from : to) = i == from ? i + 1 : i;
    const std::u16string words = elements_.slice(from, to).text();
    remarksOf(context_).note(kind, elements_.trimmedRangeOf(from, to), trimmed(words));
}

void OperandRemarks::atOperator(std::size_t index) {
    const Operand& left = operands_[index];
    const Operand& right = operands_[index + 1];
    const bool last = index + 2 == operands_.size();
    const Element& op = elements_[left.to];
    if (op.value.is(Attribute::operation, u"in")) return atConversion(left, right, last);
    if (isDateRelation(*op.value.string(Attribute::operation))) return;  // most have one operand
    if (!isSymbol(op)) {
        // "2 x ^2": the word is an operator, and so is what follows it.
        const bool doubled =
            !last && isBlank(right) && left.hasValue() && isSymbol(elements_[right.to]) && !isSign(elements_[right.to]);
        if (doubled) remarksOf(context_).note(NoteKind::missingOperand, elements_.rangeOf(left.to, left.to + 1));
        return last ? atPhrase(left, right, op) : void();
    }
    if ((left.hasValue() && right.hasValue()) || isHyphen(left.to)) return;
    const bool signFollows = !last && isSign(elements_[right.to]);
    const bool missing = (isBlank(right) && !signFollows && left.hasValue()) ||
                         (index == 0 && isBlank(left) && !isSign(op) && right.hasValue());
    if (missing) remarksOf(context_).note(NoteKind::missingOperand, elements_.rangeOf(left.to, left.to + 1));
    if (!left.hasValue() && hasWords(left) && right.hasValue() && !isSignOfNumber(left.to))
        unknown(left, NoteKind::unknownWord);
    if (!right.hasValue() && hasWords(right) && left.hasValue()) unknown(right, NoteKind::unknownWord);
}

// "20% off" and "15 as % of", and nothing that it is off or of; "8% of subtotal", which has no value.
void OperandRemarks::atPhrase(const Operand& left, const Operand& right, const Element& op) {
    if (hasWords(left) || !left.hasValue() || right.hasValue() ||
        (takesPercentage(op.value) && !left.value.is(Attribute::unit, u"percent")))
        return;
    if (isBlank(right))
        remarksOf(context_).note(NoteKind::missingOperand, elements_.rangeOf(left.to, left.to + 1));
    else if (isWord(right))
        unknown(right, NoteKind::unknownWord);
}

// True for a sign inside a word: "free-range eggs".
bool OperandRemarks::isHyphen(std::size_t index) const {
    if (index == 0 || index + 1 >= elements_.size()) return false;
    const std::u16string& before = elements_[index - 1].text();
    const std::u16string& after = elements_[index + 1].text();
    return isPlain(elements_[index - 1]) && isPlain(elements_[index + 1]) && !before.empty() && !after.empty() &&
           isLetter(before.back()) && isLetter(after.front());
}

// True for a sign that belongs to the number after it: "refund -$15".
bool OperandRemarks::isSignOfNumber(std::size_t index) const {
    return index > 0 && isSign(elements_[index]) && endsWithBlank(elements_[index - 1]) &&
           index + 1 < elements_.size() && !elements_[index + 1].value.isEmpty();
}

void OperandRemarks::atConversion(const Operand& left, const Operand& right, bool last) {
    if (!left.hasValue()) return;
    // "14:00 XQT in London": no known zone.
    if (right.isZone() && left.to > left.from + 1 && isPlain(elements_[left.to - 1])) {
        const std::u16string_view word = trimmed(elements_[left.to - 1].text());
        if (word.size() > 1 && std::all_of(word.begin(), word.end(), [](char16_t c) { return c >= u'A' && c <= u'Z'; }))
            remarksOf(context_).note(NoteKind::unknownWord, elements_.trimmedRangeOf(left.to - 1, left.to), word);
    }
    if (last && isBlank(right)) {
        remarksOf(context_).note(NoteKind::missingOperand, elements_.rangeOf(left.to, left.to + 1));
    } else if (hasWords(right)) {
        if (!right.value.isEmpty()) return;  // "5インチをcmに": the words say no more
        // One word in small letters or capitals may be a unit misspelt; "5 km in Berlin" and "in the park" are prose.
        const std::u16string words = elements_.slice(right.from, right.to).text();
        const std::u16string_view word = trimmed(words);
        const std::u16string lower = lowercased(word);
        const bool oneCase = lower == word || lowercased(word.substr(1, 1)) != word.substr(1, 1);
        if (word.find(u' ') == word.npos && oneCase) unknown(right, NoteKind::notConverted);
    } else if (left.isBareNumber() && hasWords(left) && !isBlank(right)) {
        unknown(left, NoteKind::notConverted);
    }
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "base/text.h"
#include "platform/locale_info.h"
#include "records/element.h"

namespace vemo {

// What evaluators ask about the elements of a line before they are reduced.

inline bool isOperator(const Element& element, std::u16string_view id) {
    return element.value.is(Attribute::operation, id);
}

inline bool isNumberWithoutUnit(const Element& element) {
    return element.value.has(Attribute::decimal) && !element.value.has(Attribute::unit);
}

inline bool isUnitAlone(const Element& element) {
    return element.value.has(Attribute::unit) && !element.value.has(Attribute::decimal);
}

inline bool isBlank(const Element& element) {
    return element.value.isEmpty() && trimmed(element.text()).empty();
}

// An element may have no text: a sign that nobody wrote.
inline bool endsWithBlank(const Element& element) {
    return !element.text().empty() && isWhitespace(element.text().back());
}
inline bool beginsWithBlank(const Element& element) {
    return !element.text().empty() && isWhitespace(element.text().front());
}

inline RunType runTypeOf(const Element& element) {
    return element.attributedText.elementsCount() > 0 ? element.attributedText.runs()[0].type : RunType::none;
}

// Digits alone.
inline bool isWholeNumber(const Element& element) {
    const std::u16string& text = element.text();
    return isNumberWithoutUnit(element) && runTypeOf(element) == RunType::number &&
           std::all_of(text.begin(), text.end(), [](char16_t c) { return digitValue(c) >= 0; });
}

// A time of day as it was written: no result of a function or of a calculation.
inline bool isWrittenTime(const Element& element) {
    return element.value.is(Attribute::precision, u"time") && runTypeOf(element) == RunType::number;
}

// Words that mean nothing to the calculation; labels, comments and headers are none.
inline bool isPlainWords(const Element& element) {
    return element.value.isEmpty() && runTypeOf(element) == RunType::none && hasLetter(element.text());
}

inline bool hasPlainWords(const ElementList& elements) {
    const auto& all = elements.pointers();
    return std::any_of(all.begin(), all.end(), [](const ElementPointer& e) { return isPlainWords(*e); });
}

// The next element in a direction that is no blank; their number without one.
inline std::size_t neighbourOf(const ElementList& elements, std::size_t index, int step) {
    const auto offset = static_cast<std::size_t>(step);
    for (index += offset; index < elements.size(); index += offset)
        if (!isBlank(elements[index])) return index;
    return elements.size();
}

// The last element that is neither a blank nor a comment; their number without one.
inline std::size_t lastWritten(const ElementList& elements) {
    const std::size_t last = neighbourOf(elements, elements.size(), -1);
    const bool comment = last < elements.size() && runTypeOf(elements[last]) == RunType::comment;
    return comment ? neighbourOf(elements, last, -1) : last;
}

// What is calculated begins there: after labels and names that are assigned to.
inline std::size_t startOfValue(const ElementList& elements) {
    std::size_t start = 0;
    for (std::size_t i = 0; i < elements.size(); ++i)
        if (runTypeOf(elements[i]) == RunType::label || elements[i].value.has(Attribute::assignment)) start = i + 1;
    return start;
}

// Where the words of a line begin: after its label, and a name that is assigned to.
inline std::size_t startOfWords(const ElementList& elements) {
    const std::size_t value = startOfValue(elements), last = lastWritten(elements);
    std::size_t i = last < elements.size() && last >= value ? value : 0;
    for (; i < elements.size(); ++i) {
        const RunType type = runTypeOf(elements[i]);
        if (!isBlank(elements[i]) && type != RunType::label && type != RunType::comment) break;
    }
    return i;
}

// True for what stands for a value, or begins one: a number, a date, a unit or sign of money, a function, a bracket.
inline bool beginsValue(const ElementList& elements, std::size_t index) {
    if (index >= elements.size()) return false;
    const Value& value = elements[index].value;
    return value.has(Attribute::decimal) || value.has(Attribute::date) || value.has(Attribute::unit) ||
           value.has(Attribute::function) || value.is(Attribute::parenthesis, u"(");
}

// The same after "of", where one word may stand before the value: "half of the $90 bill".
inline bool beginsWhole(const ElementList& elements, std::size_t of) {
    std::size_t next = neighbourOf(elements, of, 1);
    if (next < elements.size() && isPlainWords(elements[next]) &&
        trimmed(elements[next].text()).find(u' ') == std::u16string_view::npos)
        next = neighbourOf(elements, next, 1);
    return beginsValue(elements, next);
}

}  // namespace vemo

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

// True for "of", "on" and "off" after a percentage.
inline bool takesPercentage(const Value& op) {
    const auto id = op.string(Attribute::operation);
    return id && (*id == u"percent_of" || *id == u"percent_on" || *id == u"percent_off");
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

// These ask first whether there is a text: an operator that nobody wrote has none.
inline bool endsWithBlank(const Element& element) {
    return !element.text().empty() && isWhitespace(element.text().back());
}
inline bool beginsWithBlank(const Element& element) {
    return !element.text().empty() && isWhitespace(element.text().front());
}

inline RunType runTypeOf(const Element& element) {
    return element.attributedText.elementsCount() > 0 ? element.attributedText.runs()[0].type : RunType::none;
}

// True for a number written in digits alone.
inline bool isWholeNumber(const Element& element) {
    const std::u16string& text = element.text();
    return isNumberWithoutUnit(element) && runTypeOf(element) == RunType::number &&
           std::all_of(text.begin(), text.end(), [](char16_t c) { return digitValue(c) >= 0; });
}

// True for a time of day that was written, not the result of a function or of a calculation.
inline bool isWrittenTime(const Element& element) {
    return element.value.is(Attribute::precision, u"time") && runTypeOf(element) == RunType::number;
}

// True for words that mean nothing to the calculation, but not for labels, comments and headers.
inline bool isPlainWords(const Element& element) {
    return element.value.isEmpty() && runTypeOf(element) == RunType::none && hasLetter(element.text());
}

inline bool hasPlainWords(const ElementList& elements) {
    const auto& all = elements.pointers();
    return std::any_of(all.begin(), all.end(), [](const ElementPointer& e) { return isPlainWords(*e); });
}

// The same from a place on, or an operator that is a word.
inline bool hasWords(const ElementList& elements, std::size_t from) {
    for (std::size_t i = from; i < elements.size(); ++i)
        if (isPlainWords(elements[i]) || (elements[i].value.has(Attribute::operation) && hasLetter(elements[i].text())))
            return true;
    return false;
}

// The next element in a direction, `step` being 1 or -1, that is no blank; the number of elements when there is none.
inline std::size_t neighbourOf(const ElementList& elements, std::size_t index, int step) {
    const auto offset = static_cast<std::size_t>(step);
    for (index += offset; index < elements.size(); index += offset)
        if (!isBlank(elements[index])) return index;
    return elements.size();
}

// The last element that is neither a blank nor a comment; the number of elements when there is none.
inline std::size_t lastWritten(const ElementList& elements) {
    const std::size_t last = neighbourOf(elements, elements.size(), -1);
    const bool comment = last < elements.size() && runTypeOf(elements[last]) == RunType::comment;
    return comment ? neighbourOf(elements, last, -1) : last;
}

// Where the part begins that is calculated: after labels and names that are assigned to.
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

// True when such a value follows "of", with one word before it at the most: "half of the $90 bill".
inline bool beginsWhole(const ElementList& elements, std::size_t of) {
    std::size_t next = neighbourOf(elements, of, 1);
    if (next < elements.size() && isPlainWords(elements[next]) &&
        trimmed(elements[next].text()).find(u' ') == std::u16string_view::npos)
        next = neighbourOf(elements, next, 1);
    return beginsValue(elements, next);
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#include "records/element.h"

#include <algorithm>
#include <cassert>

namespace vemo {

namespace {

std::u16string number(std::int64_t value) {
    return toUtf16(std::to_string(value));
}

std::u16string braceForm(TextRange range) {
    std::u16string result = u"{";
    result += number(static_cast<std::int64_t>(range.location));
    result += u", ";
    result += number(static_cast<std::int64_t>(range.length));
    return result += u"}";
}

}  // namespace

std::u16string Element::description() const {
    return u"Element: {\n" + indentLines(u"value: " + value.description()) +
           indentLines(u"attributedText: " + attributedText.description()) + u"}";
}

ElementList ElementList::slice(std::size_t from, std::size_t to) const {
    assert(from <= to && to <= size());
    ElementList result(
        {elements_.begin() + static_cast<std::ptrdiff_t>(from), elements_.begin() + static_cast<std::ptrdiff_t>(to)});
    result.location_ = location_ + unitsBefore(from);
    return result;
}

std::size_t ElementList::unitsBefore(std::size_t index) const {
    if (index < seenIndex_) seenIndex_ = seenUnits_ = 0;
    for (; seenIndex_ < index; ++seenIndex_) seenUnits_ += elements_[seenIndex_]->text().size();
    return seenUnits_;
}

TextRange ElementList::rangeOf(std::size_t from, std::size_t to) const {
    TextRange range{location_ + unitsBefore(from), 0};
    for (std::size_t i = from; i < to; ++i) range.length += elements_[i]->text().size();
    return range;
}

void ElementList::collectMasks() {
    attributes_ = 0;
    for (const ElementPointer& element : elements_) addMask(*element);
}

AttributedText ElementList::attributedText(std::size_t from, std::size_t to) const {
    assert(from <= to && to <= size());
    AttributedText result;
    std::size_t length = 0;
    std::size_t runs = 0;
    for (std::size_t i = from; i < to; ++i) {
        length += elements_[i]->text().size();
        runs += elements_[i]->attributedText.elementsCount();
    }
    result.reserve(length, runs);
    for (std::size_t i = from; i < to; ++i) result.append(elements_[i]->attributedText);
    return result;
}

std::u16string ElementList::text() const {
    std::size_t length = 0;
    for (const ElementPointer& element : elements_) length += element->text().size();
    std::u16string result;
    result.reserve(length);
    for (const ElementPointer& element : elements_) result += element->text();
    return result;
}

TextRange ElementList::trimmedRangeOf(std::size_t from, std::size_t to) const {
    const TextRange range = rangeOf(from, to);
    const std::u16string text = slice(from, to).text();
    const std::u16string_view inner = trimmed(text);
    if (inner.empty()) return {range.location, 0};
    return {range.location + static_cast<std::size_t>(inner.data() - text.data()), inner.size()};
}

void ElementList::replace(std::size_t location, std::size_t length, ElementPointer element) {
    assert(location + length <= size());
    seenIndex_ = seenUnits_ = 0;
    const auto start = elements_.begin() + static_cast<std::ptrdiff_t>(location);
    if (length == 0) {
        elements_.insert(start, std::move(element));
    } else {
        *start = std::move(element);
        elements_.erase(start + 1, start + static_cast<std::ptrdiff_t>(length));
    }
    collectMasks();
}

std::u16string ElementList::description() const {
    std::u16string result = u"ElementList: {\n";
    for (const ElementPointer& element : elements_) result += indentLines(element->description() + u",\n");
    return result;
}

std::u16string ElementList::shortDescription() const {
    std::u16string result;
    for (const ElementPointer& element : elements_) {
        if (&element != &elements_.front()) result += u",";
        result += element->value.shortDescription();
    }
    return result;
}

bool operator==(const ElementList& a, const ElementList& b) {
    return std::equal(a.elements_.begin(), a.elements_.end(), b.elements_.begin(), b.elements_.end(),
                      [](const auto& x, const auto& y) { return *x == *y; });
}

std::u16string Extraction::description() const {
    return u"Extraction: {\n" + indentLines(u"range:" + braceForm(range) + u"\n") +
           indentLines(u"element:" + element->description() + u"\n") +
           indentLines(u"priority:" + number(priority) + u"\n") +
           indentLines(u"secondary priority:" + number(secondaryPriority) + u"\n") + u"}";
}

std::u16string Extraction::shortDescription() const {
    return u"Extraction: {range:" + braceForm(range) + u",element:" + element->value.shortDescription() + u"priority:" +
           number(priority) + u",secondary priority:" + number(secondaryPriority) + u",}";
}

}  // namespace vemo

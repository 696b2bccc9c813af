// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "vemo/attributed_text.h"
#include "vemo/value.h"

namespace vemo {

// A token of a line: what it means and the text it covers.
struct Element {
    Value value;
    AttributedText attributedText;

    Element() = default;
    Element(Value v, AttributedText text) : value(std::move(v)), attributedText(std::move(text)) {}

    const std::u16string& text() const { return attributedText.compoundString(); }
    std::u16string description() const;
    friend bool operator==(const Element&, const Element&) = default;
};

using ElementPointer = std::shared_ptr<const Element>;

inline ElementPointer makeElement(Value value, AttributedText text) {
    return std::make_shared<const Element>(std::move(value), std::move(text));
}

// The tokens of a line in text order. Copying shares the elements.
class ElementList {
public:
    ElementList() = default;
    explicit ElementList(std::vector<ElementPointer> elements) : elements_(std::move(elements)) { collectMasks(); }

    bool empty() const { return elements_.empty(); }
    std::size_t size() const { return elements_.size(); }
    const Element& operator[](std::size_t index) const { return *elements_[index]; }
    const std::vector<ElementPointer>& pointers() const { return elements_; }
    ElementList slice(std::size_t from, std::size_t to) const;
    // Where the list begins in its line, in UTF-16 units; slices know theirs.
    std::size_t location() const { return location_; }
    void setLocation(std::size_t location) { location_ = location; }
    // The part of the line that the elements cover.
    TextRange rangeOf(std::size_t from, std::size_t to) const;
    // The same without white space at either end.
    TextRange trimmedRangeOf(std::size_t from, std::size_t to) const;

    // The attributes that any of the elements carries, as in `Value::mask`: a cheap test before a search for a pattern.
    std::uint16_t attributes() const { return attributes_; }
    bool anyHas(Attribute key) const { return (attributes_ & Value::bit(key)) != 0; }

    AttributedText attributedText() const { return attributedText(0, size()); }
    AttributedText attributedText(std::size_t from, std::size_t to) const;

    std::u16string text() const;

    void reserve(std::size_t elements) { elements_.reserve(elements); }
    void append(ElementPointer element) {
        addMask(*element);
        elements_.push_back(std::move(element));
    }
    // Puts one element in place of `length` elements; a length of 0 inserts.
    void replace(std::size_t location, std::size_t length, ElementPointer element);

    std::u16string description() const;
    std::u16string shortDescription() const;
    friend bool operator==(const ElementList& a, const ElementList& b);

private:
    void addMask(const Element& element) {
        attributes_ = static_cast<std::uint16_t>(attributes_ | element.value.mask());
    }
    void collectMasks();
    std::size_t unitsBefore(std::size_t index) const;

    std::vector<ElementPointer> elements_;
    std::uint16_t attributes_ = 0;
    std::size_t location_ = 0;
    // Where the element begins that was asked for latest: the next question is mostly about one after it.
    mutable std::size_t seenIndex_ = 0;
    mutable std::size_t seenUnits_ = 0;
};

// A candidate token: where several overlap, the higher priority wins, then the longer one, then the higher
// secondary priority, then the one further left.
struct Extraction {
    TextRange range;
    std::int64_t priority = 0;
    std::int64_t secondaryPriority = 0;
    ElementPointer element;

    std::u16string description() const;
    std::u16string shortDescription() const;
    friend bool operator==(const Extraction& a, const Extraction& b) {
        return a.range == b.range && a.priority == b.priority && a.secondaryPriority == b.secondaryPriority &&
               *a.element == *b.element;
    }
};

}  // namespace vemo

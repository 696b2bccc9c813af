// SPDX-License-Identifier: MIT
// Lists of elements against plain vectors: what is replaced, what is taken over, and where each part stands in its
// line.

#include "evaluation/element_replacement.h"

#include "support/calculators.h"
#include "support/laws.h"

namespace vemo::test {
namespace {

using Texts = std::vector<std::u16string>;

Texts textsOf(const ElementList& list) {
    Texts texts;
    for (const ElementPointer& element : list.pointers()) texts.push_back(element->text());
    return texts;
}

ElementPointer anyElement() {
    constexpr std::u16string_view texts[] = {u"a", u"", u"  ", u"word", u" x ", u"\U0001f600"};
    const Value values[] = {Value(), Value(DecimalNumber::fromInt64(3)), Value(Attribute::unit, u"m"),
                            Value(Attribute::operation, u"+")};
    const std::u16string_view text = anyRow(texts);
    return makeElement(anyRow(values), AttributedText(text));
}

ElementList anyList() {
    ElementList list;
    for (int i = anyOf(0, 8); i > 0; --i) list.append(anyElement());
    return list;
}

std::uint16_t attributesOf(const ElementList& list) {
    std::uint16_t mask = 0;
    for (const ElementPointer& element : list.pointers())
        mask = static_cast<std::uint16_t>(mask | element->value.mask());
    return mask;
}

TEST(ElementLaws, replacedRangesGiveWay) {
    holds([] {
        const ElementList list = anyList();
        ElementReplacer replacer(list);
        std::vector<ElementPointer> expected;
        bool changed = false;
        for (std::size_t i = 0; i < list.size();) {
            const auto length = std::size_t(anyOf(0, int(list.size() - i)));
            const bool replaces = anyOf(0, 1) == 1;
            if (replaces) {
                changed = true;
                ElementList& result = replacer.replace({i, length});
                for (int k = anyOf(0, 2); k > 0; --k) {
                    expected.push_back(anyElement());
                    result.append(expected.back());
                }
                i += length;
            }
            if (i < list.size() && (!replaces || length == 0)) expected.push_back(list.pointers()[i++]);
        }
        RC_ASSERT(replacer.changed() == changed);
        const auto result = replacer.finished();
        RC_ASSERT(result.has_value() == changed);
        if (!result) return;
        RC_ASSERT(result->pointers() == expected);
        RC_ASSERT(result->attributes() == attributesOf(*result));
    });
}

TEST(ElementLaws, placesAreThoseInTheLine) {
    holds([] {
        ElementList list = anyList();
        const auto start = std::size_t(anyOf(0, 20));
        list.setLocation(start);
        const std::u16string line = std::u16string(start, u'.') + list.text();
        // Asked in any order.
        for (int i = 0; i < 6; ++i) {
            const auto from = std::size_t(anyOf(0, int(list.size()))),
                       to = std::size_t(anyOf(int(from), int(list.size())));
            const ElementList slice = list.slice(from, to);
            RC_ASSERT(list.rangeOf(from, to).in(line) == slice.text());
            RC_ASSERT(slice.location() == list.rangeOf(from, to).location);
            RC_ASSERT(slice.attributes() == attributesOf(slice));
            RC_ASSERT(list.attributedText(from, to).compoundString() == slice.text());
            const TextRange trimmedRange = list.trimmedRangeOf(from, to);
            RC_ASSERT(trimmedRange.in(line) == trimmed(slice.text()));
            const auto inner = std::size_t(anyOf(0, int(slice.size())));
            RC_ASSERT(slice.rangeOf(0, inner) == list.rangeOf(from, from + inner));
        }
    });
}

TEST(ElementLaws, oneElementTakesThePlaceOfSeveral) {
    holds([] {
        ElementList list = anyList();
        const auto location = std::size_t(anyOf(0, int(list.size())));
        const auto length = std::size_t(anyOf(0, int(list.size() - location)));
        const ElementPointer element = anyElement();
        Texts expected = textsOf(list);
        const auto at = expected.begin() + static_cast<std::ptrdiff_t>(location);
        expected.insert(expected.erase(at, at + static_cast<std::ptrdiff_t>(length)), element->text());
        list.rangeOf(0, list.size());  // remembers a place
        list.replace(location, length, element);
        RC_ASSERT(textsOf(list) == expected);
        RC_ASSERT(list.attributes() == attributesOf(list));
        RC_ASSERT(list.rangeOf(0, list.size()).length == list.text().size());
    });
}

}  // namespace
}  // namespace vemo::test

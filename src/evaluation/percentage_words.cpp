// SPDX-License-Identifier: MIT
#include "evaluation/percentage_words.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

// Whole words only, where a script parts them.
bool holdsAny(std::u16string_view text, const std::vector<std::u16string>& words) {
    const std::u16string lower = lowercased(text);
    const auto isInside = [&](const std::u16string& word) {
        return isCjk(word.front()) && lower.find(word) != lower.npos;
    };
    if (std::any_of(words.begin(), words.end(), isInside)) return true;
    for (std::size_t i = 0, end = 0; i < lower.size(); i = end + 1) {
        for (end = i; end < lower.size() && isLetter(lower[end]);) ++end;
        const std::u16string_view word = std::u16string_view(lower).substr(i, end - i);
        if (std::find(words.begin(), words.end(), word) != words.end()) return true;
    }
    return false;
}

}  // namespace

PercentageWords::PercentageWords(const Localizer& localizer)
    : applying_(localizer.variants(u"percentage.variants", u"Operations")),
      discounts_(localizer.variants(u"discount.variants", u"Operations")),
      including_(localizer.variants(u"including.variants", u"Operations")),
      moreThan_(localizer.variants(u"more_than.variants", u"Operations")),
      lessThan_(localizer.variants(u"less_than.variants", u"Operations")) {}

bool PercentageWords::mayApply(const ElementList& elements) const {
    bool words = false;
    for (const ElementPointer& element : elements.pointers()) {
        if (!isPlainWords(*element)) continue;
        if (holdsAny(element->text(), applying_) || isIncluding(element->text())) return true;
        words = true;
    }
    return !words;
}

bool PercentageWords::isDiscount(std::u16string_view text) const {
    return holdsAny(text, discounts_);
}

bool PercentageWords::isIncluding(std::u16string_view text) const {
    return holdsAny(text, including_);
}

std::u16string_view PercentageWords::comparison(std::u16string_view words) const {
    const std::u16string text = spoken(words);
    const auto isAmong = [&](const std::vector<std::u16string>& relations) {
        return std::find(relations.begin(), relations.end(), text) != relations.end();
    };
    return isAmong(moreThan_) ? u"percent_on" : isAmong(lessThan_) ? u"percent_off" : u"";
}

}  // namespace vemo

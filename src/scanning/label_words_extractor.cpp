// SPDX-License-Identifier: MIT
#include "scanning/label_words_extractor.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "records/context_map.h"
#include "scanning/extraction_priorities.h"

namespace vemo {

namespace {

struct Bound {
    TextRange range;
    bool sign = false;   // that calculates with both sides
    bool leads = false;  // to the words after it, where a percentage stands before
    bool divides = false, subtracts = false;
};

bool isSign(const Element& element) {
    constexpr std::u16string_view signs[] = {u"+", u"-", u"*", u"/", u"^"};
    const auto id = element.value.string(Attribute::operation);
    return id && !hasLetter(element.text()) && std::find(std::begin(signs), std::end(signs), *id) != std::end(signs);
}

bool isRemark(const Element& element) {
    const RunType type = runTypeOf(element);
    return type == RunType::comment || type == RunType::label || type == RunType::header;
}

// What an operand ends at, from the left to the right.
std::vector<Bound> boundsOf(const std::vector<Extraction>& found) {
    std::vector<Bound> bounds;
    bounds.reserve(found.size());
    for (const Extraction& extraction : found) {
        const Element& element = *extraction.element;
        if (element.value.has(Attribute::decimal)) continue;
        const Bound bound{extraction.range, isSign(element), takesPercentage(element.value), isOperator(element, u"/"),
                          isOperator(element, u"-")};
        if (bound.sign || bound.leads || element.value.has(Attribute::parenthesis) || isRemark(element))
            bounds.push_back(bound);
    }
    std::sort(bounds.begin(), bounds.end(),
              [](const Bound& a, const Bound& b) { return a.range.location < b.range.location; });
    return bounds;
}

// What stands in a stretch of the line.
struct Contents {
    bool values = false, unitAtEnd = false, unitWhole = false;
    bool percent = false, measured = false;  // a number has such a unit, or another one
};

Contents contentsOf(const std::vector<Extraction>& found, TextRange stretch) {
    Contents contents;
    for (const Extraction& extraction : found) {
        if (extraction.range.location >= stretch.end() || extraction.range.end() <= stretch.location) continue;
        const Value& value = extraction.element->value;
        const bool unit = isUnitAlone(*extraction.element);
        const bool percent = value.is(Attribute::unit, u"percent");
        contents.percent = contents.percent || percent;
        contents.measured = contents.measured || (value.has(Attribute::unit) && !percent);
        contents.unitAtEnd = contents.unitAtEnd || (unit && extraction.range.end() == stretch.end());
        contents.unitWhole = contents.unitWhole || (unit && extraction.range == stretch);
        contents.values = contents.values || value.has(Attribute::decimal) || value.has(Attribute::date) ||
                          value.has(Attribute::function) || value.has(Attribute::operation) ||
                          value.has(Attribute::assignment);
    }
    return contents;
}

}  // namespace

void LabelWordsExtractor::extract(const std::u16string& text, Context& context, std::vector<Extraction>& result) const {
    const bool calculated = hasLetter(text) && std::any_of(result.begin(), result.end(), [](const Extraction& found) {
                                return isSign(*found.element) || takesPercentage(found.element->value);
                            });
    if (!calculated) return;
    const std::vector<Bound> bounds = boundsOf(result);
    const auto signs = std::count_if(bounds.begin(), bounds.end(), [](const Bound& bound) { return bound.sign; });
    std::vector<Extraction> words;
    std::size_t from = 0;
    TextRange before;  // the operand before
    for (std::size_t i = 0; i <= bounds.size(); ++i) {
        const std::size_t to = i < bounds.size() ? bounds[i].range.location : text.size();
        if (to < from) continue;
        const std::u16string_view inner = trimmed(std::u16string_view(text).substr(from, to - from));
        const TextRange range{static_cast<std::size_t>(inner.data() - text.data()), inner.size()};
        const Bound* left = i > 0 ? &bounds[i - 1] : nullptr;
        const Bound* right = i < bounds.size() ? &bounds[i] : nullptr;
        // Most operands begin with a digit, and are not looked into.
        const bool mayBeLabel = !inner.empty() && isLetter(inner.front());
        const Contents contents = mayBeLabel || !words.empty() ? contentsOf(result, range) : Contents{};
        if (mayBeLabel && !contents.values) {
            const Contents leading = left ? contentsOf(result, before) : Contents{};
            const bool rate = contents.unitWhole && left && left->divides && (leading.values || leading.unitAtEnd);
            const std::u16string key = rate ? u"" : labelKey(inner);
            const bool asked = (left && (left->sign || (left->leads && leading.percent))) || (right && right->sign);
            if (!key.empty()) context.addDependencyOn(key, std::nullopt, Value());
            const Value* value = key.empty() ? nullptr : context.get<Value>(key);
            if (!rate && (!value || !asked)) return;
            if (value)
                words.push_back(
                    {range, priority::labelWords, 0, makeElement(*value, AttributedText(inner, RunType::variable))});
        } else if (!mayBeLabel && hasLetter(inner) && !contentsOf(result, range).values) {
            return;  // words that are no label
        } else if (signs == 1 && left && left->subtracts && words.size() == 1 && contents.measured &&
                   !words[0].element->value.has(Attribute::date)) {
            return;  // "lunch - $10" tells a price
        }
        before = range;
        if (right) from = right->range.end();
    }
    result.insert(result.end(), words.begin(), words.end());
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#include "evaluation/rounding_evaluator.h"

#include <algorithm>

#include "decimal/decimal_math.h"
#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "functions/mathematical_functions.h"
#include "records/remarks.h"
#include "scanning/words/localizer.h"
#include "units/unit_converter.h"

namespace vemo {

namespace {

constexpr std::int64_t mostDigits = 30;

// The longest of the words that the text begins with, as a whole word; empty for none.
std::u16string_view leading(const std::vector<std::u16string>& words, std::u16string_view text) {
    std::u16string_view longest;
    for (const std::u16string& word : words) {
        const bool whole = text.size() == word.size() || (text.size() > word.size() && !isLetter(text[word.size()])) ||
                           isCjk(word.back());
        if (word.size() > longest.size() && text.starts_with(word) && whole) longest = word;
    }
    return longest;
}

bool endsPart(const ElementList& elements, std::size_t i) {
    return i >= elements.size() || runTypeOf(elements[i]) == RunType::comment ||
           (elements[i].value.has(Attribute::operation) && !hasLetter(elements[i].text()));
}

// The end of the part from there on that may ask for a rounding, which takes only so many elements.
std::size_t endOfPart(const ElementList& elements, std::size_t i) {
    constexpr std::size_t mostElements = 16;
    const std::size_t most = i + mostElements;
    while (i < most && !endsPart(elements, i)) ++i;
    return i;
}

std::u16string wordsOf(const ElementList& elements, std::size_t from, std::size_t to) {
    return spoken(elements.slice(from, to).text());
}

// How a function rounds; nothing for others.
std::optional<RoundingMode> modeOf(const Element& element) {
    const auto function = element.value.string(Attribute::function);
    if (function == u"round") return RoundingMode::plain;
    if (function == u"ceil") return RoundingMode::up;
    return function == u"floor" ? std::optional(RoundingMode::down) : std::nullopt;
}

// How many digits stand before the point; 0 or less for numbers below 1: 1234 has 4, 0.05 has -1.
std::int64_t leadingDigits(const DecimalNumber& number) {
    const std::string text = number.abs().toString();
    const std::size_t point = std::min(text.find('.'), text.size());
    if (text[0] != '0') return static_cast<std::int64_t>(point);
    const std::size_t first = text.find_first_not_of("0.");
    return first == text.npos ? 1 : static_cast<std::int64_t>(point) + 1 - static_cast<std::int64_t>(first);
}

}  // namespace

RoundingEvaluator::RoundingEvaluator(const Localizer& localizer, const UnitConverter& converter)
    : Evaluator({Attribute::decimal}), converter_(converter) {
    const auto words = [&](std::u16string_view key) { return localizer.variants(key, u"Operations"); };
    directions_ = {{words(u"rounded_up.variants"), RoundingMode::up},
                   {words(u"rounded_down.variants"), RoundingMode::down},
                   {words(u"rounded.variants"), RoundingMode::plain}};
    links_ = words(u"rounded_to.variants");
    nearest_ = words(u"nearest.variants");
    places_ = words(u"decimal_places.variants");
    placesIfNamed_ = words(u"places.variants");
    figures_ = words(u"significant_figures.variants");
    for (const std::u16string& row : words(u"rounding_steps.variants")) {
        const std::size_t blank = row.rfind(u' ');
        if (blank == row.npos) continue;
        steps_.push_back({row.substr(0, blank), DecimalNumber::parse(std::u16string_view(row).substr(blank + 1))});
    }
    for (const Direction& direction : directions_)
        for (const std::u16string& word : direction.words) firstUnits_ += word.front();
    for (const std::u16string& link : links_) firstUnits_ += link.front();
}

// A quick test, for most lines hold words and few of them round. It makes no new text.
bool RoundingEvaluator::mayBegin(const ElementList& elements, std::size_t i) const {
    if (isOperator(elements[i], u"in")) {
        const std::size_t next = neighbourOf(elements, i, 1);
        return next < elements.size() && (isPlainWords(elements[next]) || isNumberWithoutUnit(elements[next]));
    }
    // In German, the word for "to" is an operator between a percentage and an amount.
    const bool word = elements[i].value.has(Attribute::operation) && hasLetter(elements[i].text());
    if (!word && !isPlainWords(elements[i])) return false;
    const std::u16string_view text = trimmed(elements[i].text());
    return firstUnits_.find(lowercasedUnit(text.front())) != std::u16string::npos;
}

// The words at the beginning that ask for a rounding, and how it goes; empty for none.
std::u16string_view RoundingEvaluator::directionOf(std::u16string_view text, RoundingMode& mode) const {
    for (const Direction& direction : directions_) {
        const std::u16string_view word = leading(direction.words, text);
        if (word.empty()) continue;
        mode = direction.mode;
        return word;
    }
    return {};
}

// Reads "2 decimals" or "3 significant figures" into the rounding; with `bare`, "2" alone, too. False for anything
// else.
bool RoundingEvaluator::readDigits(const ElementList& elements, std::size_t number, bool bare, bool named,
                                   Rounding& rounding) const {
    const auto digits = elements[number].value.decimal();
    if (!digits || elements[number].value.has(Attribute::unit) || !mxIsInteger(*digits) || digits->isNegative() ||
        digits->abs().toInt64() > mostDigits)
        return false;
    const std::u16string after = wordsOf(elements, number + 1, rounding.to);
    rounding.significant = !leading(figures_, after).empty();
    const bool places = rounding.significant || !leading(places_, after).empty() ||
                        (named && !leading(placesIfNamed_, after).empty()) || (bare && after.empty());
    rounding.digits = static_cast<std::int16_t>(digits->toInt64());
    rounding.amount = elements.rangeOf(number, number + 1);
    return places;
}

// Reads "hundred", "5", "$5", "dollar" or "15 minutes" into the rounding. False for anything else.
bool RoundingEvaluator::readStep(const ElementList& elements, std::size_t number, std::u16string_view words,
                                 Rounding& rounding) const {
    for (const Step& step : steps_)
        if (words == step.word) rounding.step = step.size;
    rounding.amount = elements.trimmedRangeOf(rounding.from, rounding.to);
    if (rounding.step) return true;
    for (std::size_t i = rounding.from; i < rounding.to; ++i) {
        const auto unit = elements[i].value.string(Attribute::unit);
        if (unit && !elements[i].value.has(Attribute::operation)) rounding.unit = *unit;
    }
    // "10 cents"
    if (number < rounding.to && elements[number].value.has(Attribute::decimal)) {
        const std::u16string after = wordsOf(elements, number + 1, rounding.to);
        for (const Step& step : steps_)
            if (after == step.word || after == step.word + u's')
                rounding.step = elements[number].value.decimal()->multiplying(step.size);
        if (rounding.step) return !rounding.step->isZero();
    }
    // "2 km to the nearest 5 star hotel" asks for none.
    if (number < rounding.to && hasPlainWords(elements.slice(number, rounding.to))) return false;
    if (number < rounding.to)
        rounding.step = elements[number].value.decimal();
    else if (!rounding.unit.empty())
        rounding.step = DecimalNumber::fromInt64(1);
    if (number < rounding.to) rounding.amount = elements.rangeOf(number, number + 1);
    return rounding.step && !rounding.step->isZero() && !rounding.step->notANumber();
}

std::optional<RoundingEvaluator::Rounding> RoundingEvaluator::roundingAt(const ElementList& elements, std::size_t from,
                                                                         bool led) const {
    Rounding rounding;
    rounding.from = from;
    rounding.to = endOfPart(elements, from + 1);
    std::size_t number = from;
    while (number < rounding.to && !elements[number].value.has(Attribute::decimal)) ++number;
    const std::u16string text = wordsOf(elements, from, number);
    std::u16string_view rest = text;
    const auto take = [&](std::u16string_view word) {
        rest = trimmed(rest.substr(word.size()));
        return !word.empty();
    };
    const bool asked = take(directionOf(rest, rounding.mode));
    bool nearest = take(leading(nearest_, rest));
    const bool linked = !nearest && take(leading(links_, rest));
    nearest = nearest || take(leading(nearest_, rest));
    if (nearest) {
        if ((asked || led || linked) && readStep(elements, number, rest, rounding)) return rounding;
    } else if (rest.empty() && number < rounding.to && linked) {
        if (readDigits(elements, number, asked, asked || led, rounding)) return rounding;
    } else if (rest.empty() && number == rounding.to && asked && !linked) {
        return rounding;
    }
    return std::nullopt;
}

std::optional<Value> RoundingEvaluator::rounded(const Value& given, TextRange written, const Rounding& rounding,
                                                Context& context) const {
    Value value = given.without(Attribute::precision);
    if (!rounding.unit.empty() && value.has(Attribute::unit)) {
        const auto converted = converter_.convert(value, rounding.unit, context);
        if (!converted || converted->isNotANumber()) return std::nullopt;
        value = *converted;
    }
    const DecimalNumber number = *value.decimal();
    std::int64_t digits = rounding.digits;
    if (rounding.significant) digits -= leadingDigits(number);
    std::optional<DecimalNumber> step = rounding.step;
    if (!step && rounding.mode != RoundingMode::plain)
        step = DecimalNumber::fromInt64(1).multiplyingByPowerOf10(static_cast<int>(-digits));
    if (step) digits = step->fractionDigitsCount();
    if (!step) {
        const Value result = showingDigits(value.with(number.round(static_cast<std::int16_t>(digits))), digits);
        keepStep(context, [&] {
            return ReadingStep{u"round",
                               {{value, written}, {Value(DecimalNumber::fromInt64(digits)), rounding.amount}},
                               result,
                               written,
                               true};
        });
        return result;
    }
    const Value size(*step);
    const Value count = value.with(number.dividing(*step));
    const Value whole = value.with(count.decimal()->rounding({rounding.mode, 0}));
    const Value result = showingDigits(value.with(whole.decimal()->multiplying(*step)), digits);
    const bool ones = *step == DecimalNumber::fromInt64(1);
    if (!ones)
        keepStep(context, [&] {
            return ReadingStep{u"/", {{value, written}, {size, rounding.amount}}, count, written};
        });
    keepStep(context, [&] {
        const char16_t* name = rounding.mode == RoundingMode::up     ? u"ceil"
                               : rounding.mode == RoundingMode::down ? u"floor"
                                                                     : u"round";
        return ReadingStep{name, {{count, written}}, whole, written, true};
    });
    if (!ones)
        keepStep(context, [&] {
            return ReadingStep{u"*", {{whole, written}, {size, rounding.amount}}, result, written};
        });
    return result;
}

// "10 / 3 rounded to 3 dp + 1 rounded to 2 dp": one after the other.
std::optional<ElementList> RoundingEvaluator::evaluate(const ElementList& elements, Context& context,
                                                       const EvaluationContext& evaluationContext) const {
    std::optional<ElementList> result = withFirst(elements, context, evaluationContext);
    for (auto next = result; next; next = withFirst(*result, context, evaluationContext)) result = std::move(next);
    return result;
}

std::optional<ElementList> RoundingEvaluator::withFirst(const ElementList& elements, Context& context,
                                                        const EvaluationContext& evaluationContext) const {
    if (!elements.anyHas(Attribute::function) && !elements.anyHas(Attribute::nsystem) && !hasPlainWords(elements))
        return std::nullopt;
    const std::size_t start = startOfValue(elements);
    std::size_t first = start;
    while (first < elements.size() && elements[first].value.isEmpty()) ++first;
    if (first == elements.size()) return std::nullopt;
    const auto led = modeOf(elements[first]);
    bool value = false;
    for (std::size_t i = first; i < elements.size(); ++i) {
        value = value || elements[i].value.has(Attribute::decimal);
        if (!value || !mayBegin(elements, i)) continue;
        auto rounding = roundingAt(elements, i, led.has_value());
        if (!rounding) continue;
        if (led && rounding->mode == RoundingMode::plain) rounding->mode = *led;
        return reduced(elements, led ? first : start, *rounding, led.has_value(), context, evaluationContext);
    }
    if (!led || !roundsAll(elements, first)) return std::nullopt;
    Rounding rounding;
    rounding.mode = *led;
    rounding.from = rounding.to = elements.size();
    while (rounding.from > first && runTypeOf(elements[rounding.from - 1]) == RunType::comment) --rounding.from;
    rounding.to = rounding.from;
    return reduced(elements, first, rounding, true, context, evaluationContext);
}

// True for "round up 180/25": nobody rounds a whole number before it is divided.
bool RoundingEvaluator::roundsAll(const ElementList& elements, std::size_t function) const {
    const std::size_t next = neighbourOf(elements, function, 1), op = neighbourOf(elements, next, 1);
    return op < elements.size() && isWholeNumber(elements[next]) && elements[op].value.has(Attribute::operation);
}

// The value of the elements from `begin` to the words, rounded, in their place.
std::optional<ElementList> RoundingEvaluator::reduced(const ElementList& elements, std::size_t begin,
                                                      const Rounding& rounding, bool led, Context& context,
                                                      const EvaluationContext& evaluationContext) const {
    const std::size_t from = led ? begin + 1 : begin;
    const ElementList part = evaluationContext.evaluate(elements.slice(from, rounding.from), context);
    if (part.empty() || !part[0].value.has(Attribute::decimal) || part[0].value.isNotANumber()) return std::nullopt;
    for (std::size_t i = 1; i < part.size(); ++i)
        if (part[i].value.has(Attribute::decimal))
            remarksOf(context).note(NoteKind::unusedValue, part.trimmedRangeOf(i, i + 1));
    const auto result = rounded(part[0].value, elements.rangeOf(begin, rounding.to), rounding, context);
    if (!result) return std::nullopt;
    ElementReplacer replacer(elements);
    replacer.replace({begin, rounding.to - begin})
        .append(makeElement(*result, elements.attributedText(begin, rounding.to)));
    return replacer.finished();
}

}  // namespace vemo

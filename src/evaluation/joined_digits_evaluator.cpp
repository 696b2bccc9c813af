// SPDX-License-Identifier: MIT
#include "evaluation/joined_digits_evaluator.h"

#include <algorithm>

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "evaluation/price_evaluators.h"
#include "evaluation/written_numbers.h"
#include "records/remarks.h"

namespace vemo {

namespace {

// The part between blanks without the marks at its ends.
TextRange numberIn(std::u16string_view text, TextRange part) {
    while (part.length > 0 && digitValue(text[part.location]) < 0) ++part.location, --part.length;
    while (part.length > 0 && digitValue(text[part.end() - 1]) < 0) --part.length;
    return part;
}

constexpr std::size_t digitsOfAGroup = 3;

std::size_t digitsFrom(std::u16string_view text) {
    std::size_t count = 0;
    while (count < text.size() && digitValue(text[count]) >= 0) ++count;
    return count;
}

std::vector<TextRange> numbersIn(std::u16string_view text) {
    std::vector<TextRange> numbers;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i;
        while (end < text.size() && !isWhitespace(text[end])) ++end;
        if (const TextRange number = numberIn(text, {i, end - i}); number.length > 0) numbers.push_back(number);
        i = end + 1;
    }
    // Groups of three after a shorter one are one number: the 5 000 of "A4 5 000 €".
    for (std::size_t i = numbers.size(); i-- > 1;) {
        const TextRange& group = numbers[i];
        TextRange& before = numbers[i - 1];
        const bool touches = trimmed(text.substr(before.end(), group.location - before.end())).empty();
        if (!touches || before.length > digitsOfAGroup || digitsFrom(group.in(text)) != digitsOfAGroup ||
            digitsFrom(before.in(text)) != before.length)
            continue;
        before.length = group.end() - before.location;
        numbers.erase(numbers.begin() + static_cast<std::ptrdiff_t>(i));
    }
    return numbers;
}

// True for two short numbers, of which no telephone number is made: "room 12 3 nights".
bool isPair(std::u16string_view text) {
    const std::vector<TextRange> numbers = numbersIn(text);
    return numbers.size() == 2 && std::all_of(numbers.begin(), numbers.end(),
                                              [](const TextRange& number) { return number.length < digitsOfAGroup; });
}

}  // namespace

// What stands in place of the literal beside a currency; nothing where it was read as it was meant.
std::optional<ElementList> JoinedDigitsEvaluator::asMeant(const ElementList& elements, std::size_t i) const {
    const auto isSignAt = [&](std::size_t k) {
        return isCurrencyAt(elements, k, unitConverter_) && !elements[k].value.has(Attribute::decimal);
    };
    const bool before = i > 0 && isSignAt(i - 1);
    if (!before && !isSignAt(neighbourOf(elements, i, 1))) return std::nullopt;
    const std::u16string_view literal = elements[i].text();
    const std::vector<TextRange> numbers = numbersIn(literal);
    // "$80 10%" holds two amounts, too.
    const bool percentage = before && i + 1 < elements.size() && elements[i + 1].value.is(Attribute::unit, u"percent");
    if (numbers.empty() || (numbers.size() > 1 && !percentage && !hasPlainWords(elements))) return std::nullopt;
    const TextRange amount = before ? numbers.front() : numbers.back();
    const auto valueOf = [&](const TextRange& number) {
        const std::u16string_view digits = number.in(literal);
        if (const auto foreign = number == amount ? foreignAmount(digits, locale_) : std::nullopt) return *foreign;
        std::u16string plain;
        for (std::size_t k = 0; k < digits.size(); ++k)
            if (digitValue(digits[k]) >= 0 || digits.substr(k).starts_with(locale_.decimalSeparator))
                plain += digits[k];
        return DecimalNumber::parse(plain, locale_.decimalSeparator);
    };
    if (numbers.size() == 1 && !foreignAmount(amount.in(literal), locale_)) return std::nullopt;
    ElementList result;
    std::size_t start = 0;
    for (const TextRange& number : numbers) {
        if (start < number.location) result.append(plainText(literal.substr(start, number.location - start)));
        result.append(makeElement(Value(valueOf(number)), AttributedText(number.in(literal), RunType::number)));
        start = number.end();
    }
    if (start < literal.size()) result.append(plainText(literal.substr(start)));
    return result;
}

std::optional<ElementList> JoinedDigitsEvaluator::evaluate(const ElementList& elements, Context& context,
                                                           const EvaluationContext&) const {
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Element& element = elements[i];
        if (!element.value.has(Attribute::decimal) || element.value.has(Attribute::nsystem) ||
            runTypeOf(element) != RunType::number || !isOddlyJoined(element.text(), locale_))
            continue;
        if (const auto meant = asMeant(elements, i)) {
            ElementList& result = replacer.replace({i, 1});
            for (const ElementPointer& part : meant->pointers()) result.append(part);
            continue;
        }
        const auto isPart = [&](std::size_t side) {
            return side < elements.size() &&
                   (elements[side].value.has(Attribute::operation) || elements[side].value.has(Attribute::unit));
        };
        if (isPair(element.text()) || isPart(neighbourOf(elements, i, -1)) || isPart(neighbourOf(elements, i, 1)) ||
            !hasPlainWords(elements))
            remarksOf(context).note(NoteKind::joinedDigits, elements.rangeOf(i, i + 1),
                                    toUtf16(element.value.decimal()->toString()));
    }
    return replacer.finished();
}

}  // namespace vemo

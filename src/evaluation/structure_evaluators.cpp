// SPDX-License-Identifier: MIT
#include "evaluation/structure_evaluators.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "evaluation/operand_remarks.h"
#include "evaluation/price_evaluators.h"
#include "records/context_map.h"
#include "records/remarks.h"

namespace vemo {

namespace {

constexpr std::int64_t unarySignPriority = 1000;  // above every operator
constexpr std::int64_t phrasePriority = 101;      // of a percentage of a percentage: above the others

// The evaluated contents of brackets with the brackets' own text around it.
ElementList bracketed(const ElementList& inside, const Element& opening, const Element& closing) {
    std::vector<ElementPointer> elements = inside.pointers();
    if (elements.empty()) elements.push_back(std::make_shared<const Element>());
    AttributedText first = opening.attributedText;
    first.append(elements.front()->attributedText);
    elements.front() = makeElement(elements.front()->value, std::move(first));
    AttributedText last = elements.back()->attributedText;
    last.append(closing.attributedText);
    elements.back() = makeElement(elements.back()->value, std::move(last));
    return ElementList(std::move(elements));
}

// "sqroot(16)": a word that touches a bracket was meant as a function.
void remarkOnWordBefore(const ElementList& elements, std::size_t bracket, Context& context) {
    if (bracket == 0 || !elements[bracket - 1].value.isEmpty() || bracket + 1 == elements.size()) return;
    const Element& before = elements[bracket - 1];
    if (before.text().empty() || before.attributedText.runs()[0].type != RunType::none ||
        !isLetter(before.text().back()))
        return;
    const Value& first = elements[bracket + 1].value;
    if (!first.has(Attribute::decimal) && !first.has(Attribute::operation)) return;
    remarksOf(context).note(NoteKind::unknownWord, elements.trimmedRangeOf(bracket - 1, bracket),
                            trimmed(before.text()));
}

ElementList unbalanced(const ElementList& elements, Context& context) {
    remarksOf(context).reason(ReasonCode::unbalancedBrackets);
    return reducedTo(errorValue(), elements);
}

// True when a name may begin with this word, which begins with no letter: not with digits, nor with the point of a
// number or the commonest signs, which are always operators or brackets.
bool mayBeginName(std::u16string_view text, TextRange word) {
    const char16_t first = text[word.location];
    if (isAsciiDigit(first)) return false;
    if (word.length > 1) return true;
    const bool inNumber = (first == u'.' || first == u',') && word.location > 0 &&
                          isAsciiDigit(text[word.location - 1]) && word.end() < text.size() &&
                          isAsciiDigit(text[word.end()]);
    return !inNumber && std::u16string_view(u"+-*/()=").find(first) == std::u16string_view::npos;
}

// The value of an operand with no other value, which no later step changes. Nothing for several values, and for
// functions, some of which have a result without a value beside them.
std::optional<Value> onlyValue(const ElementList& elements, std::size_t from, std::size_t to) {
    const Value* only = nullptr;
    for (std::size_t i = from; i < to; ++i) {
        const Value& value = elements[i].value;
        if (value.isEmpty()) continue;
        if (only || value.has(Attribute::function)) return std::nullopt;
        only = &value;
    }
    return only ? *only : Value();
}

// Labels, comments and blanks before an operand are no part of it.
bool isBesideOperand(const Element& element) {
    const RunType type = runTypeOf(element);
    return type == RunType::label || type == RunType::comment || isBlank(element);
}

void reserveFor(const ElementList& elements, AttributedText& text) {
    std::size_t length = 0, runs = 0;
    for (const ElementPointer& element : elements.pointers()) {
        length += element->text().size();
        runs += element->attributedText.elementsCount();
    }
    text.reserve(length, runs);
}

}  // namespace

std::optional<ElementList> EmptyDependenciesEvaluator::evaluate(const ElementList& elements, Context& context,
                                                                const EvaluationContext&) const {
    const std::u16string text = elements.text();
    const std::vector<TextRange>& words = stringRangeDetector_.wordRanges(text);
    std::u16string key;
    const auto depend = [&](std::u16string_view kind, std::u16string_view written) {
        // Names are stored in lower case.
        key.assign(kind).append(lowercased(written));
        if (!context.hasDependencyOn(key)) context.addDependencyOn(key, std::nullopt, Value());
    };
    bool signs = false;
    for (std::size_t i = 0; i < words.size(); ++i) {
        // A name has no more words than that: what goes on after them begins none.
        const std::size_t most = std::min(words.size() - i, PhraseDetector<bool>::maxWordsLookup);
        const std::size_t start = words[i].location, end = words[i + most - 1].end();
        const std::u16string_view head = nameHead(std::u16string_view(text).substr(start, end + 1 - start));
        if (head.empty()) {
            signs = signs || mayBeginName(text, words[i]);
            continue;
        }
        // Names that go on after their head are told by it; the others are a word, or some of the words that the head
        // is cut into.
        if (start + head.size() <= end) depend(context_keys::names, head);
        depend(context_keys::variable, words[i].in(text));
        for (std::size_t last = i + 1; last < i + most && words[last].end() <= start + head.size(); ++last)
            depend(context_keys::variable, head.substr(0, words[last].end() - start));
    }
    if (signs) depend(context_keys::names, u"");
    return std::nullopt;
}

std::optional<ElementList> ParenthesesEvaluator::evaluate(const ElementList& elements, Context& context,
                                                          const EvaluationContext& evaluationContext) const {
    ElementList result;
    result.reserve(elements.size());
    std::size_t depth = 0;
    std::size_t start = 0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const auto bracket = elements[i].value.string(Attribute::parenthesis);
        if (bracket == u"(") {
            if (depth++ == 0) {
                start = i;
                remarkOnWordBefore(elements, i, context);
            }
        } else if (bracket == u")") {
            if (depth == 0) return unbalanced(elements, context);
            if (--depth > 0) continue;
            if (neighbourOf(elements, start, 1) == i &&
                !(start > 0 && elements[start - 1].value.has(Attribute::function)))
                remarksOf(context).note(NoteKind::missingOperand, elements.rangeOf(start, i + 1));
            const ElementList inside = evaluationContext.evaluate(elements.slice(start + 1, i), context);
            const ElementList group = bracketed(inside, elements[start], elements[i]);
            for (const ElementPointer& element : group.pointers()) result.append(element);
        } else if (depth == 0) {
            result.append(elements.pointers()[i]);
        }
    }
    if (depth > 0) return unbalanced(elements, context);
    return result;
}

// "abs -5": the sign is the number's.
std::optional<ElementList> OperationEvaluator::withSignedNumbers(const ElementList& elements) const {
    if (!elements.anyHas(Attribute::function)) return std::nullopt;
    ElementReplacer replacer(elements);
    for (std::size_t i = 1; i + 1 < elements.size(); ++i) {
        const auto number = elements[i + 1].value.decimal();
        if (!number || !elements[i].value.is(Attribute::operation, u"-")) continue;
        const bool apart = i > 1 && elements[i - 1].value.isEmpty() && trimmed(elements[i - 1].text()).empty();
        const auto function = elements[apart ? i - 2 : i - 1].value.string(Attribute::function);
        if (!function || !takesSigns_(*function)) continue;
        replacer.replace({i, 2}).append(
            makeElement(elements[i + 1].value.with(number->negative()), elements.attributedText(i, i + 2)));
    }
    return replacer.finished();
}

std::optional<ElementList> OperationEvaluator::evaluate(const ElementList& given, Context& context,
                                                        const EvaluationContext& evaluationContext) const {
    const std::optional<ElementList> withSigned = withSignedNumbers(given);
    const ElementList& elements = withSigned ? *withSigned : given;
    if (!elements.anyHas(Attribute::operation)) return withSigned;
    const auto& all = elements.pointers();
    const auto operatorCount = static_cast<std::size_t>(std::count_if(
        all.begin(), all.end(), [](const ElementPointer& e) { return e->value.has(Attribute::operation); }));
    std::vector<Value> operands;
    std::vector<Value> operators;
    std::vector<TextRange> ranges;
    operands.reserve(operatorCount + 1);
    operators.reserve(operatorCount);
    ranges.reserve(operatorCount + 1);
    AttributedText text;
    reserveFor(elements, text);
    OperandRemarks remarks(elements, operatorCount + 1, context);
    // The trace tells of every operand's steps.
    const bool debug = evaluationContext.debug;
    std::size_t start = 0;
    std::size_t location = elements.location();  // of the element at `start`
    for (std::size_t i = 0, end = location; i <= elements.size(); ++i) {
        if (i < elements.size() && !elements[i].value.has(Attribute::operation)) {
            end += elements[i].text().size();
            continue;
        }
        operands.emplace_back();
        for (std::size_t k = start; k < i && isBesideOperand(elements[k]); ++k) location += elements[k].text().size();
        ranges.push_back({location, end - location});
        if (const auto value = debug ? std::nullopt : onlyValue(elements, start, i)) {
            operands.back() = *value;
            for (std::size_t k = start; k < i; ++k) text.append(elements[k].attributedText);
        } else if (start < i) {
            ElementList group = elements.slice(start, i);
            const ElementList evaluated = evaluationContext.evaluate(group, context);
            const ElementList& reduced = evaluated.empty() ? group : evaluated;
            operands.back() = reduced[0].value;
            remarks.unusedValues(reduced);
            text.append(reduced.attributedText());
        }
        remarks.operand(start, i, operands.back());
        if (i == elements.size()) break;
        operators.push_back(elements[i].value);
        text.append(elements[i].attributedText);
        start = i + 1;
        end += elements[i].text().size();
        location = end;
    }
    remarks.finish();
    // "3 cups of milk in ml": without a value after it, such a word is text.
    for (std::size_t i = operators.size(); i-- > 0;) {
        if (!operands[i + 1].isEmpty() || !takesPercentage(operators[i])) continue;
        operators.erase(operators.begin() + static_cast<std::ptrdiff_t>(i));
        operands.erase(operands.begin() + static_cast<std::ptrdiff_t>(i) + 1);
        ranges.erase(ranges.begin() + static_cast<std::ptrdiff_t>(i) + 1);
    }
    // "15% off 10% off $100": each percentage is of what the next one gives, so the last is calculated first.
    for (std::size_t i = 0; i + 1 < operators.size(); ++i) {
        if (takesPercentage(operators[i]) && takesPercentage(operators[i + 1]) &&
            operands[i + 1].is(Attribute::unit, u"percent"))
            operators[i + 1] = operators[i + 1].with(DecimalNumber::fromInt64(phrasePriority + static_cast<int>(i)),
                                                     Attribute::opPriority);
    }
    // Of several signs in a row, as in "--5" and "4 - +2", the last one belongs to the number.
    std::int64_t priority = unarySignPriority;
    for (std::size_t i = 0; i < operators.size(); ++i) {
        const bool plus = i > 0 && operators[i].is(Attribute::operation, u"+");
        if (!operands[i].isEmpty()) priority = unarySignPriority;
        if (operands[i].isEmpty() && (plus || operators[i].is(Attribute::operation, u"-")))
            operators[i] = operators[i].with(DecimalNumber::fromInt64(priority++), Attribute::opPriority);
    }
    reach_.apply(operands, operators, ranges, context);
    const auto result =
        operationCalculator_.calculate(std::move(operands), std::move(operators), context, std::move(ranges));
    return ElementList({makeElement(result.value_or(Value()), std::move(text))});
}

// True when words stand between a value and a price in brackets, or in the brackets after a price: "cake for the 60th
// ($48)", "came to $129 (iphone 13)".
bool ParenthesesSequenceMultiplicator::isPriceBesideWords(const ElementList& elements, std::size_t value,
                                                          std::size_t bracket) const {
    if (isCurrencyAt(elements, value, unitConverter_)) {
        const AttributedText& inside = elements[bracket].attributedText;
        std::size_t place = 0;
        for (const AttributedText::Run& run : inside.runs()) {
            const TextRange range{place, run.length};
            if (run.type == RunType::none && hasLetter(range.in(inside.compoundString()))) return true;
            place = range.end();
        }
    }
    if (!isCurrencyAt(elements, bracket, unitConverter_)) return false;
    for (std::size_t i = value + 1; i < bracket; ++i)
        if (isPlainWords(elements[i])) return true;
    return false;
}

std::optional<ElementList> ParenthesesSequenceMultiplicator::evaluate(const ElementList& elements, Context& context,
                                                                      const EvaluationContext&) const {
    const auto& all = elements.pointers();
    if (std::count_if(all.begin(), all.end(), [](const auto& e) { return e->value.has(Attribute::decimal); }) < 2)
        return std::nullopt;
    return replacingMatches(elements, matcher_, [&](const Match& match) -> std::optional<Value> {
        if (match.range.length == 1) return std::nullopt;
        const std::vector<ElementRange> values = match.groups(u"value");
        for (std::size_t i = 1; i < values.size(); ++i)
            if (isPriceBesideWords(elements, values[i - 1].location, values[i].location)) return std::nullopt;
        return foldGroup(elements, match, u"value", u"*", operationCalculator_, context);
    });
}

std::optional<ElementList> EmptyValueSanitizer::evaluate(const ElementList& elements, Context&,
                                                         const EvaluationContext&) const {
    // The text between two values goes to the earlier one, the text before the first value to that one.
    const auto& all = elements.pointers();
    const auto hasValue = [](const ElementPointer& element) { return !element->value.isEmpty(); };
    if (std::all_of(all.begin(), all.end(), hasValue) || std::none_of(all.begin(), all.end(), hasValue))
        return std::nullopt;
    ElementList result;
    result.reserve(all.size());
    for (auto start = all.begin(); start != all.end();) {
        const auto value = std::find_if(start, all.end(), hasValue);
        const auto end = std::find_if(value + 1, all.end(), hasValue);
        if (end - start == 1) {
            result.append(*value);
        } else {
            const auto position = [&](auto iterator) { return static_cast<std::size_t>(iterator - all.begin()); };
            result.append(makeElement((*value)->value, elements.attributedText(position(start), position(end))));
        }
        start = end;
    }
    return result;
}

}  // namespace vemo

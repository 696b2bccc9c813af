// SPDX-License-Identifier: MIT
#include "evaluation/arguments_evaluator.h"

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "records/number_words.h"
#include "records/remarks.h"

namespace vemo {

namespace {

bool isSeparator(const Element& element) {
    return element.value.is(Attribute::type, number_word::separator);
}

// The places of both brackets and of the separators between them. Empty without a separator or the second bracket.
std::vector<std::size_t> cutsFrom(const ElementList& elements, std::size_t opening) {
    std::vector<std::size_t> cuts;
    std::size_t depth = 0;
    for (std::size_t i = opening; i < elements.size(); ++i) {
        const Value& value = elements[i].value;
        if (value.is(Attribute::parenthesis, u"(") && ++depth == 1) cuts.push_back(i);
        if (depth == 1 && isSeparator(elements[i])) cuts.push_back(i);
        if (!value.is(Attribute::parenthesis, u")") || --depth > 0) continue;
        cuts.push_back(i);
        return cuts.size() > 2 ? cuts : std::vector<std::size_t>();
    }
    return {};
}

// The same for a list without brackets, which ends with an operator after its last value: the places of the name, of
// the separators and of the end.
std::vector<std::size_t> cutsOfList(const ElementList& elements, std::size_t name) {
    std::vector<std::size_t> cuts{name};
    std::size_t depth = 0, last = name;
    bool value = false, ended = false;
    for (std::size_t i = name + 1; i < elements.size(); ++i) {
        const Value& element = elements[i].value;
        if (element.is(Attribute::parenthesis, u"(")) ++depth;
        if (element.is(Attribute::parenthesis, u")") && depth-- == 0) break;
        if (runTypeOf(elements[i]) == RunType::comment || element.has(Attribute::function)) break;
        if (depth > 0 || isBlank(elements[i])) continue;
        if (isSeparator(elements[i])) {
            cuts.push_back(i);
            value = ended = false;
        }
        ended = ended || (value && element.has(Attribute::operation));
        value = value || beginsValue(elements, i);
        if (!ended) last = i;
    }
    if (cuts.size() == 1) return {};
    cuts.push_back(last + 1);
    return cuts;
}

}  // namespace

std::optional<Value> ArgumentsEvaluator::valueOf(const ElementList& elements, std::size_t name,
                                                 const std::vector<std::size_t>& cuts, std::size_t end,
                                                 Context& context, const EvaluationContext& evaluationContext) const {
    const bool brackets = end > cuts.back();
    const std::u16string& written = elements[name].text();
    const Function* function = functions_.function(*elements[name].value.string(Attribute::function));
    std::vector<Value> values;
    std::vector<ReadingStep::Operand> operands;
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) {
        const ElementList part = evaluationContext.evaluate(elements.slice(cuts[i] + 1, cuts[i + 1]), context);
        values.push_back(part.empty() ? Value() : part[0].value);
        operands.push_back({values.back(), elements.rangeOf(cuts[i] + 1, cuts[i + 1])});
        if (function && i >= function->mostValues())
            remarksOf(context).note(NoteKind::unusedArgument, elements.trimmedRangeOf(cuts[i] + 1, cuts[i + 1]),
                                    written);
    }
    const bool missing = std::any_of(values.begin(), values.end(), [](const Value& value) { return value.isEmpty(); });
    if (missing && !brackets) return std::nullopt;  // words
    const auto result = function && !missing ? function->evaluateSeveral(values, context) : std::nullopt;
    if (!result) remarksOf(context).reason(ReasonCode::missingArgument, written, written + u"(2, 8)");
    if (result && result->decimal() && result->decimal()->notANumber())
        remarksOf(context).reason(ReasonCode::outOfRange, written);
    keepStep(context, [&] {
        return ReadingStep{written, operands, result.value_or(Value()), elements.rangeOf(name, end), true};
    });
    return result.value_or(Value(DecimalNumber::notANumberValue()));
}

std::optional<ElementList> ArgumentsEvaluator::evaluate(const ElementList& elements, Context& context,
                                                        const EvaluationContext& evaluationContext) const {
    ElementReplacer replacer(elements);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (!elements[i].value.has(Attribute::function)) continue;
        const std::size_t opening = neighbourOf(elements, i, 1);
        const bool brackets = opening < elements.size() && elements[opening].value.is(Attribute::parenthesis, u"(");
        std::vector<std::size_t> cuts = brackets ? cutsFrom(elements, opening) : std::vector<std::size_t>();
        const bool list = cuts.empty();
        if (list) cuts = cutsOfList(elements, i);
        if (cuts.empty()) continue;
        const std::size_t end = list ? cuts.back() : cuts.back() + 1;
        const auto value = valueOf(elements, i, cuts, end, context, evaluationContext);
        if (!value) continue;
        replacer.replace({i, end - i}).append(makeElement(*value, elements.attributedText(i, end)));
        i = end - 1;
    }
    return replacer.finished();
}

}  // namespace vemo

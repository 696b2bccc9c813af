// SPDX-License-Identifier: MIT
#include "evaluation/function_expression_evaluator.h"

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "records/remarks.h"

namespace vemo {

namespace {

// The function that directly follows another, which then takes its result: "sqrt sqrt 16". The number of elements
// without one.
std::size_t functionAfter(const ElementList& elements, const ElementRange& range) {
    const std::size_t end = range.end();
    if (range.length != 1 || end == elements.size()) return elements.size();
    const std::size_t next = neighbourOf(elements, end - 1, 1);
    return next < elements.size() && elements[next].value.has(Attribute::function) ? next : elements.size();
}

// How the function is written: a logarithm without a base is probably that to the base of ten.
std::u16string exampleOf(std::u16string_view id, const std::u16string& name) {
    if (id == u"log") return u"log10 100, log(2, 8)";
    if (id == u"root") return u"root(3, 27)";
    return name + u"(16)";
}

}  // namespace

std::optional<Value> FunctionExpressionEvaluator::valueOf(const ElementList& elements, std::size_t place,
                                                          const std::vector<Value>& values, Context& context) const {
    const auto id = elements[place].value.string(Attribute::function);
    const Function* function = functionManager_.function(*id);
    if (!function) return std::nullopt;
    auto result = function->evaluate(values, context);
    const std::u16string& name = elements[place].text();
    if (!result && function->takesSigns())
        remarksOf(context).reason(ReasonCode::missingArgument, name, exampleOf(*id, name));
    if (result && result->decimal() && result->decimal()->notANumber())
        remarksOf(context).reason(ReasonCode::outOfRange, name);
    return result;
}

std::optional<ElementList> FunctionExpressionEvaluator::evaluate(const ElementList& elements, Context& context,
                                                                 const EvaluationContext&) const {
    const std::vector<Match> matches = functionExpressionMatcher_.occurrences(elements);
    // From the last to the first, since one may be the argument of the one before.
    std::vector<std::optional<Value>> results(matches.size());
    std::vector<std::size_t> ends(matches.size());
    for (std::size_t m = matches.size(); m-- > 0;) {
        const std::size_t place = matches[m].group(u"function")->location;
        const std::vector<ElementRange> arguments = matches[m].groups(u"values");
        std::vector<Value> values;
        for (const ElementRange& range : arguments) values.push_back(elements[range.location].value);
        ends[m] = matches[m].range.end();
        const std::size_t after = functionAfter(elements, matches[m].range);
        if (m + 1 < matches.size() && after == matches[m + 1].range.location && results[m + 1]) {
            values.push_back(*results[m + 1]);
            ends[m] = ends[m + 1];
        }
        results[m] = valueOf(elements, place, values, context);
        const Function* function = functionManager_.function(*elements[place].value.string(Attribute::function));
        if (!function) continue;
        keepStep(context, [&] {
            ReadingStep step{elements[place].text(),
                             {},
                             results[m].value_or(Value()),
                             elements.rangeOf(matches[m].range.location, ends[m]),
                             true};
            for (std::size_t i = 0; i < std::min(arguments.size(), function->mostValues()); ++i)
                step.operands.push_back({values[i], elements.rangeOf(arguments[i].location, arguments[i].end())});
            if (arguments.empty() && !values.empty())
                step.operands.push_back({values[0], elements.rangeOf(after, ends[m])});
            return step;
        });
        for (std::size_t i = results[m] ? function->mostValues() : SIZE_MAX; i < arguments.size(); ++i)
            remarksOf(context).note(NoteKind::unusedArgument,
                                    elements.trimmedRangeOf(arguments[i].location, arguments[i].end()),
                                    elements[place].text());
    }
    ElementReplacer replacer(elements);
    std::size_t done = 0;
    for (std::size_t m = 0; m < matches.size(); ++m) {
        const std::size_t start = matches[m].range.location;
        if (!results[m] || start < done) continue;
        done = ends[m];
        replacer.replace({start, done - start}).append(makeElement(*results[m], elements.attributedText(start, done)));
    }
    return replacer.finished();
}

}  // namespace vemo

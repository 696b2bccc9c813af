// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "evaluation/evaluator.h"
#include "vemo/decimal_number.h"

namespace vemo {

class Localizer;
class UnitConverter;

// "100 / 7 rounded to 2 decimals", "$12.34 to the nearest dollar", "round up 180/25": all that stands before such words
// is rounded, or after them where they begin the line.
class RoundingEvaluator : public Evaluator {
public:
    RoundingEvaluator(const Localizer& localizer, const UnitConverter& converter);
    std::u16string_view name() const override { return u"RoundingEvaluator"; }
    std::optional<ElementList> evaluate(const ElementList&, Context&, const EvaluationContext&) const override;

private:
    using Words = std::vector<std::u16string>;
    // What is asked for, and the elements that ask for it.
    struct Rounding {
        std::size_t from = 0, to = 0;
        RoundingMode mode = RoundingMode::plain;
        std::int16_t digits = 0;            // after the point
        bool significant = false;           // the digits are counted from the first one that is not 0
        std::optional<DecimalNumber> step;  // instead of digits: multiples of it
        std::u16string unit = {};           // that the multiples are told in; empty for the value's own
        TextRange amount = {};              // where digits or step are written
    };
    struct Step {
        std::u16string word;
        DecimalNumber size;
    };
    struct Direction {
        Words words;
        RoundingMode mode;
    };

    std::optional<ElementList> withFirst(const ElementList& elements, Context& context,
                                         const EvaluationContext& evaluationContext) const;
    std::optional<Rounding> roundingAt(const ElementList& elements, std::size_t from, bool led) const;
    bool readDigits(const ElementList& elements, std::size_t number, bool bare, bool named, Rounding& rounding) const;
    bool readStep(const ElementList& elements, std::size_t number, std::u16string_view words, Rounding& rounding) const;
    bool mayBegin(const ElementList& elements, std::size_t i) const;
    std::u16string_view directionOf(std::u16string_view text, RoundingMode& mode) const;
    bool roundsAll(const ElementList& elements, std::size_t function) const;
    std::optional<ElementList> reduced(const ElementList& elements, std::size_t begin, const Rounding& rounding,
                                       bool led, Context& context, const EvaluationContext& evaluationContext) const;
    std::optional<Value> rounded(const Value& value, TextRange written, const Rounding& rounding,
                                 Context& context) const;

    const UnitConverter& converter_;
    std::vector<Direction> directions_;
    Words links_, nearest_, places_, placesIfNamed_, figures_;
    std::vector<Step> steps_;
    std::u16string firstUnits_;  // of the words that the request for a rounding begins with
};

}  // namespace vemo

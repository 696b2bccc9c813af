// SPDX-License-Identifier: MIT
#include "evaluation/percentage_operations.h"

#include <algorithm>
#include <iterator>

#include "units/unit_converter.h"

namespace vemo {

namespace {

using Formula = DecimalNumber (*)(const DecimalNumber& left, const DecimalNumber& right);

DecimalNumber hundred() {
    return DecimalNumber::fromInt64(100);
}
DecimalNumber share(const DecimalNumber& percent) {
    return percent.dividing(hundred());
}
bool isPercent(const Value& value) {
    return value.is(Attribute::unit, u"percent");
}

// An amount changed by a percentage on its right: the amount keeps its marks.
class ChangeOperation : public Operation {
public:
    ChangeOperation(Formula formula, bool acceptsPercentLeft)
        : formula_(formula), acceptsPercentLeft_(acceptsPercentLeft) {}

    std::optional<Value> calculate(const Value& left, const Value& right, Context&) const override {
        const auto l = left.decimal();
        const auto r = right.decimal();
        if (!l || !r || !isPercent(right) || (isPercent(left) && !acceptsPercentLeft_)) return std::nullopt;
        return left.with(formula_(*l, *r));
    }

private:
    Formula formula_;
    bool acceptsPercentLeft_;
};

// A percentage on the left, said of an amount on the right, whose marks the result has.
class PhraseOperation : public Operation {
public:
    explicit PhraseOperation(Formula formula, bool needsUnit = false) : formula_(formula), needsUnit_(needsUnit) {}

    std::optional<Value> calculate(const Value& left, const Value& right, Context&) const override {
        const auto l = left.decimal();
        const auto r = right.decimal();
        if (!l || !r || !isPercent(left)) return std::nullopt;
        if (needsUnit_ && (isPercent(right) || !right.has(Attribute::unit))) return std::nullopt;
        return right.with(formula_(*l, *r));
    }

private:
    Formula formula_;
    bool needsUnit_;  // of the amount
};

// An amount on the left that is a percentage of what is asked for, or that much more or less than it: the
// percent-of-what formulas with their operands exchanged.
class WholeOperation : public Operation {
public:
    explicit WholeOperation(Formula formula) : formula_(formula) {}

    std::optional<Value> calculate(const Value& left, const Value& right, Context&) const override {
        const auto l = left.decimal();
        const auto r = right.decimal();
        if (!l || !r || !isPercent(right)) return std::nullopt;
        return left.with(formula_(*r, *l));
    }

private:
    Formula formula_;
};

// One amount as a percentage of another, in the other's unit.
class AsAPercentOperation : public Operation {
public:
    AsAPercentOperation(Formula formula, const UnitConverter& unitConverter)
        : formula_(formula), unitConverter_(unitConverter) {}

    std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const override {
        if (!left.decimal() || !right.decimal()) return std::nullopt;
        std::optional<Value> converted = left;
        if (const auto unit = right.string(Attribute::unit)) converted = unitConverter_.convert(left, *unit, context);
        if (!converted || !converted->decimal()) return std::nullopt;
        return converted->merging(right)
            .with(formula_(*converted->decimal(), *right.decimal()))
            .with(u"percent", Attribute::unit);
    }

private:
    Formula formula_;
    const UnitConverter& unitConverter_;
};

constexpr struct {
    std::u16string_view operatorId;
    Formula formula;
} phraseRows[] = {
    {u"percent_of", [](const auto& l, const auto& r) { return r.multiplying(share(l)); }},
    {u"percent_on", [](const auto& l, const auto& r) { return r.adding(r.multiplying(share(l))); }},
    {u"percent_off", [](const auto& l, const auto& r) { return r.subtracting(r.multiplying(share(l))); }},
    {u"percent_of_what_is", [](const auto& l, const auto& r) { return r.dividing(share(l)); }},
    {u"percent_off_what_is",
     [](const auto& l, const auto& r) { return r.multiplying(hundred()).dividing(hundred().subtracting(l)); }},
    {u"percent_on_what_is",
     [](const auto& l, const auto& r) { return r.multiplying(hundred()).dividing(hundred().adding(l)); }},
};

constexpr struct {
    std::u16string_view operatorId;
    Formula formula;
} asAPercentRows[] = {
    {u"as_a_percent_of", [](const auto& l, const auto& r) { return l.dividing(r).multiplying(hundred()); }},
    {u"as_a_percent_off",
     [](const auto& l, const auto& r) { return r.subtracting(l).dividing(r).multiplying(hundred()); }},
    {u"as_a_percent_on",
     [](const auto& l, const auto& r) { return l.subtracting(r).dividing(r).multiplying(hundred()); }},
    {u"percent_is", [](const auto& l, const auto& r) { return r.dividing(l).multiplying(hundred()); }},
    {u"percent_change",
     [](const auto& l, const auto& r) { return r.subtracting(l).dividing(l).multiplying(hundred()); }},
};

}  // namespace

std::shared_ptr<const Operation> percentageAdditionOperation() {
    return std::make_shared<ChangeOperation>(
        [](const auto& l, const auto& r) { return l.adding(l.multiplying(share(r))); }, false);
}

std::shared_ptr<const Operation> percentageSubtractionOperation() {
    return std::make_shared<ChangeOperation>(
        [](const auto& l, const auto& r) { return l.subtracting(l.multiplying(share(r))); }, false);
}

std::shared_ptr<const Operation> divisionByPercentageOperation() {
    return std::make_shared<ChangeOperation>([](const auto& l, const auto& r) { return l.dividing(share(r)); }, false);
}

std::shared_ptr<const Operation> percentageMultiplicationOperation() {
    return std::make_shared<ChangeOperation>([](const auto& l, const auto& r) { return l.multiplying(share(r)); },
                                             true);
}

std::shared_ptr<const Operation> multiplicationByPercentageOperation() {
    return std::make_shared<PhraseOperation>([](const auto& l, const auto& r) { return r.multiplying(share(l)); },
                                             true);
}

bool isPercentagePhrase(std::u16string_view operatorId) {
    const auto isThis = [&](const auto& row) { return row.operatorId == operatorId; };
    return std::any_of(std::begin(phraseRows), std::end(phraseRows), isThis) ||
           std::any_of(std::begin(asAPercentRows), std::end(asAPercentRows), isThis);
}

void registerPercentagePhrases(OperationCollection& operations, const UnitConverter& unitConverter) {
    constexpr std::u16string_view whatIs = u"_what_is";
    for (const auto& row : phraseRows) {
        if (!row.operatorId.ends_with(whatIs)) continue;
        const auto relation = row.operatorId.substr(0, row.operatorId.size() - whatIs.size());
        operations.add(std::u16string(u"is_").append(relation), std::make_shared<WholeOperation>(row.formula));
    }
    for (const auto& row : phraseRows) operations.add(row.operatorId, std::make_shared<PhraseOperation>(row.formula));
    for (const auto& row : asAPercentRows)
        operations.add(row.operatorId, std::make_shared<AsAPercentOperation>(row.formula, unitConverter));
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#include "evaluation/operator_catalogue.h"

#include <string_view>

#include "evaluation/arithmetic_operations.h"
#include "evaluation/date_operations.h"
#include "evaluation/date_relation_operations.h"
#include "evaluation/operator_collection.h"
#include "evaluation/percentage_operations.h"
#include "evaluation/rate_operations.h"
#include "scanning/words/localizer.h"

namespace vemo {

namespace {

using OperationPointer = std::shared_ptr<const Operation>;

template <class T>
OperationPointer make() {
    return std::make_shared<T>();
}

struct OperatorRow {
    std::u16string_view id;
    std::u16string_view phrases;  // a key of the table, or the one phrase when there is no table
    std::u16string_view table;
    std::u16string_view symbols;  // each of one character
    int priority;
    OperationPointer (*operation)() = nullptr;  // of an operator that has one, which uses no catalogue
};

constexpr OperatorRow operatorRows[] = {
    {u"in", u"conversion.variants", u"Operations", u"\u2192", 300},
    {u"+", u"plus.variants", u"Operations", u"+", 100},
    {u"-", u"minus.variants", u"Operations", u"-\u2012\u2013\u2014\u2015\u2212", 100},
    {u"*", u"multiply.variants", u"Operations", u"*\u2715\u00d7", 200},
    {u"/", u"divide.variants", u"Operations", u"/\u00f7", 200},
    {u"^", u"power.variants", u"Operations", u"^\u02c6", 300, make<ExponentOperation>},
    {u"mod", u"mod", u"", u"", 200, make<ModuloOperation>},
    {u"and", u"", u"", u"&", 200},  // the word "and" is no operator
    {u"or", u"or", u"", u"|", 200},
    {u"xor", u"xor", u"", u"", 200},
    {u"left_shift", u"<<", u"", u"", 200},
    {u"right_shift", u">>", u"", u"", 200},
    {u"percent_of", u"percent_of.variants", u"Percent", u"", 100},
    {u"percent_on", u"percent_on.variants", u"Percent", u"", 100},
    {u"percent_off", u"percent_off.variants", u"Percent", u"", 100},
    {u"as_a_percent_of", u"as_a_percent_of.variants", u"Percent", u"", 100},
    {u"as_a_percent_off", u"as_a_percent_off.variants", u"Percent", u"", 100},
    {u"as_a_percent_on", u"as_a_percent_on.variants", u"Percent", u"", 100},
    {u"percent_of_what_is", u"percent_of_what_is.variants", u"Percent", u"", 100},
    {u"percent_off_what_is", u"percent_off_what_is.variants", u"Percent", u"", 100},
    {u"percent_on_what_is", u"percent_on_what_is.variants", u"Percent", u"", 100},
    // No line writes these: they are put in place of the link of a question, as in "what % of 80 is 20" and "% change
    // 80 to 100".
    {u"percent_is", u"", u"", u"", 100},
    {u"percent_change", u"", u"", u"", 100},
    // "$64 is 20% off what"
    {u"is_percent_of", u"", u"", u"", 100},
    {u"is_percent_on", u"", u"", u"", 100},
    {u"is_percent_off", u"", u"", u"", 100},
};

constexpr struct { std::u16string_view id, symbol; } longSymbols[] = {{u"in", u"->"}, {u"^", u"**"}};

}  // namespace

void registerOperators(OperatorCollection& operators, const Localizer& localizer) {
    for (const OperatorRow& row : operatorRows) {
        Operator op{std::u16string(row.id), {}, {}, row.priority};
        if (!row.table.empty())
            op.phrases = localizer.variants(row.phrases, row.table);
        else if (!row.phrases.empty())
            op.phrases = {std::u16string(row.phrases)};
        for (const char16_t symbol : row.symbols) op.symbols.emplace_back(1, symbol);
        for (const auto& symbol : longSymbols)
            if (symbol.id == row.id) op.symbols.emplace_back(symbol.symbol);
        operators.add(std::move(op));
    }
    registerDateOperators(operators);
}

void registerOperations(OperationCollection& operations, const UnitConverter& unitConverter) {
    // The order matters: within an operator the first operation that accepts its operands wins.
    operations.add(u"in", std::make_shared<TimeZoneConversionOperation>());
    operations.add(u"in", std::make_shared<ConversionOperation>(unitConverter));
    operations.add(u"+", std::make_shared<DateAndDecimalAdditionOperation>(unitConverter));
    operations.add(u"+", percentageAdditionOperation());
    operations.add(u"+", std::make_shared<DurationAdditionOperation>(unitConverter, false));
    operations.add(u"+", std::make_shared<DecimalAdditionOperation>(unitConverter));
    operations.add(u"-", std::make_shared<DateAndDecimalSubtractionOperation>(unitConverter));
    operations.add(u"-", percentageSubtractionOperation());
    operations.add(u"-", std::make_shared<DurationAdditionOperation>(unitConverter, true));
    operations.add(u"-", std::make_shared<DecimalSubtractionOperation>(unitConverter));
    operations.add(u"*", percentageMultiplicationOperation());
    operations.add(u"*", multiplicationByPercentageOperation());
    operations.add(u"*", std::make_shared<RateMultiplicationOperation>(unitConverter));
    operations.add(u"*", std::make_shared<DecimalMultiplicationOperation>(unitConverter));
    operations.add(u"/", divisionByPercentageOperation());
    operations.add(u"/", std::make_shared<RateDivisionOperation>(unitConverter));
    operations.add(u"/", std::make_shared<DecimalDivisionOperation>());
    operations.add(u"-", std::make_shared<DateSubtractionOperation>());
    for (const OperatorRow& row : operatorRows)
        if (row.operation) operations.add(row.id, row.operation());
    registerBitOperations(operations);
    registerPercentagePhrases(operations, unitConverter);
    registerDateRelations(operations, unitConverter);
}

}  // namespace vemo

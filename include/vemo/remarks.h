// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vemo {

// What a line's result tells beside its value: what took no part in it, or was read in a way a person may not expect.
enum class NoteKind : std::uint8_t {
    unusedValue,       // a value that took no part in the result
    unknownWord,       // a word without a value where an operand was expected
    missingOperand,    // an operator with one side missing
    notConverted,      // a conversion that did not happen
    joinedDigits,      // digits joined in groups that are not of three, or separators of another locale
    droppedUnit,       // a unit that a division dropped
    keptUnit,          // a product of two quantities, which has the unit of one
    averageLength,     // a month taken as 30 days, or a year as 365
    cappedShift,       // a shift by more than 63 bits
    builtInConstant,   // e or r, used without having been assigned
    oldRates,          // exchange rates that are older than a week
    withoutEffect,     // an assignment that defined nothing
    unusedArgument,    // a value written after a function that does not take it
    unusedPercentage,  // a percentage that was not applied
    caseDecides,       // a unit's symbol that is another unit's in another case
    metricTon,         // a ton, which is the tonne of 1,000 kg wherever it is written
    noSuchDate,        // digits in the form of a date or a clock time that there is not
    noHolidays,        // workdays were counted from Monday to Friday: no holidays are known
    implicitProduct,   // a product without a sign after a division or a function
    earlierEnd,        // a difference of two times that is negative, as that of the ends of a span
    malformedNumber,   // digits beside signs or letters that no number has
    unknownCurrency,   // a word for money of several countries, none of which is the locale's
    dashedRange,       // a range with a dash, of which the difference was taken
};

// The kind in texts for programs, such as "unused_value".
std::u16string_view noteKindName(NoteKind kind);

// A remark on part of a line: `start` and `length` in UTF-16 units of its text, the message in the user's language.
struct Note {
    NoteKind kind = NoteKind::unusedValue;
    std::uint32_t start = 0;
    std::uint32_t length = 0;
    std::u16string message;
    friend bool operator==(const Note&, const Note&) = default;
};

// Why a line that asks for a result has none.
enum class ReasonCode : std::uint8_t {
    divisionByZero,
    differentDimensions,  // two units that do not convert into each other
    noRates,              // there are no exchange rates
    noRate,               // there is none for this currency
    unbalancedBrackets,
    missingOperand,
    missingArgument,  // a function without its value
    unknownPlace,
    placeAwaited,  // the time zone of a place is being looked up
    tooLong,       // the line has more than 4,096 UTF-16 units
    tooDeep,       // more than 100 brackets in each other
    outOfRange,    // a number or an argument out of range
    scriptFailed,
    datesAdded,     // an operator that has no meaning between two dates
    droppedUnits,   // a division whose units do not make the one that is asked for
    notUnderstood,  // anything else
};

// The code in texts for programs, such as "division_by_zero".
std::u16string_view reasonCodeName(ReasonCode code);

// The reason with its message.
struct Reason {
    ReasonCode code = ReasonCode::notUnderstood;
    std::u16string message;  // in the user's language
    friend bool operator==(const Reason&, const Reason&) = default;
};

}  // namespace vemo

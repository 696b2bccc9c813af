// SPDX-License-Identifier: MIT
#include "evaluation/duration_evaluator.h"

#include <algorithm>

#include "evaluation/element_replacement.h"
#include "evaluation/element_tests.h"
#include "platform/locale_info.h"

namespace vemo {

namespace {

constexpr int minutesPerHour = 60;

bool isBareUnit(const ElementList& elements, std::size_t i, std::u16string_view unit) {
    return i < elements.size() && elements[i].value.is(Attribute::unit, unit) &&
           !elements[i].value.has(Attribute::decimal);
}

// The minutes of an hour, written in `digits` digits, or in one or two where that is 0.
std::optional<int> minutesOf(const ElementList& elements, std::size_t i, std::size_t digits) {
    if (i >= elements.size() || !isNumberWithoutUnit(elements[i]) || runTypeOf(elements[i]) != RunType::number)
        return std::nullopt;
    const std::u16string& text = elements[i].text();
    if (text.size() > 2 || (digits != 0 && text.size() != digits)) return std::nullopt;
    int minutes = 0;
    for (const char16_t c : text) {
        if (digitValue(c) < 0) return std::nullopt;
        minutes = minutes * 10 + digitValue(c);
    }
    return minutes < minutesPerHour ? std::optional(minutes) : std::nullopt;
}

// True where nothing follows that a number would count: the end, an operator, a bracket, and, unless the number is to
// end what is calculated, words.
bool endsNumber(const ElementList& elements, std::size_t i, bool wordsToo) {
    const std::size_t next = neighbourOf(elements, i, 1);
    if (next >= elements.size()) return true;
    const Value& value = elements[next].value;
    if (value.has(Attribute::operation) || value.has(Attribute::parenthesis)) return true;
    return value.isEmpty() && (wordsToo || runTypeOf(elements[next]) == RunType::comment);
}

struct Clock {
    int fields[3] = {};
    std::size_t count = 0;
};

// "1:30", "1:30:15", and "1h30" with another separator; nothing with any other letter or word.
std::optional<Clock> clockOf(std::u16string_view text, char16_t separator) {
    Clock clock;
    bool digit = false;
    for (const char16_t c : text) {
        if (c == u' ' && separator != u':') continue;
        if (const int value = digitValue(c); value >= 0) {
            if (!digit && ++clock.count > 3) return std::nullopt;
            digit = true;
            clock.fields[clock.count - 1] = clock.fields[clock.count - 1] * 10 + value;
        } else if ((c == separator || (separator == u'h' && c == u'H')) && digit) {
            digit = false;
        } else {
            return std::nullopt;
        }
    }
    return digit && clock.count > 1 ? std::optional(clock) : std::nullopt;
}

// The fields as an amount of the unit of the first field: 1:30 is 1.5.
Value amount(const Clock& clock, std::u16string_view unit) {
    std::int64_t smallest = 0, divisor = 1;
    for (std::size_t i = 0; i < clock.count; ++i) {
        smallest = smallest * minutesPerHour + clock.fields[i];
        if (i > 0) divisor *= minutesPerHour;
    }
    return Value(DecimalNumber::fromInt64(smallest).dividing(DecimalNumber::fromInt64(divisor)))
        .with(unit, Attribute::unit);
}

bool isLetteredClock(const Element& element) {
    return element.value.has(Attribute::date) && clockOf(element.text(), u'h').has_value();
}

// True for a line that calculates with its times of the form "1h30", or converts them to a unit, and has no other date.
bool calculatesWithLetteredClocks(const ElementList& elements) {
    bool found = false, calculates = false;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Element& element = elements[i];
        if (element.value.has(Attribute::date)) {
            if (!isLetteredClock(element)) return false;
            found = true;
        }
        if (isOperator(element, u"in")) {
            const std::size_t target = neighbourOf(elements, i, 1);
            calculates = calculates || (target < elements.size() && elements[target].value.has(Attribute::unit) &&
                                        !elements[target].value.has(Attribute::date));
        } else if (element.value.has(Attribute::operation)) {
            const bool arithmetic = isOperator(element, u"+") || isOperator(element, u"-") ||
                                    isOperator(element, u"*") || isOperator(element, u"/");
            if (!arithmetic) return false;
            calculates = true;
        }
    }
    return found && calculates;
}

// True for a sum of clock times: "1:45 + 2:30". Times can't be added, so these are lengths of time.
bool addsClocks(const ElementList& elements) {
    std::size_t clocks = 0, sums = 0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Value& value = elements[i].value;
        if (value.isEmpty()) continue;
        // The sign of "10:30 +09:00" is that of an offset.
        const bool sign = i > 0 && i + 1 < elements.size() && isBlank(elements[i - 1]) && !isBlank(elements[i + 1]);
        if (value.has(Attribute::date) && clockOf(elements[i].text(), u':'))
            ++clocks;
        else if (isOperator(elements[i], u"+") && !sign)
            ++sums;
        else
            return false;
    }
    return sums > 0 && clocks == sums + 1;
}

// True for the "m" of what is added to hours, which are no metres: "1h 20m + 45m".
bool isMinuteOfSum(const ElementList& elements, std::size_t i) {
    if (!isBareUnit(elements, i, u"m") || elements[i].text() != u"m" || i < 2) return false;
    const std::size_t number = neighbourOf(elements, i, -1), sign = neighbourOf(elements, number, -1);
    if (number > i || sign > number || !isNumberWithoutUnit(elements[number]) ||
        !(isOperator(elements[sign], u"+") || isOperator(elements[sign], u"-")))
        return false;
    const auto isStroke = [&](std::size_t k) { return k < elements.size() && isOperator(elements[k], u"/"); };
    if (isStroke(neighbourOf(elements, i, 1))) return false;
    for (std::size_t k = 0; k < sign; ++k)
        if (isBareUnit(elements, k, u"hour") && !(k > 0 && isStroke(neighbourOf(elements, k, -1)))) return true;
    return false;
}

}  // namespace

std::optional<ElementList> DurationEvaluator::evaluate(const ElementList& elements, Context&,
                                                       const EvaluationContext&) const {
    const bool dates = elements.anyHas(Attribute::date);
    const bool lettered = dates && calculatesWithLetteredClocks(elements);
    const bool added = dates && addsClocks(elements);
    ElementReplacer replacer(elements);
    const auto put = [&](std::size_t from, std::size_t to, Value value, RunType type) {
        const std::u16string text = elements.slice(from, to).text();
        replacer.replace({from, to - from}).append(makeElement(std::move(value), AttributedText(text, type)));
    };
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Element& element = elements[i];
        if (element.value.has(Attribute::date)) {
            const std::size_t unit = neighbourOf(elements, i, 1);
            const auto clockAlone = lettered ? clockOf(element.text(), u'h')
                                    : added  ? clockOf(element.text(), u':')
                                             : std::nullopt;
            if (clockAlone) {
                put(i, i + 1, amount(*clockAlone, u"hour"), RunType::number);
                continue;
            }
            const bool ofHours = isBareUnit(elements, unit, u"hour");
            if (!ofHours && !isBareUnit(elements, unit, u"minute")) continue;
            const auto clock = clockOf(element.text(), u':');
            if (!clock || (!ofHours && clock->count > 2)) continue;
            put(i, unit + 1, amount(*clock, ofHours ? u"hour" : u"minute"), RunType::number);
            i = unit;
        } else if (isMinuteOfSum(elements, i)) {
            put(i, i + 1, Value(Attribute::unit, u"minute"), RunType::unit);
        } else if (isBareUnit(elements, i, u"hour")) {
            const std::size_t count = neighbourOf(elements, i, -1), rest = neighbourOf(elements, i, 1);
            if (count >= elements.size() || !isNumberWithoutUnit(elements[count])) continue;
            const std::size_t unit = neighbourOf(elements, rest, 1);
            // An "m" after hours and less than 60 is minutes, not metres.
            if (isBareUnit(elements, unit, u"m") && elements[unit].text() == u"m" && minutesOf(elements, rest, 0)) {
                put(unit, unit + 1, Value(Attribute::unit, u"minute"), RunType::unit);
                i = unit;
            } else if (const auto minutes = minutesOf(elements, rest, 2);
                       minutes && endsNumber(elements, rest, rest == i + 1)) {
                put(rest, rest + 1, Value(DecimalNumber::fromInt64(*minutes)).with(u"minute", Attribute::unit),
                    RunType::number);
                i = rest;
            }
        }
    }
    return replacer.finished();
}

}  // namespace vemo

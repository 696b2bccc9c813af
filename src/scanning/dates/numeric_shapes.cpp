// SPDX-License-Identifier: MIT
#include "scanning/dates/date_shapes.h"

namespace vemo {

namespace {

// True for a year of our time: a date with one means nothing as a sum or quotient.
bool isOfOurTime(const DateLexeme& year) {
    constexpr int earliest = 1900, latest = 2199;
    return year.digits == 4 && year.value >= earliest && year.value <= latest;
}

}  // namespace

// 3/4/2027, 4.3.2027, 2027-03-04, 12-25-2026: three fields of one separator without blanks
Attempt<DayReading> DayShapes::numeric(std::size_t i) const {
    const DateLexeme* fields[] = {number(i), number(i + 2), number(i + 4)};
    if (!fields[0] || !fields[1] || !fields[2] || fields[0]->openLeft) return std::nullopt;
    for (std::size_t k = 1; k <= 4; ++k)
        if (!touches(i + k)) return std::nullopt;
    const bool slashes = isSign(i + 1, u'/') && isSign(i + 3, u'/');
    const bool stops = isSign(i + 1, u'.') && isSign(i + 3, u'.');
    const bool dashes = isDash(i + 1) && isDash(i + 3);
    if (!(slashes || stops || dashes) || !endsNumeric(i + 4)) return std::nullopt;
    if (i > 0 && touches(i) && (isSign(i - 1, u'/') || isSign(i - 1, u'.'))) return std::nullopt;

    const std::size_t digits[] = {fields[0]->digits, fields[1]->digits, fields[2]->digits};
    const bool afterDash = dashes && fields[0]->afterOperator;
    const bool beforeDash = isDash(i + 5) && touches(i + 5) && number(i + 6);
    const bool yearFirst = text_.order == DateOrder::yearMonthDay;
    // Year first: with leading zeros anywhere, without them where the locale writes so.
    const bool padded = digits[1] == 2 && digits[2] == 2;
    if (digits[0] == 4 && digits[1] <= 2 && digits[2] <= 2 && !afterDash && (padded || (yearFirst && !dashes))) {
        auto date = numericDate(*fields[0], *fields[1], *fields[2], i);
        if (date) date->certain = isOfOurTime(*fields[0]);
        return date;
    }
    if (digits[0] > 2 || digits[1] > 2 || (digits[2] != 4 && digits[2] != 2)) return std::nullopt;
    if (dashes && (yearFirst || digits[0] != 2 || digits[1] != 2 || digits[2] != 4 || afterDash || beforeDash))
        return std::nullopt;  // "5-3-2026" is arithmetic
    if (digits[2] == 2 && (fields[0]->afterOperator || beforeDash)) return std::nullopt;
    const bool dayFirst = text_.order == DateOrder::dayMonthYear;
    // Two digits of the year after full stops only where dates are written so: elsewhere it is a version.
    if (stops && digits[2] == 2 && !dayFirst) return std::nullopt;
    Attempt<DayReading> date;
    if (stops || dayFirst)
        date = numericDate(*fields[2], *fields[1], *fields[0], i);
    else if (yearFirst && digits[2] == 2)
        date = numericDate(*fields[0], *fields[1], *fields[2], i);
    else
        date = numericDate(*fields[2], *fields[0], *fields[1], i);
    // "12/25/26", as dates are shown: three numbers of two digits that are a day are no quotients, nor is what days
    // are added to: "9/1/26 + 1 year". Both signs of arithmetic are "*" here.
    const bool shifted = isSign(i + 5, u'*') && number(i + 6) && is(i + 7, DateWord::unit);
    const bool asShown = (stops || slashes) && digits[0] == 2 && digits[1] == 2;
    if (date) date->certain = isOfOurTime(*fields[2]) || asShown || (slashes && shifted);
    return date;
}

// True unless something touches the last field that makes it another number or goes on with the arithmetic.
bool DayShapes::endsNumeric(std::size_t last) const {
    if (number(last)->openRight) return false;
    const DateLexeme* next = at(last + 1);
    return !next || next->spaced || next->kind != DateLexeme::Kind::word || isIsoT(last + 1) || next->entry;
}

Attempt<DayReading> DayShapes::numericDate(const DateLexeme& year, const DateLexeme& month, const DateLexeme& day,
                                           std::size_t i) {
    constexpr int earliest = 1000;
    if (year.digits == 4 && year.value < earliest) return std::nullopt;
    return Parsed<DayReading>{
        NamedDay{fullYear(year), static_cast<unsigned>(month.value), static_cast<unsigned>(day.value)}, i + 5};
}

// 24.12., in German
Attempt<DayReading> DayShapes::dottedWithoutYear(std::size_t i) const {
    constexpr int lastMonth = 12;
    if (!text_.language.starts_with("de")) return std::nullopt;
    const DateLexeme* day = number(i);
    const DateLexeme* month = number(i + 2);
    if (!day || !month || !isSign(i + 1, u'.') || !isSign(i + 3, u'.') || !touches(i + 1) || !touches(i + 2) ||
        !touches(i + 3) || day->openLeft || day->digits > 2 || month->digits > 2 || month->value < 1 ||
        month->value > lastMonth)
        return std::nullopt;
    // "1.2. Einleitung" is a chapter.
    const bool led = i > 0 && isAny(i - 1, DateWord::on, DateWord::rangeFrom, DateWord::rangeTo, DateWord::until,
                                    DateWord::since, DateWord::after, DateWord::before, DateWord::howLong);
    if ((!led && !endsPhrase(i + 4)) || (at(i + 4) && touches(i + 4) && !endsPhrase(i + 4))) return std::nullopt;
    Parsed<DayReading> date{
        NamedDay{std::nullopt, static_cast<unsigned>(month->value), static_cast<unsigned>(day->value)}, i + 4};
    date.certain = true;
    return date;
}

// "days until 12/25": a day where a word asks for one, else a fraction
Attempt<DayReading> DayShapes::strokedWithoutYear(std::size_t i) const {
    constexpr int lastMonth = 12, lastDay = 31;
    if (!isSign(i + 1, u'/')) return std::nullopt;
    const DateLexeme* first = number(i);
    const DateLexeme* second = number(i + 2);
    if (!first || !second || !touches(i + 1) || !touches(i + 2) || first->openLeft || second->openRight ||
        first->digits > 2 || second->digits > 2)
        return std::nullopt;
    const bool led =
        i > 0 && isAny(i - 1, DateWord::until, DateWord::since, DateWord::before, DateWord::after, DateWord::howLong);
    const bool followed = touches(i + 3) && isAny(i + 3, DateWord::until, DateWord::howLong);
    if (!followed && !(led && endsPhrase(i + 3))) return std::nullopt;
    const bool dayFirst = text_.order == DateOrder::dayMonthYear;
    const DateLexeme& month = dayFirst ? *second : *first;
    const DateLexeme& day = dayFirst ? *first : *second;
    if (month.value < 1 || month.value > lastMonth || day.value < 1 || day.value > lastDay) return std::nullopt;
    Parsed<DayReading> date{
        NamedDay{std::nullopt, static_cast<unsigned>(month.value), static_cast<unsigned>(day.value)}, i + 3};
    date.certain = true;
    return date;
}

// 10-Aug-2012, 09/Jan/2017, 9-Jan-17, Aug-10-2012, 2012-Aug-10: a name between two numbers
Attempt<DayReading> DayShapes::joinedByDashes(std::size_t i) const {
    for (std::size_t k = 1; k <= 4; ++k)
        if (!touches(i + k)) return std::nullopt;
    const bool dashes = isDash(i + 1) && isDash(i + 3);
    if (!dashes && !(isSign(i + 1, u'/') && isSign(i + 3, u'/'))) return std::nullopt;
    const bool nameFirst = is(i, DateWord::month);
    const DateLexeme* first = number(nameFirst ? i + 2 : i);
    const DateLexeme* last = number(i + 4);
    const std::size_t name = nameFirst ? i : i + 2;
    if (!is(name, DateWord::month) || !first || !last || !endsNumeric(i + 4)) return std::nullopt;
    if (!nameFirst && (first->openLeft || first->afterOperator)) return std::nullopt;
    const bool yearFirst = !nameFirst && first->digits == 4;
    const DateLexeme& year = yearFirst ? *first : *last;
    const DateLexeme& day = yearFirst ? *last : *first;
    if (day.digits > 2 || (year.digits != 4 && (year.digits != 2 || nameFirst))) return std::nullopt;
    const auto month = static_cast<unsigned>(value(name, DateWord::month));
    Parsed<DayReading> date{NamedDay{fullYear(year), month, static_cast<unsigned>(day.value)}, i + 5};
    date.certain = true;
    return date;
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#include "scanning/dates/range_dashes.h"

namespace vemo {

namespace {

constexpr int noon = 12, hoursPerDay = 24, minutesPerHour = 60, latestDay = 31;

const DateVocabulary::Entry& rangeWord() {
    static const DateVocabulary::Entry entry{u"-", {{DateWord::rangeTo, 0, false}}};
    return entry;
}

class RangeDashes : DateShapes {
public:
    explicit RangeDashes(const DateText& text) : DateShapes(text) {}

    bool isRange(std::size_t dash) const {
        if (dash == 0 || dash + 1 >= lexemes_.size() || lexemes_[dash].spaced != lexemes_[dash + 1].spaced)
            return false;
        const Dash kind = dashAt(dash);
        return kind != Dash::none && (joinsTimes(dash, kind) || joinsDays(dash, kind));
    }

private:
    enum class Dash { none, minus, dash, wave };
    struct End {
        std::size_t end = 0;
        int minutes = 0;
        std::optional<int> half = {};  // of the day, as in "5pm"
        bool clock = false;            // 9:30
        bool said = false;             // 5pm, 10 Uhr
        bool lettered = false;         // 10h
        bool isTime() const { return clock || said || lettered; }
    };

    Dash dashAt(std::size_t i) const {
        if (lexemes_[i].kind != DateLexeme::Kind::sign) return Dash::none;
        switch (signAt(i)) {
            case u'-':
                return Dash::minus;
            case u'\u2013':
            case u'\u2014':
                return Dash::dash;
            case u'~':
            case u'\u301c':
            case u'\uff5e':
                return Dash::wave;
            default:
                return Dash::none;
        }
    }

    // An hour of the day that starts at the lexeme, in any form.
    std::optional<End> hourAt(std::size_t i) const {
        const DateLexeme* hour = number(i);
        if (!hour || hour->digits > 2 || hour->openLeft || hour->value > hoursPerDay) return std::nullopt;
        End end{i + 1, hour->value * minutesPerHour};
        const bool stop = isSign(i + 1, u'.');
        if ((stop || isSign(i + 1, u':')) && touches(i + 1) && touches(i + 2) && isMinutes(i + 2)) {
            end.minutes += number(i + 2)->value;
            end.clock = !stop;
            end.end += 2;
        }
        if (number(end.end - 1)->openRight) return std::nullopt;
        if (is(end.end, DateWord::half)) {
            end.half = value(end.end++, DateWord::half);
            end.minutes %= noon * minutesPerHour;
            end.said = true;
        } else if (is(end.end, DateWord::oclock)) {
            end.said = true;
            ++end.end;
            if (is(end.end, DateWord::halfPast))
                ++end.end;
            else if (number(end.end) && is(end.end + 1, DateWord::minuteMark))
                end.end += 2;
        } else if (is(end.end, DateWord::hourLetter) && touches(end.end)) {
            end.lettered = true;
            ++end.end;
            if (touches(end.end) && isMinutes(end.end)) end.minutes += number(end.end++)->value;
        } else if (stop && end.end > i + 1) {
            return std::nullopt;  // a number with a fraction
        }
        return end;
    }
    bool isMinutes(std::size_t i) const { return number(i) && number(i)->digits == 2; }

    bool joinsTimes(std::size_t dash, Dash kind) const {
        const auto right = hourAt(dash + 1);
        if (!right) return false;
        constexpr std::size_t furthest = 5;
        for (std::size_t back = 1; back <= furthest && back <= dash; ++back) {
            const std::size_t start = dash - back;
            const auto left = hourAt(start);
            if (!left || left->end != dash) continue;
            if (lexemes_[start].afterOperator || (start > 0 && isIsoT(start - 1))) return false;
            if (kind == Dash::wave) return left->isTime() || right->isTime();
            return left->isTime() ? joinsTimes(*left, *right, kind, lexemes_[dash].spaced) : joinsHour(*left, *right);
        }
        return false;
    }
    // True for 3-5pm and 10 - 12:30: a number less a time means nothing else.
    static bool joinsHour(const End& left, const End& right) {
        if (!right.clock && !right.said) return false;
        return !right.half || (left.minutes > 0 && left.minutes <= noon * minutesPerHour);
    }
    // True for 9am-5pm and 9:30-17:00; but 17:00-9:15 is a difference.
    static bool joinsTimes(const End& left, const End& right, Dash kind, bool spaced) {
        if (kind == Dash::minus && spaced) return false;
        if (!right.isTime()) return left.half && !spaced;
        const bool comparable = left.half == right.half;
        return comparable ? left.minutes < right.minutes : (left.half || right.half);
    }

    const DateLexeme* day(std::size_t i) const {
        const DateLexeme* lexeme = number(i);
        const bool fits = lexeme && lexeme->digits <= 2 && lexeme->value >= 1 && lexeme->value <= latestDay;
        return fits && !lexeme->openLeft ? lexeme : nullptr;
    }
    // True for 3-5 December, 3.-5. Dezember, December 3-5 and 12月3〜5日.
    bool joinsDays(std::size_t dash, Dash kind) const {
        if (kind != Dash::wave && lexemes_[dash].spaced) return false;
        std::size_t start = dash - 1;
        if (start > 0 && (isSign(start, u'.') || isAny(start, DateWord::ordinal, DateWord::dayMark))) --start;
        const DateLexeme* first = day(start);
        const DateLexeme* last = day(dash + 1);
        if (!first || !last || first->value >= last->value || first->openRight || first->afterOperator) return false;
        const std::size_t after =
            skipping(isSign(dash + 2, u'.') ? dash + 3 : skipping(dash + 2, DateWord::ordinal), DateWord::of);
        if (is(after, DateWord::month)) return true;
        const std::size_t before = start > 0 && isSign(start - 1, u'.') ? start - 1 : start;
        return before > 0 && isAny(before - 1, DateWord::month, DateWord::monthMark) &&
               (!last->openRight || isSign(dash + 2, u','));
    }
};

}  // namespace

void readRangeDashes(const DateText& text, std::vector<DateLexeme>& lexemes) {
    const RangeDashes dashes(text);
    for (std::size_t i = 1; i < lexemes.size(); ++i) {
        if (!dashes.isRange(i)) continue;
        lexemes[i].kind = DateLexeme::Kind::word;
        lexemes[i].entry = &rangeWord();
        lexemes[i + 1].afterOperator = false;
    }
}

}  // namespace vemo

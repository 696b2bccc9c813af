// SPDX-License-Identifier: MIT
#include "scanning/dates/date_grammar.h"

#include "scanning/dates/date_shapes.h"

namespace vemo {

namespace {

// Joins days and times.
class DateGrammar : DateShapes {
public:
    DateGrammar(std::u16string_view text, const std::vector<DateLexeme>& lexemes, DateOrder order,
                std::string_view language)
        : DateShapes(text, lexemes), days_(text, lexemes, order), times_(text, lexemes, language) {}

    std::vector<DateReading> readings() const {
        std::vector<DateReading> result;
        std::size_t used = 0;
        for (std::size_t i = 0; i < lexemes_.size();) {
            auto moment = momentAt(i);
            if (!moment) {
                ++i;
                continue;
            }
            const std::size_t start = withLeadingWords(i, used);
            moment->reading.range = rangeOf(start, moment->end);
            result.push_back(std::move(moment->reading));
            i = used = moment->end;
        }
        return result;
    }

private:
    TextRange rangeOf(std::size_t from, std::size_t to) const {
        const std::size_t start = lexemes_[from].range.location;
        return {start, lexemes_[to - 1].range.end() - start};
    }

    // "on Friday", "at 5pm", "on the 4th of March": the words belong to the date, as "on" would be an operator
    // otherwise.
    std::size_t withLeadingWords(std::size_t i, std::size_t used) const {
        const auto leads = [&](std::size_t behind) {
            return behind > used && (is(behind - 1, DateWord::on) || is(behind - 1, DateWord::at)) &&
                   !followsNumber(behind - 1);
        };
        if (leads(i)) return i - 1;
        return i > used && is(i - 1, DateWord::article) && leads(i - 1) ? i - 2 : i;
    }

    static Attempt<DateReading> moment(std::optional<DayReading> day, std::optional<TimeReading> time,
                                       std::size_t end) {
        return Parsed<DateReading>{{{}, std::move(day), time}, end};
    }

    Attempt<DateReading> momentAt(std::size_t i) const {
        Attempt<DateReading> best;
        if (const auto day = days_.dayAt(i)) {
            if (day->alone) best = moment(day->reading, {}, day->end);
            const std::size_t joined = skipping(behindComma(day->end), DateWord::at, DateWord::joint, DateWord::on);
            const std::size_t next = isIsoT(day->end) ? day->end + 1 : joined;
            if (const auto time = times_.timeAt(next)) keepLonger(best, moment(day->reading, time->reading, time->end));
            if (is(next, DateWord::dayPart))
                keepLonger(best, moment(day->reading, hourOf(next, DateWord::dayPart), next + 1));
        }
        // this morning, last night
        if (is(i, DateWord::next) && value(i, DateWord::next) <= 0 && is(i + 1, DateWord::dayPart))
            keepLonger(best, moment(ShiftedDay{DateUnit::day, value(i, DateWord::next)},
                                    hourOf(i + 1, DateWord::dayPart), i + 2));
        if (is(i, DateWord::tonight)) keepLonger(best, tonightAt(i));
        if (const auto time = times_.timeAt(i)) {
            keepLonger(best, moment({}, time->reading, time->end));
            const std::size_t next = skipping(behindComma(time->end), DateWord::on, DateWord::article, DateWord::joint);
            if (is(next, DateWord::tonight)) keepLonger(best, moment(ShiftedDay{}, time->reading, next + 1));
            if (const auto day = days_.dayAt(next)) keepLonger(best, moment(day->reading, time->reading, day->end));
        }
        return best;
    }
    TimeReading hourOf(std::size_t i, DateWord word) const { return {value(i, word), 0, 0, {}}; }

    // tonight, tonight at 9pm
    Attempt<DateReading> tonightAt(std::size_t i) const {
        if (const auto time = times_.timeAt(skipping(i + 1, DateWord::at)))
            return moment(ShiftedDay{}, time->reading, time->end);
        return moment(ShiftedDay{}, hourOf(i, DateWord::tonight), i + 1);
    }

    DayShapes days_;
    TimeShapes times_;
};

}  // namespace

std::vector<DateReading> readDates(std::u16string_view text, const DateVocabulary& vocabulary, DateOrder order) {
    std::u16string lower(text);
    for (char16_t& c : lower) c = lowercasedUnit(c);
    const std::vector<DateLexeme> lexemes = dateLexemes(lower, vocabulary);
    return DateGrammar(text, lexemes, order, vocabulary.language()).readings();
}

}  // namespace vemo

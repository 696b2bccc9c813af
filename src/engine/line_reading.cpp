// SPDX-License-Identifier: MIT
#include "engine/line_reading.h"

#include <algorithm>

namespace vemo {

namespace {

// How an operation reads: %l and %r are its operands, %n and %m their numbers without a unit. Each occurs once, so
// that a reading is never much longer than its line.
struct Template {
    std::u16string_view id, text;
};

constexpr Template templates[] = {
    {u"+", u"%l + %r"},
    {u"-", u"%l - %r"},
    {u"*", u"%l × %r"},
    {u"/", u"%l ÷ %r"},
    {u"^", u"%l ^ %r"},
    {u"and", u"%l & %r"},
    {u"or", u"%l | %r"},
    {u"left_shift", u"%l << %r"},
    {u"right_shift", u"%l >> %r"},
    {u"percent_of", u"%r × %l"},
    {u"percent_on", u"%r × (1 + %l)"},
    {u"percent_off", u"%r × (1 - %l)"},
    {u"percent_of_what_is", u"(%r ÷ %n) × 100"},
    {u"percent_off_what_is", u"%r × (100 ÷ (100 - %n))"},
    {u"percent_on_what_is", u"%r × (100 ÷ (100 + %n))"},
    {u"percent_change", u"(%r ÷ %l - 1) × 100"},
    {u"is_percent_of", u"(%l ÷ %m) × 100"},
    {u"is_percent_off", u"%l × (100 ÷ (100 - %m))"},
    {u"is_percent_on", u"%l × (100 ÷ (100 + %m))"},
};
// For a sum or difference whose right operand is a percentage of the left one.
constexpr Template ofLeft[] = {{u"+", u"%l × (1 + %r)"}, {u"-", u"%l × (1 - %r)"}};

bool isPercent(const Value& value) {
    return value.is(Attribute::unit, u"percent");
}

bool isWithin(const TextRange& inner, const TextRange& outer) {
    return inner.location >= outer.location && inner.end() <= outer.end();
}

class Writer {
public:
    Writer(std::u16string_view line, std::span<const ReadingStep> steps, const ValueWriter& write)
        : line_(line), steps_(steps), write_(write) {}

    std::u16string whole(const Value& result) const {
        const std::size_t step = stepFor({result, {0, line_.size()}}, steps_.size());
        return step < steps_.size() ? written(step) : write_(result);
    }

private:
    // The latest step before one that made the operand; the number of steps without one.
    std::size_t stepFor(const ReadingStep::Operand& operand, std::size_t before) const {
        for (std::size_t i = before; i-- > 0;)
            if (isWithin(steps_[i].range, operand.range) && steps_[i].result == operand.value) return i;
        return steps_.size();
    }

    // An operand between operators, and whether it needs brackets there.
    std::pair<std::u16string, bool> operandText(const ReadingStep::Operand& operand, std::size_t before) const {
        const std::size_t step = stepFor(operand, before);
        if (step < steps_.size()) return {written(step), !steps_[step].isFunction};
        // A unit or zone alone stands as it was written.
        if (!operand.value.has(Attribute::decimal) && !operand.value.has(Attribute::date))
            return {std::u16string(trimmed(operand.range.in(line_))), false};
        const std::u16string text = write_(operand.value);
        return {text, text.starts_with(u'-')};
    }

    std::u16string bracketed(const ReadingStep::Operand& operand, std::size_t before) const {
        const auto [text, brackets] = operandText(operand, before);
        return brackets ? u"(" + text + u")" : text;
    }

    std::u16string written(std::size_t index) const {
        const ReadingStep& step = steps_[index];
        if (step.isFunction) {
            std::u16string text = step.name;
            if (step.operands.size() > 1) {
                for (std::size_t i = 0; i < step.operands.size(); ++i)
                    text.append(i == 0 ? u"(" : u"; ").append(operandText(step.operands[i], index).first);
                return text + u")";
            }
            for (const ReadingStep::Operand& operand : step.operands)
                text.append(u" (").append(operandText(operand, index).first).append(u")");
            return text;
        }
        const ReadingStep::Operand& left = step.operands.front();
        const ReadingStep::Operand& right = step.operands.back();
        // An operator with one operand gives that operand, or is its sign.
        if (right.value.isEmpty()) {
            const std::u16string text = operandText(left, index).first;
            // "5 hours ago": the word says what is told of the operand.
            const std::size_t end = std::max(left.range.end(), step.range.end());
            const std::u16string_view word = trimmed(line_.substr(left.range.end(), end - left.range.end()));
            return step.result == left.value || word.empty() ? text : text + u" " + std::u16string(word);
        }
        if (left.value.isEmpty() && step.result == right.value) return operandText(right, index).first;
        const std::u16string r = bracketed(right, index);
        if (left.value.isEmpty()) return isLetter(step.name.front()) ? signOf(step) + u" " + r : step.name + r;
        const std::u16string l = bracketed(left, index);
        std::u16string result;
        const std::u16string_view form = formOf(step);
        for (std::size_t i = 0; i < form.size(); ++i) {
            if (form[i] != u'%') {
                result += form[i];
                continue;
            }
            const char16_t part = form[++i];
            const Value& number = part == u'm' ? right.value : left.value;
            result += part == u'l' ? l : part == u'r' ? r : write_(number.without(Attribute::unit));
        }
        return result.empty() ? l + u" " + signOf(step) + u" " + r : result;
    }

    static std::u16string_view formOf(const ReadingStep& step) {
        const bool change = isPercent(step.operands.back().value) && !isPercent(step.operands.front().value);
        const auto find = [&](std::span<const Template> rows) {
            const auto row =
                std::find_if(rows.begin(), rows.end(), [&](const Template& each) { return each.id == step.name; });
            return row == rows.end() ? std::u16string_view() : row->text;
        };
        const std::u16string_view changed = change ? find(ofLeft) : std::u16string_view();
        return changed.empty() ? find(templates) : changed;
    }

    // What was written between the operands, for operators that are words.
    std::u16string signOf(const ReadingStep& step) const {
        const TextRange& left = step.operands.front().range;
        const TextRange& right = step.operands.back().range;
        if (right.location <= left.end()) return step.name;
        const std::u16string_view between = trimmed(line_.substr(left.end(), right.location - left.end()));
        return between.empty() ? step.name : std::u16string(between);
    }

    std::u16string_view line_;
    std::span<const ReadingStep> steps_;
    const ValueWriter& write_;
};

}  // namespace

std::u16string lineReading(std::u16string_view line, std::span<const ReadingStep> steps, const Value& result,
                           const ValueWriter& write) {
    return Writer(line, steps, write).whole(result);
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#include "evaluation/time_zone_evaluator.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "functions/date_values.h"
#include "platform/locale_info.h"

namespace vemo {

std::optional<ElementList> TimePrefixedByTimeZoneEvaluator::evaluate(const ElementList& elements, Context& context,
                                                                     const EvaluationContext&) const {
    return replacingMatches(elements, matcher_, [&](const Match& match) {
        const Value& zone = elements[match.group(u"timezone")->location].value;
        const Value& time = elements[match.group(u"time")->location].value;
        return movedToTimeZone(time, *zone.timeZone(), context);
    });
}

namespace {

bool isZone(const ElementList& elements, std::size_t i) {
    return i < elements.size() && elements[i].value.has(Attribute::timeZone) && !elements[i].value.has(Attribute::date);
}

// True for the name of a place. An abbreviation before a time has been read together with it.
bool isPlace(const ElementList& elements, std::size_t i) {
    if (!isZone(elements, i)) return false;
    const std::u16string& text = elements[i].text();
    return std::any_of(text.begin(), text.end(), [](char16_t c) { return isCjk(c) || (c >= u'a' && c <= u'z'); });
}

bool isTimeFunction(const ElementList& elements, std::size_t i) {
    return i < elements.size() && elements[i].value.is(Attribute::function, u"time");
}

// The next element but for blanks and the particle of "東京の10時".
std::size_t afterParticle(const ElementList& elements, std::size_t i) {
    const std::size_t next = neighbourOf(elements, i, 1);
    const bool particle = next < elements.size() && trimmed(elements[next].text()) == u"\u306e";
    return particle ? neighbourOf(elements, next, 1) : next;
}

}  // namespace

std::optional<ElementList> TimePlacingEvaluator::evaluate(const ElementList& elements, Context& context,
                                                          const EvaluationContext&) const {
    ElementReplacer replacer(elements);
    const auto place = [&](std::size_t from, std::size_t to, std::size_t time, std::size_t zone) {
        const auto placed = placedInTimeZone(elements[time].value, *elements[zone].value.timeZone(), context);
        if (!placed) return false;
        const std::u16string text = elements.slice(from, to).text();
        replacer.replace({from, to - from}).append(makeElement(*placed, AttributedText(text, RunType::number)));
        return true;
    };
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (isPlace(elements, i)) {
            const std::size_t time = afterParticle(elements, i);
            if (time < elements.size() && isWrittenTime(elements[time]) && place(i, time + 1, time, i)) i = time;
        } else if (isWrittenTime(elements[i])) {
            std::size_t zone = neighbourOf(elements, i, 1);
            if (zone < elements.size() && isOperator(elements[zone], u"placed")) zone = neighbourOf(elements, zone, 1);
            if (!isZone(elements, zone)) continue;
            // "9am London time"
            const std::size_t word = neighbourOf(elements, zone, 1);
            const std::size_t end = isTimeFunction(elements, word) ? word + 1 : zone + 1;
            if (place(i, end, i, zone)) i = end - 1;
        } else if (isTimeFunction(elements, i) && i + 2 < elements.size() && elements[i + 1].value.isEmpty() &&
                   isZone(elements, i + 2) && trimmed(elements[i + 1].text()).empty()) {
            replacer.replace({i + 1, 1})
                .append(makeElement(Value(Attribute::operation, u"in"),
                                    AttributedText(elements[i + 1].text(), RunType::operatorWord)));
        }
    }
    return replacer.finished();
}

}  // namespace vemo

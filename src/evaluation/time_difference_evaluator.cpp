// SPDX-License-Identifier: MIT
#include "evaluation/time_difference_evaluator.h"

#include <algorithm>

#include "evaluation/element_tests.h"
#include "scanning/words/localizer.h"

namespace vemo {

TimeDifferenceEvaluator::TimeDifferenceEvaluator(const Localizer& localizer, const Places* places)
    : places_(places),
      beginnings_(localizer.variants(u"time_difference.variants", u"Dates")),
      links_(localizer.variants(u"time_difference_and.variants", u"Dates")) {
    // The longest first.
    std::stable_sort(beginnings_.begin(), beginnings_.end(),
                     [](const auto& a, const auto& b) { return a.size() > b.size(); });
    for (const std::u16string& beginning : beginnings_) firstUnits_ += beginning.front();
}

std::optional<TimeDifferenceEvaluator::Place> TimeDifferenceEvaluator::placeIn(std::u16string_view line,
                                                                               TextRange range) const {
    const std::u16string_view name = trimmed(range.in(line));
    auto zone = name.empty() ? std::nullopt : places_->zoneOf(name);
    if (!zone) return std::nullopt;
    return Place{{static_cast<std::size_t>(name.data() - line.data()), name.size()}, *std::move(zone)};
}

// Two places with "and" between them, or one after the other.
std::optional<std::pair<TimeDifferenceEvaluator::Place, TimeDifferenceEvaluator::Place>>
TimeDifferenceEvaluator::placesAfter(std::u16string_view line, std::size_t start) const {
    std::size_t end = line.size();
    while (end > start && (line[end - 1] == u'?' || isWhitespace(line[end - 1]))) --end;
    for (std::size_t i = start + 1; i < end; ++i) {
        if (!isWhitespace(line[i])) continue;
        std::size_t wordEnd = i + 1;
        while (wordEnd < end && !isWhitespace(line[wordEnd])) ++wordEnd;
        const std::u16string word = lowercased(line.substr(i + 1, wordEnd - i - 1));
        const bool link = std::find(links_.begin(), links_.end(), word) != links_.end();
        const std::size_t next = link ? wordEnd : i;
        auto first = placeIn(line, {start, i - start});
        auto second = first ? placeIn(line, {next, end - next}) : std::nullopt;
        if (second) return std::pair{*std::move(first), *std::move(second)};
    }
    return std::nullopt;
}

std::optional<ElementList> TimeDifferenceEvaluator::evaluate(const ElementList& elements, Context&,
                                                             const EvaluationContext&) const {
    if (!places_ || elements.empty() || elements.anyHas(Attribute::decimal)) return std::nullopt;
    const std::size_t from = startOfWords(elements);
    if (from == elements.size() || elements[from].text().empty() ||
        firstUnits_.find(lowercasedUnit(elements[from].text().front())) == std::u16string::npos)
        return std::nullopt;
    const std::u16string line = elements.slice(from, elements.size()).text();
    const std::u16string lower = lowercased(line);
    const auto beginning = std::find_if(beginnings_.begin(), beginnings_.end(), [&](const std::u16string& phrase) {
        return lower.starts_with(phrase) && lower.size() > phrase.size() && isWhitespace(lower[phrase.size()]);
    });
    if (beginning == beginnings_.end() || lower.size() != line.size()) return std::nullopt;
    const auto places = placesAfter(line, beginning->size());
    if (!places) return std::nullopt;
    const auto& [first, second] = *places;
    ElementList result = elements.slice(0, from);
    const auto text = [&](std::size_t begin, std::size_t end, RunType type) {
        if (begin < end) result.append(makeElement({}, AttributedText(line.substr(begin, end - begin), type)));
    };
    text(0, first.range.location, RunType::none);
    text(first.range.location, first.range.end(), RunType::unit);
    text(first.range.end(), second.range.location, RunType::none);
    text(second.range.location, second.range.end(), RunType::unit);
    text(second.range.end(), line.size(), RunType::none);
    const auto timeIn = [&](const Place& place) {
        result.append(makeElement(Value(TimeZone{place.zone}), {}));
        result.append(makeElement(Value(Attribute::function, u"time"), {}));
    };
    timeIn(second);
    result.append(makeElement(Value(Attribute::operation, u"-"), {}));
    timeIn(first);
    return result;
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#include "online/geo_names_parser.h"

#include <algorithm>

#include "engine/context_map.h"
#include "evaluation/structure_evaluators.h"

namespace vemo {

namespace {

// A place with the white space around it, as elements of their own.
void appendPlace(const std::u16string& text, std::u16string_view name, std::u16string zone, ElementList& elements) {
    const std::size_t start = text.find(name);
    const auto plain = [&](std::u16string_view space) {
        if (!space.empty()) elements.append(makeElement({}, AttributedText(space)));
    };
    plain(std::u16string_view(text).substr(0, start));
    elements.append(makeElement(Value(TimeZone{std::move(zone)}), AttributedText(name, RunType::unit)));
    plain(std::u16string_view(text).substr(start + name.size()));
}

// A place is one behind a time, a zone or a function, such as "time", or before one: "Coffee in Berlin $5" is a note.
bool isOfTime(const Element& element) {
    return element.value.has(Attribute::date) || element.value.has(Attribute::timeZone) || element.value.has(Attribute::function);
}

bool standsByTime(const ElementList& elements, std::size_t place) {
    const auto& all = elements.pointers();
    return std::any_of(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(place), [](const auto& e) { return isOfTime(*e); }) ||
           (place + 1 < elements.size() && isOfTime(elements[place + 1]));
}

}  // namespace

std::optional<ElementList> GeoNamesParser::evaluate(const ElementList& elements, Context& context,
                                                    const EvaluationContext&) const {
    // What every place stands beside.
    const auto& all = elements.pointers();
    if (std::none_of(all.begin(), all.end(), [](const auto& e) {
            return e->value.is(Attribute::operation, u"in") || e->value.is(Attribute::function, u"time");
        }))
        return std::nullopt;
    ElementReplacer replacer(elements);
    for (const Match& match : matcher_.occurrences(elements)) {
        const ElementRange& place = *match.group(u"text");
        const std::u16string& text = elements[place.location].text();
        const std::u16string_view name = trimmed(text);
        std::optional<std::u16string> zone;
        if (places_) {
            if (!standsByTime(elements, place.location)) continue;
            zone = places_->zoneOf(name);
            if (!zone) continue;
        } else {
            const std::u16string key = geoNameKey(name);
            context.addDependencyOn(key, std::nullopt, Value());
            const auto* known = context.get<std::u16string>(key);
            if (!known) return reducedTo(errorValue(), elements);
            zone = *known;
        }
        appendPlace(text, name, *std::move(zone), replacer.replace({place.location, 1}));
    }
    return replacer.finished();
}

}  // namespace vemo

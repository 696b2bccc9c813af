// SPDX-License-Identifier: MIT
#include "online/geo_names_parser.h"

#include "engine/context_map.h"

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

}  // namespace

std::optional<ElementList> GeoNamesParser::evaluate(const ElementList& elements, Context& context,
                                                    const EvaluationContext&) const {
    if (!elements.anyHas(Attribute::function) && !elements.anyHas(Attribute::operation)) return std::nullopt;
    ElementList result;
    std::size_t copied = 0;
    bool changed = false;
    const auto copyUpTo = [&](std::size_t end) {
        for (; copied < end; ++copied) result.append(elements.pointers()[copied]);
    };
    for (const Match& match : matcher_.occurrences(elements)) {
        const std::size_t place = match.group(u"text")->location;
        const std::u16string& text = elements[place].text();
        const std::u16string_view name = trimmed(text);
        std::optional<std::u16string> zone;
        if (places_) {
            zone = places_->zoneOf(name);
            if (!zone) continue;
        } else {
            const std::u16string key = geoNameKey(name);
            context.addDependencyOn(key, std::nullopt, Value());
            const auto* known = context.get<std::u16string>(key);
            if (!known) return reducedTo(errorValue(), elements);
            zone = *known;
        }
        copyUpTo(place);
        appendPlace(text, name, *std::move(zone), result);
        copied = place + 1;
        changed = true;
    }
    if (!changed) return std::nullopt;
    copyUpTo(elements.size());
    return result;
}

}  // namespace vemo

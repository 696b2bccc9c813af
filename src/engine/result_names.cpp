// SPDX-License-Identifier: MIT
// What a result tells about names and instants, found when somebody asks.
#include <algorithm>

#include "base/composed_text.h"
#include "platform/time_zones.h"
#include "records/context_map.h"
#include "records/line_result.h"
#include "vemo/engine.h"

namespace vemo {

namespace {

bool defines(const LineResult& line, std::u16string_view name) {
    const std::u16string key = variableKey(name);
    const auto updates = line.updates();
    return std::any_of(updates.begin(), updates.end(), [&](const auto& entry) { return entry->key() == key; });
}

}  // namespace

std::vector<VemoEngine::NameUse> VemoEngine::Result::Line::names() const {
    std::vector<NameUse> names;
    std::size_t end = 0;  // of the latest run that belongs to a name
    attributedText().enumerate([&](std::u16string_view text, RunType type, std::size_t location) {
        const std::u16string_view name = trimmed(text);
        if (type != RunType::variable) return;
        const std::size_t start = location + (name.empty() ? 0 : static_cast<std::size_t>(name.data() - text.data()));
        // A name that is being defined may be of several runs.
        if (!names.empty() && end == location) {
            NameUse& whole = names.back();
            if (!name.empty()) whole.length = static_cast<std::uint32_t>(start + name.size() - whole.start);
        } else if (!name.empty()) {
            names.push_back({{}, static_cast<std::uint32_t>(start), static_cast<std::uint32_t>(name.size()), false});
        }
        end = location + text.size();
    });
    const std::u16string_view line = result_->text();
    for (NameUse& use : names) {
        const std::u16string_view written = line.substr(use.start, use.length);
        const auto composed = composedText(written);
        use.name = lowercased(composed ? composed->text : written);
    }
    if (!names.empty()) names.front().defines = vemo::defines(*result_, names.front().name);
    return names;
}

std::optional<std::size_t> VemoEngine::Result::definitionOf(std::u16string_view name, std::size_t line) const {
    const std::u16string lower = lowercased(name);
    for (std::size_t i = std::min(line, lines.size()); i-- > 0;) {
        const std::vector<NameUse> names = lines[i].names();
        if (!names.empty() && names.front().defines && names.front().name == lower) return i;
    }
    return std::nullopt;
}

std::optional<Date> VemoEngine::Result::instantOf(std::size_t line) const {
    if (line >= lines.size()) return std::nullopt;
    const Value value = lines[line].value();
    const auto shown = value.date();
    const TimeZone* zone = value.timeZone();
    const TimeZone* local = context ? context->get<TimeZone>(context_keys::currentTimeZone) : nullptr;
    if (!shown || !zone || !local) return shown;
    const auto own = TimeZoneRules::find(zone->identifier), here = TimeZoneRules::find(local->identifier);
    return own && here ? own->instant(here->civil(*shown)) : std::nullopt;
}

}  // namespace vemo

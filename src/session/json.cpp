// SPDX-License-Identifier: MIT
#include "session/json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "session/printable.h"
#include "session/rows.h"

namespace vemo::session {

namespace {

nlohmann::json textsOf(const FormattedValue& value) {
    nlohmann::json texts = nlohmann::json::object();
    if (value.regular) texts["regular"] = utf8(*value.regular);
    if (value.shortText) texts["short"] = utf8(*value.shortText);
    return texts;
}

std::vector<std::string> utf8All(const std::vector<std::u16string>& texts) {
    std::vector<std::string> result(texts.size());
    std::transform(texts.begin(), texts.end(), result.begin(), [](const auto& text) { return utf8(text); });
    return result;
}

// The exact number and the unit's id, or the true instant and its zone; null where there is neither.
nlohmann::json valueOf(const VemoEngine::Result& result, std::size_t line) {
    nlohmann::json object;
    const Value value = result.lines[line].value();
    if (const auto instant = result.instantOf(line)) {
        object["instant"] = instantText(*instant);
        if (const TimeZone* zone = value.timeZone()) object["zone"] = utf8(zone->identifier);
        return object;
    }
    const auto number = value.decimal();
    if (!number || number->notANumber()) return object;
    object["number"] = number->toString();
    if (const auto unit = value.string(Attribute::unit)) object["unit"] = utf8(*unit);
    return object;
}

nlohmann::json lineOf(const VemoEngine::Result& result, std::size_t index) {
    const auto& line = result.lines[index];
    nlohmann::json runs = nlohmann::json::array();
    const AttributedText text = line.attributedText();
    text.enumerate([&](std::u16string_view run, RunType type, std::size_t) {
        nlohmann::json piece{{"text", utf8(run)}};
        if (type != RunType::none) piece["type"] = utf8(runTypeCode(type));
        runs.push_back(std::move(piece));
    });
    nlohmann::json object = textsOf(line.formattedResult());
    object["text"] = utf8(text.compoundString());
    object["runs"] = std::move(runs);
    const QuickTypeData words = line.quickTypeData();
    object["tokens"] = utf8All(words.tokens);
    object["expressions"] = utf8All(words.expressions);
    if (nlohmann::json value = valueOf(result, index); !value.is_null()) object["value"] = std::move(value);
    for (const Note& note : line.notes())
        object["notes"].push_back({{"kind", utf8(noteKindName(note.kind))},
                                   {"start", note.start},
                                   {"length", note.length},
                                   {"message", utf8(note.message)}});
    if (const auto reason = line.reason())
        object["reason"] = {{"code", utf8(reasonCodeName(reason->code))}, {"message", utf8(reason->message)}};
    return object;
}

}  // namespace

std::string jsonText(const VemoEngine::Result& result, std::string_view log, const std::vector<std::string>& problems,
                     const std::vector<std::string>& readings) {
    nlohmann::json lines = nlohmann::json::array();
    for (std::size_t i = 0; i < result.lines.size(); ++i) {
        lines.push_back(lineOf(result, i));
        if (i < readings.size() && !readings[i].empty()) lines.back()["reading"] = readings[i];
    }
    nlohmann::json document{{"lines", std::move(lines)}, {"log", log}};
    if (!problems.empty()) document["problems"] = problems;
    if (const FormattedValue* total = result.context->grandTotalFormatted()) {
        document["grandTotal"] = textsOf(*total);
        if (result.context->isGrandTotalPartial()) document["grandTotal"]["partial"] = true;
    }
    return escapedJson(document.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace)) + "\n";
}

}  // namespace vemo::session

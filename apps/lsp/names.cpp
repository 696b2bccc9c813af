// SPDX-License-Identifier: MIT
// Names that a document defines: where they are, and another one for all of them.
#include <algorithm>

#include "lsp/features.h"
#include "lsp/server.h"

namespace vemo::lsp {

namespace {

using NameUse = VemoEngine::NameUse;

std::optional<NameUse> nameAt(const Server& server, const OpenDocument& document, const Position& position) {
    if (position.line >= document.lineCount()) return std::nullopt;
    const std::size_t unit = server.unit(document, position);
    for (NameUse& use : document.line(position.line).names())
        if (use.start <= unit && unit <= use.start + use.length) return std::move(use);
    return std::nullopt;
}

struct Place {
    std::size_t line;
    NameUse use;
};

// The uses of a name, from the top to the bottom. One before the definition means something else.
std::vector<Place> usesOf(const OpenDocument& document, const std::u16string& name) {
    std::vector<Place> places;
    bool defined = false;
    for (std::size_t i = 0; i < document.lineCount(); ++i) {
        for (NameUse& use : document.line(i).names()) {
            defined = defined || use.defines;
            if (defined && use.name == name) places.push_back({i, std::move(use)});
        }
    }
    return places;
}

Json rangeOf(const Server& server, const OpenDocument& document, const Place& place) {
    return server.range(document, place.line, place.use.start, place.use.length);
}

bool isDefined(const std::vector<Place>& places) {
    return std::any_of(places.begin(), places.end(), [](const Place& place) { return place.use.defines; });
}

// What a document says with names replaced; nothing where a name is none that a line can have.
std::optional<VemoEngine::Result> renamed(Server& server, const OpenDocument& document,
                                          const std::vector<Place>& places, const std::u16string& name) {
    std::u16string text = engineText(document.buffer.text());
    for (auto place = places.rbegin(); place != places.rend(); ++place)
        text.replace(document.buffer.lineStart(place->line) + place->use.start, place->use.length, name);
    Context context = server.context();
    auto result = server.engine().calculateSync(text, context);
    if (!result || result->lines.size() != document.lineCount()) return std::nullopt;
    return result;
}

}  // namespace

Reply definition(Server& server, OpenDocument& document, const Json& params) {
    const Position position = server.position(params.at("position"));
    const auto use = nameAt(server, document, position);
    if (!use) return Reply::null();
    const auto line = use->defines ? position.line : document.answer->result.definitionOf(use->name, position.line);
    if (!line) return Reply::null();
    const Place place{*line, document.line(*line).names().front()};
    return Json{{"uri", document.uri}, {"range", rangeOf(server, document, place)}};
}

Reply references(Server& server, OpenDocument& document, const Json& params) {
    const auto use = nameAt(server, document, server.position(params.at("position")));
    if (!use) return Reply::null();
    const bool definitions = member(member(params, "context"), "includeDeclaration") != false;
    Json locations = Json::array();
    for (const Place& place : usesOf(document, use->name))
        if (definitions || !place.use.defines)
            locations.push_back({{"uri", document.uri}, {"range", rangeOf(server, document, place)}});
    return locations;
}

Reply highlights(Server& server, OpenDocument& document, const Json& params) {
    const auto use = nameAt(server, document, server.position(params.at("position")));
    if (!use) return Reply::null();
    constexpr int read = 2, write = 3;
    Json found = Json::array();
    for (const Place& place : usesOf(document, use->name))
        found.push_back({{"range", rangeOf(server, document, place)}, {"kind", place.use.defines ? write : read}});
    return found;
}

Reply prepareRename(Server& server, OpenDocument& document, const Json& params) {
    const Position position = server.position(params.at("position"));
    const auto use = nameAt(server, document, position);
    if (!use || !isDefined(usesOf(document, use->name))) return Reply::null();
    return rangeOf(server, document, {position.line, *use});
}

Reply rename(Server& server, OpenDocument& document, const Json& params) {
    const auto use = nameAt(server, document, server.position(params.at("position")));
    const auto places = use ? usesOf(document, use->name) : std::vector<Place>();
    if (!isDefined(places)) return ErrorReply{error_code::requestFailed, "there is no name of this document here"};
    const std::u16string name = utf16(params.at("newName").get_ref<const std::string&>());
    const auto result = renamed(server, document, places, name);
    // A name that means something else, or that no line can have, would change what the document says.
    bool same = result.has_value() && !name.empty();
    for (std::size_t i = 0; same && i < document.lineCount(); ++i)
        same = result->lines[i].value() == document.line(i).value() &&
               result->lines[i].names().size() == document.line(i).names().size();
    if (!same) return ErrorReply{error_code::requestFailed, "lines would have other results with “" + utf8(name) + "”"};
    Json edits = Json::array();
    for (const Place& place : places)
        edits.push_back({{"range", rangeOf(server, document, place)}, {"newText", utf8(name)}});
    return Json{{"changes", {{document.uri, std::move(edits)}}}};
}

}  // namespace vemo::lsp

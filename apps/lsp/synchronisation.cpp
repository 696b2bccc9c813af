// SPDX-License-Identifier: MIT
#include "lsp/features.h"
#include "lsp/server.h"

namespace vemo::lsp {

using namespace std::chrono_literals;

namespace {

constexpr auto typingPause = 1000ms;  // after which a line that was typed is looked at

}  // namespace

Reply didOpen(Server& server, const Json& params) {
    const Json& document = params.at("textDocument");
    server.open(document.at("uri").get<std::string>(), document.at("version").get<std::int64_t>(),
                utf16(document.at("text").get_ref<const std::string&>()));
    return Reply::null();
}

Reply didChange(Server& server, const Json& params) {
    const Json& identifier = params.at("textDocument");
    const auto uri = identifier.at("uri").get<std::string>();
    OpenDocument* document = server.find(uri);
    if (!document) {
        server.log(Server::Severity::warning, uri + " was changed, but is not open");
        return Reply::null();
    }
    const Json& version = member(identifier, "version");
    server.change(*document, params.at("contentChanges"),
                  version.is_number_integer() ? version.get<std::int64_t>() : document->version + 1);
    return Reply::null();
}

Reply didClose(Server& server, const Json& params) {
    server.close(params.at("textDocument").at("uri").get<std::string>());
    return Reply::null();
}

OpenDocument* Server::find(const std::string& uri) {
    const auto found = documents_.find(uri);
    return found == documents_.end() ? nullptr : found->second.get();
}

OpenDocument* Server::numbered(std::uint64_t number) {
    for (const auto& [uri, document] : documents_)
        if (document->number == number) return document.get();
    return nullptr;
}

void Server::open(const std::string& uri, std::int64_t version, std::u16string text) {
    close(uri);
    auto document = std::make_unique<OpenDocument>();
    document->uri = uri;
    document->number = ++lastDocument_;
    document->version = version;
    document->buffer = TextBuffer(std::move(text));
    document->attach(*engine_, context());
    OpenDocument& opened = *(documents_[uri] = std::move(document));
    calculateSoon(opened);
}

void Server::change(OpenDocument& document, const Json& changes, std::int64_t version) {
    // All of it is read before any of it is done.
    struct Edit {
        std::optional<std::pair<Position, Position>> range;
        std::u16string text;
    };
    std::vector<Edit> edits;
    for (const Json& change : changes) {
        Edit& edit = edits.emplace_back();
        edit.text = utf16(change.at("text").get_ref<const std::string&>());
        if (const Json& range = member(change, "range"); !range.is_null())
            edit.range.emplace(position(range.at("start")), position(range.at("end")));
    }
    std::optional<std::size_t> line;
    for (const Edit& edit : edits) {
        std::size_t start = 0, end = document.buffer.text().size();
        if (edit.range) {
            start = document.buffer.offsetOf(edit.range->first, client_.encoding);
            end = std::max(start, document.buffer.offsetOf(edit.range->second, client_.encoding));
        }
        const std::size_t last = document.edit(start, end - start, edit.text, version);
        if (edit.range) line = last;
    }
    document.version = version;
    document.held = line;
    refuseWaiting(document, {error_code::contentModified, "the document was edited"});
    calculateSoon(document);
    if (!line) return;
    after(typingPause, [this, number = document.number, edit = ++document.edits] {
        OpenDocument* typed = numbered(number);
        if (!typed || typed->edits != edit) return;
        typed->held.reset();
        if (typed->isCalculated()) publishDiagnostics(*this, *typed);
    });
}

void Server::close(const std::string& uri) {
    const auto found = documents_.find(uri);
    if (found == documents_.end()) return;
    refuseWaiting(*found->second, {error_code::contentModified, "the document was closed"});
    const bool told = !found->second->published.empty();
    documents_.erase(found);
    if (told) notify("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", Json::array()}});
}

}  // namespace vemo::lsp

// SPDX-License-Identifier: MIT
#include <algorithm>

#include "lsp/features.h"
#include "lsp/server.h"

namespace vemo::lsp {

namespace {

const Json& ability(const Json& params, std::initializer_list<std::string_view> path) {
    const Json* value = &member(params, "capabilities");
    for (const std::string_view name : path) value = &member(*value, name);
    return *value;
}

bool can(const Json& params, std::initializer_list<std::string_view> path) {
    const Json& value = ability(params, path);
    return value.is_boolean() && value.get<bool>();
}

// The first of the client's encodings that is known here; UTF-16 always is.
Encoding encodingFor(const Json& params) {
    const Json& offered = ability(params, {"general", "positionEncodings"});
    if (!offered.is_array()) return Encoding::utf16;
    for (const Json& name : offered) {
        if (name == "utf-8") return Encoding::utf8;
        if (name == "utf-16") break;
    }
    return Encoding::utf16;
}

Client clientOf(const Json& params) {
    Client client;
    client.encoding = encodingFor(params);
    const Json& lazily = ability(params, {"textDocument", "inlayHint", "resolveSupport", "properties"});
    client.resolvesTooltips = lazily.is_array() && std::find(lazily.begin(), lazily.end(), "tooltip") != lazily.end();
    client.refreshesHints = can(params, {"workspace", "inlayHint", "refreshSupport"});
    client.refreshesLenses = can(params, {"workspace", "codeLens", "refreshSupport"});
    client.tellsConfiguration = can(params, {"workspace", "configuration"});
    client.watchesFiles = can(params, {"workspace", "didChangeWatchedFiles", "dynamicRegistration"});
    const Json& trace = member(params, "trace");
    client.tracesMessages = trace == "messages" || trace == "verbose";
    return client;
}

}  // namespace

Reply initialize(Server& server, const Json& params) {
    server.initialize(params);
    Json capabilities = serverCapabilities();
    capabilities["positionEncoding"] = server.client().encoding == Encoding::utf8 ? "utf-8" : "utf-16";
    return Json{{"capabilities", capabilities}, {"serverInfo", {{"name", "vemo"}, {"version", VemoEngine::version()}}}};
}

void Server::initialize(const Json& params) {
    client_ = clientOf(params);
    options_ = member(params, "initializationOptions");
    phase_ = Phase::initialized;
    const Json& process = member(params, "processId");
    if (process.is_number_integer() && follow_) follow_(process.get<int>());
    configureWith(nullptr);
}

Reply initialized(Server& server, const Json&) {
    server.initialized();
    return Reply::null();
}

void Server::initialized() {
    if (client_.tellsConfiguration) configure(nullptr);
    watchExtensions();
}

Reply shutDown(Server& server, const Json&) {
    server.shutDown();
    return Reply::null();
}

Reply exit(Server& server, const Json&) {
    server.exit();
    return Reply::null();
}

Reply cancelRequest(Server& server, const Json& params) {
    server.cancel(params.at("id"));
    return Reply::null();
}

Reply setTrace(Server& server, const Json& params) {
    server.trace(params.at("value") != "off");
    return Reply::null();
}

Reply didChangeConfiguration(Server& server, const Json& params) {
    server.configure(member(params, "settings"));
    return Reply::null();
}

Reply didChangeWatchedFiles(Server& server, const Json& params) {
    server.filesChanged(params.at("changes"));
    return Reply::null();
}

}  // namespace vemo::lsp

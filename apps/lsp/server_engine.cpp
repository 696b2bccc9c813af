// SPDX-License-Identifier: MIT
// The engine's side of the server: settings, and what changes beside the edits.
#include <filesystem>
#include <sstream>
#include <utility>

#include "lsp/engine_listener.h"
#include "session/sources.h"

namespace vemo::lsp {

void Server::Listener::engineLog(std::string_view text) {
    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) server_.log(Severity::log, line);
}

void Server::Listener::engineOnlineProblem(const OnlineProblem& problem) {
    std::string message = problem.source;
    switch (problem.kind) {
        case OnlineProblem::Kind::ratesNotFetched:
            message = "no rates came from " + message;
            break;
        case OnlineProblem::Kind::ratesNotKept:
            message = "no copy can be kept of " + message;
            break;
        case OnlineProblem::Kind::copyUnusable:
            message = "the copy of rates is no use";
            break;
        case OnlineProblem::Kind::placeNotFetched:
            message = "the service for places did not tell of " + message;
            break;
    }
    server_.log(Severity::warning, problem.message.empty() ? message : message + ": " + problem.message);
}

Context Server::context() const {
    Context context;
    context.setPrecision(settings_.precision);
    return context;
}

void Server::configureWith(const Json& told) {
    std::vector<std::string> problems;
    const Settings wanted = withJson(withJson(base_, options_, problems), told, problems);
    for (const std::string& problem : problems) log(Severity::warning, problem);
    const bool same = engine_ && settings_.sameEngine(wanted);
    const bool samePrecision = settings_.precision == wanted.precision;
    settings_ = wanted;
    if (!same) return buildEngine();
    if (samePrecision) return;
    for (const auto& [uri, document] : documents_) document->document->setContext(context());
    contextChanged();
}

void Server::configure(const Json& settings) {
    if (!client_.tellsConfiguration) return configureWith(settings);
    request("workspace/configuration", {{"items", Json::array({{{"section", "vemo"}}})}}, [this](const Json& result) {
        if (result.is_array() && !result.empty()) configureWith(result.front());
    });
}

void Server::buildEngine() {
    for (const auto& [uri, document] : documents_) document->document = nullptr;
    engineReady_ = false;
    completions_ = nullptr;
    engine_ = std::make_unique<VemoEngine>(environmentFor(settings_), loop_);
    listener_ = std::make_shared<Listener>(*this);
    engine_->setDelegate(listener_);
    VemoEngine::Config config;
    std::error_code error;
    if (settings_.extensions.empty() || std::filesystem::is_directory(settings_.extensions, error))
        config.extensions = settings_.extensions;
    else
        log(Severity::warning, settings_.extensions + ": not a folder");
    for (const auto& [uri, document] : documents_) {
        document->attach(*engine_, context());
        document->unprompted = true;
    }
    engine_->buildVemoWorker(config, VemoEngine::WorkerThread::background);
}

void Server::engineReady() {
    for (const auto& [kind, source] : {std::pair(VemoEngine::RatesFile::currency, settings_.rates),
                                       std::pair(VemoEngine::RatesFile::crypto, settings_.coins)}) {
        const std::string problem = session::takeRates(*engine_, kind, source);
        if (!problem.empty()) log(Severity::warning, problem);
    }
    for (const Extension& extension : engine_->extensions())
        if (extension.skipped || extension.failed) log(Severity::warning, extension.file + ": failed");
    engineReady_ = true;
    for (const auto& [uri, document] : documents_) calculateSoon(*document);
}

// The minute, rates or places have changed: nothing that the client did.
void Server::contextChanged() {
    for (const auto& [uri, document] : documents_) {
        document->unprompted = document->unprompted || !document->dirty;
        calculateSoon(*document);
    }
}

const Completions& Server::completions() {
    if (!completions_)
        engine_->buildCompletions(VemoEngine::WorkerThread::main, [this](auto built) { completions_ = built; });
    return *completions_;
}

void Server::watchExtensions() {
    if (!client_.watchesFiles || settings_.extensions.empty()) return;
    const Json watcher{{"globPattern", settings_.extensions + "/**/*.js"}};
    const Json registration{{"id", "scripts"},
                            {"method", "workspace/didChangeWatchedFiles"},
                            {"registerOptions", {{"watchers", Json::array({watcher})}}}};
    request("client/registerCapability", {{"registrations", Json::array({registration})}});
}

void Server::filesChanged(const Json& changes) {
    for (const Json& change : changes) {
        const auto uri = change.at("uri").get<std::string>();
        if (uri.ends_with(".js") && !settings_.extensions.empty()) return buildEngine();
        if (uri.ends_with(".json") && !session::isUrl(settings_.rates)) return engineReady();
    }
}

void Server::calculateSoon(OpenDocument& document) {
    document.dirty = true;
    if (calculationPosted_ || !engineReady_) return;
    calculationPosted_ = true;
    // Posted, so that messages that have come meanwhile go first: of a burst of edits, only the last is calculated.
    loop_->post([this, alive = std::weak_ptr(alive_)] {
        if (!alive.expired()) calculateDirty();
    });
}

void Server::calculateDirty() {
    calculationPosted_ = false;
    for (const auto& [uri, document] : documents_) {
        if (!document->dirty || !engineReady_) continue;
        document->dirty = false;
        document->document->calculate(
            [this, current = document.get()](const auto& answer) { answered(*current, answer); });
    }
}

void Server::answered(OpenDocument& document, const std::shared_ptr<const VemoDocument::Answer>& answer) {
    const OpenDocument::Shown shown = document.take(answer);
    if (client_.tracesMessages) {
        std::size_t changed = 0;
        for (const auto& change : answer->changes) changed += change.inserted;
        notify("$/logTrace", {{"message", "calculated " + document.uri + " version " + std::to_string(answer->version) +
                                              ", lines told anew: " + std::to_string(changed)}});
    }
    if (std::exchange(document.unprompted, false)) {
        refreshHints_ = refreshHints_ || shown.hints;
        refreshLenses_ = refreshLenses_ || shown.total;
    }
    if (document.dirty) return;
    publishDiagnostics(*this, document);
    answerWaiting(document);
    refreshIfQuiet();
}

// One request for all documents.
void Server::refreshIfQuiet() {
    for (const auto& [uri, document] : documents_)
        if (!document->isCalculated()) return;
    if (std::exchange(refreshHints_, false) && client_.refreshesHints) request("workspace/inlayHint/refresh", nullptr);
    if (std::exchange(refreshLenses_, false) && client_.refreshesLenses) request("workspace/codeLens/refresh", nullptr);
}

}  // namespace vemo::lsp

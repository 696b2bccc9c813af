// SPDX-License-Identifier: MIT
// The protocol's side of the server: messages in, answers out.
#include "lsp/server.h"

#include <utility>

#include "lsp/engine_listener.h"

namespace vemo::lsp {

namespace {

bool isId(const Json& id) {
    return id.is_string() || id.is_number_integer();
}

// The document that parameters name; for a command, it is the first argument.
const Json& documentIn(const Json& params) {
    const Json& arguments = member(params, "arguments");
    if (arguments.is_array() && !arguments.empty()) return arguments.front();
    return member(member(params, "textDocument"), "uri");
}

}  // namespace

Server::Server(std::shared_ptr<RunLoop> loop, std::function<void(std::string)> send, Settings settings)
    : loop_(std::move(loop)), send_(std::move(send)), base_(std::move(settings)), settings_(base_) {}

Server::~Server() {
    documents_.clear();
    engine_.reset();
}

void Server::take(const Frame& frame) {
    if (exitStatus_) return;
    switch (frame.kind) {
        case Frame::Kind::message:
            return takeMessage(frame.text);
        case Frame::Kind::tooLarge:
            return respond(nullptr, ErrorReply{error_code::invalidRequest, "the message is too large"});
        case Frame::Kind::malformed:
            return respond(nullptr, ErrorReply{error_code::parseError, "there is no header with a Content-Length"});
    }
}

void Server::takeMessage(const std::string& text) {
    if (!isReasonable(text))
        return respond(nullptr, ErrorReply{error_code::invalidRequest, "the message holds too much"});
    const Json message = Json::parse(text, nullptr, false);
    if (message.is_discarded()) return respond(nullptr, ErrorReply{error_code::parseError, "the message is no JSON"});
    if (!message.is_object())
        return respond(nullptr, ErrorReply{error_code::invalidRequest, "the message is no object"});
    dispatch(message);
}

void Server::dispatch(const Json& message) {
    const Json& method = member(message, "method");
    const Json& id = member(message, "id");
    if (method.is_null() && (message.contains("result") || message.contains("error"))) return takeResponse(message);
    const bool isRequest = message.contains("id");
    if (!method.is_string() || (isRequest && !isId(id)))
        return respond(isId(id) ? id : Json(), ErrorReply{error_code::invalidRequest, "this is no request"});
    const auto name = method.get<std::string>();
    const auto refuse = [&](int code, const char* why) {
        if (isRequest) respond(id, ErrorReply{code, why});
    };
    if (phase_ == Phase::fresh && name != "initialize" && name != "exit")
        return refuse(error_code::serverNotInitialized, "the first request is initialize");
    if (phase_ != Phase::fresh && name == "initialize")
        return refuse(error_code::invalidRequest, "initialize comes once");
    if (phase_ == Phase::shutDown && name != "exit")
        return refuse(error_code::invalidRequest, "after shutdown comes exit");
    const Method* known = methodNamed(name);
    if (!known) return refuse(error_code::methodNotFound, "there is no such method");
    handle(id, *known, member(message, "params"), isRequest);
}

void Server::handle(const Json& id, const Method& method, const Json& params, bool isRequest) {
    if (method.handle) {
        const Reply reply = guarded([&] { return method.handle(*this, params); });
        if (isRequest) respond(id, reply);
        return;
    }
    if (!isRequest) return;
    const Json& uri = documentIn(params);
    OpenDocument* document = uri.is_string() ? find(uri.get<std::string>()) : nullptr;
    if (!document) return respond(id, ErrorReply{error_code::invalidParams, "the document is not open"});
    document->waiting.push_back({id, &method, params});
    if (document->isCalculated()) answerWaiting(*document);
}

// Parameters of another form than the protocol's are answered as such, wherever they are met.
Reply Server::guarded(const std::function<Reply()>& task) const {
    try {
        return task();
    } catch (const Json::exception& error) {
        return ErrorReply{error_code::invalidParams, error.what()};
    }
}

void Server::answerWaiting(OpenDocument& document) {
    const auto waiting = std::exchange(document.waiting, {});
    for (const WaitingRequest& each : waiting)
        respond(each.id, guarded([&] { return each.method->answer(*this, document, each.params); }));
}

void Server::refuseWaiting(OpenDocument& document, const ErrorReply& error) {
    const auto waiting = std::exchange(document.waiting, {});
    for (const WaitingRequest& each : waiting) respond(each.id, error);
}

void Server::cancel(const Json& id) {
    for (const auto& [uri, document] : documents_) {
        auto& waiting = document->waiting;
        for (auto each = waiting.begin(); each != waiting.end(); ++each) {
            if (each->id != id) continue;
            waiting.erase(each);
            return respond(id, ErrorReply{error_code::requestCancelled, "cancelled"});
        }
    }
}

void Server::respond(const Json& id, const Reply& reply) {
    std::string message = R"({"jsonrpc":"2.0","id":)" + textOf(id);
    if (const std::string* text = reply.text())
        message += ",\"result\":" + *text;
    else
        message += ",\"error\":{\"code\":" + std::to_string(reply.error().code) +
                   ",\"message\":" + jsonString(reply.error().message) + "}";
    send_(message += '}');
}

void Server::takeResponse(const Json& message) {
    const Json& id = member(message, "id");
    if (!id.is_number_unsigned()) return;
    const auto found = requests_.find(id.get<std::uint64_t>());
    if (found == requests_.end()) return;
    const auto take = std::move(found->second);
    requests_.erase(found);
    if (take && message.contains("result")) take(member(message, "result"));
}

void Server::notify(std::string_view method, const Json& params) {
    send_(textOf({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}}));
}

void Server::request(std::string_view method, const Json& params, std::function<void(const Json&)> take) {
    const std::uint64_t id = ++lastRequest_;
    requests_[id] = std::move(take);
    Json message{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}};
    if (!params.is_null()) message["params"] = params;
    send_(textOf(message));
}

void Server::log(Severity severity, const std::string& message) {
    if (phase_ == Phase::initialized)
        notify("window/logMessage", {{"type", static_cast<int>(severity)}, {"message", message}});
}

void Server::shutDown() {
    phase_ = Phase::shutDown;
    for (const auto& [uri, document] : documents_)
        refuseWaiting(*document, {error_code::requestCancelled, "the server shuts down"});
    documents_.clear();
}

void Server::exit() {
    exitStatus_ = phase_ == Phase::shutDown ? 0 : 1;
    loop_->stop();
}

void Server::inputEnded() {
    if (!exitStatus_) exit();
}

std::chrono::milliseconds Server::runTimers() {
    using namespace std::chrono;
    constexpr milliseconds longest = hours(1);
    while (!timers_.empty()) {
        const auto first = timers_.begin();
        const auto wait = first->first - steady_clock::now();
        if (wait > steady_clock::duration::zero()) return std::min(longest, ceil<milliseconds>(wait));
        const auto task = std::move(first->second);
        timers_.erase(first);
        task();
    }
    return longest;
}

void Server::after(std::chrono::milliseconds delay, std::function<void()> task) {
    timers_.emplace(std::chrono::steady_clock::now() + delay, std::move(task));
    loop_->stop();  // whoever runs it has to know
}

Json Server::range(const OpenDocument& document, std::size_t line, std::size_t start, std::size_t length) const {
    const auto place = [&](std::size_t unit) {
        return Json{{"line", line}, {"character", document.buffer.characterOf(line, unit, client_.encoding)}};
    };
    return {{"start", place(start)}, {"end", place(start + length)}};
}

Position Server::position(const Json& position) const {
    const auto number = [&](const char* name) {
        const auto value = position.at(name).get<std::int64_t>();
        return static_cast<std::size_t>(std::max<std::int64_t>(value, 0));
    };
    return {number("line"), number("character")};
}

std::size_t Server::unit(const OpenDocument& document, const Position& position) const {
    return document.buffer.unitOf(position, client_.encoding);
}

}  // namespace vemo::lsp

// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "lsp/framing.h"
#include "lsp/open_document.h"
#include "lsp/protocol.h"
#include "lsp/settings.h"
#include "vemo/engine.h"

namespace vemo::lsp {

// What the client can do, as far as it matters here.
struct Client {
    Encoding encoding = Encoding::utf16;
    bool resolvesTooltips = false;
    bool refreshesHints = false;
    bool refreshesLenses = false;
    bool tellsConfiguration = false;
    bool watchesFiles = false;
    bool tracesMessages = false;
};

// The server on one side of the protocol: documents that the client has open, and an engine that calculates them. All
// of it runs on the loop's thread.
class Server {
public:
    Server(std::shared_ptr<RunLoop> loop, std::function<void(std::string)> send, Settings settings);
    ~Server();

    void take(const Frame& frame);
    // The client is gone.
    void inputEnded();
    // The exit status; nothing until the server is to end.
    std::optional<int> exitStatus() const { return exitStatus_; }
    // Hears the client's process, if it tells one.
    void onProcess(std::function<void(int)> follow) { follow_ = std::move(follow); }
    // Runs the timers that are due, and tells how long it is until the next one.
    std::chrono::milliseconds runTimers();

    // What the methods use.
    void initialize(const Json& params);
    void initialized();
    void shutDown();
    void exit();
    void cancel(const Json& id);
    void trace(bool on) { client_.tracesMessages = on; }
    // Asks the client for its configuration, or takes what it told.
    void configure(const Json& settings);
    void filesChanged(const Json& changes);

    void open(const std::string& uri, std::int64_t version, std::u16string text);
    void change(OpenDocument& document, const Json& changes, std::int64_t version);
    void close(const std::string& uri);

    // The document of a URI; null where it is not open.
    OpenDocument* find(const std::string& uri);
    OpenDocument* numbered(std::uint64_t number);
    const Client& client() const { return client_; }
    VemoEngine& engine() { return *engine_; }
    const Completions& completions();
    Context context() const;
    const Settings& settings() const { return settings_; }

    // A range of a line as JSON; start and length in UTF-16 units.
    Json range(const OpenDocument& document, std::size_t line, std::size_t start, std::size_t length) const;
    Position position(const Json& position) const;
    // Where in its line a position is, in UTF-16 units.
    std::size_t unit(const OpenDocument& document, const Position& position) const;

    void notify(std::string_view method, const Json& params);
    void request(std::string_view method, const Json& params, std::function<void(const Json& result)> take = nullptr);
    enum class Severity { error = 1, warning, info, log };
    void log(Severity severity, const std::string& message);
    void after(std::chrono::milliseconds delay, std::function<void()> task);

private:
    class Listener;
    enum class Phase { fresh, initialized, shutDown };

    void takeMessage(const std::string& text);
    void dispatch(const Json& message);
    void takeResponse(const Json& message);
    void respond(const Json& id, const Reply& reply);
    void handle(const Json& id, const Method& method, const Json& params, bool isRequest);
    Reply guarded(const std::function<Reply()>& task) const;

    void configureWith(const Json& settings);
    void buildEngine();
    void engineReady();
    void contextChanged();
    void watchExtensions();
    void calculateSoon(OpenDocument& document);
    void calculateDirty();
    void answered(OpenDocument& document, const std::shared_ptr<const VemoDocument::Answer>& answer);
    void answerWaiting(OpenDocument& document);
    void refuseWaiting(OpenDocument& document, const ErrorReply& error);
    void refreshIfQuiet();

    std::shared_ptr<RunLoop> loop_;
    std::function<void(std::string)> send_;
    Settings base_;      // of the command line
    Settings settings_;  // with what the client says
    Json options_;       // of the initialisation
    Client client_;
    Phase phase_ = Phase::fresh;
    std::optional<int> exitStatus_;
    std::function<void(int)> follow_;

    std::shared_ptr<Listener> listener_;
    std::unique_ptr<VemoEngine> engine_;
    bool engineReady_ = false;
    std::shared_ptr<const Completions> completions_;
    std::map<std::string, std::unique_ptr<OpenDocument>, std::less<>> documents_;  // go before the engine
    std::uint64_t lastDocument_ = 0;
    bool calculationPosted_ = false;
    bool refreshHints_ = false;
    bool refreshLenses_ = false;

    std::uint64_t lastRequest_ = 0;
    std::map<std::uint64_t, std::function<void(const Json&)>> requests_;
    std::multimap<std::chrono::steady_clock::time_point, std::function<void()>> timers_;
    std::shared_ptr<int> alive_ = std::make_shared<int>();  // posted tasks may outlive the server
};

// Tells the client the remarks on a document, unless they are those it knows.
void publishDiagnostics(Server& server, OpenDocument& document);

}  // namespace vemo::lsp

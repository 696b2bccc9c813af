// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "lsp/server.h"

namespace vemo::lsp {

// Hears an engine for the server that has it.
class Server::Listener : public VemoEngineDelegate {
public:
    explicit Listener(Server& server) : server_(server) {}

    void engineInitialized() override { server_.engineReady(); }
    void engineContextUpdated(const Context&) override { server_.contextChanged(); }
    void engineCryptoInitialized() override {
        server_.completions_ = nullptr;  // there are more units now
        server_.contextChanged();
    }
    void engineLog(std::string_view text) override;
    void engineOnlineProblem(const OnlineProblem& problem) override;

private:
    Server& server_;
};

}  // namespace vemo::lsp

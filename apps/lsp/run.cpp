// SPDX-License-Identifier: MIT
#include "lsp/run.h"

#include <signal.h>
#include <unistd.h>

#include "lsp/input.h"
#include "lsp/server.h"
#include "session/write_all.h"

namespace vemo::lsp {

int run(const Settings& settings) {
    signal(SIGPIPE, SIG_IGN);
    const auto loop = std::make_shared<RunLoop>();
    Server* current = nullptr;
    const auto send = [&](const std::string& message) {
        if (!session::writeAll(STDOUT_FILENO, framed(message))) current->inputEnded();
    };
    Server server(loop, send, settings);
    current = &server;
    Input input(
        STDIN_FILENO, loop, [&](const Frame& frame) { server.take(frame); }, [&] { server.inputEnded(); });
    server.onProcess([&](int process) { input.follow(process); });
    while (!server.exitStatus()) {
        const auto wait = server.runTimers();
        if (!server.exitStatus()) loop->runFor(wait);
    }
    return *server.exitStatus();
}

}  // namespace vemo::lsp

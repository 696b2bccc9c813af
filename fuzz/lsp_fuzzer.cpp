// SPDX-License-Identifier: MIT
// The language server, given bytes: a stream as it is, or lines, each of which becomes a message with its header. It
// goes on or ends, and all that it says is JSON.

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "lsp/server.h"

namespace {

using namespace vemo;
using namespace std::chrono_literals;

// A server that has had its first request, and a document.
class Life {
public:
    Life() {
        lsp::Settings settings;
        settings.locale = "en_US";
        settings.timeZone = "UTC";
        settings.now = Date(std::chrono::duration<double>(1795525200));
        server_ = std::make_unique<lsp::Server>(
            loop_,
            [](const std::string& message) {
                if (lsp::Json::parse(message, nullptr, false).is_discarded()) std::abort();
            },
            settings);
        message(R"({"id":1,"method":"initialize","params":{"capabilities":{}}})");
        message(R"({"method":"textDocument/didOpen","params":{"textDocument":{"uri":"a","version":1,)"
                R"("text":"# One\nw = 6 ft\nw in cm\n3/0\nsum"}}})");
        work();
    }

    bool ended() const { return server_->exitStatus().has_value(); }
    void message(std::string_view text) { server_->take({lsp::Frame::Kind::message, std::string(text)}); }
    void bytes(std::string_view text) {
        lsp::Framing framing(1 << 12);
        // In pieces, as a pipe gives them.
        for (std::size_t size = 1; !text.empty(); size = size * 3 % 61 + 1) {
            framing.feed(text.substr(0, size), [&](const lsp::Frame& frame) { server_->take(frame); });
            text.remove_prefix(std::min(size, text.size()));
        }
    }
    // Until all that was asked for is calculated, or nearly so.
    void work() {
        for (int i = 0; i < 3 && !ended(); ++i) {
            server_->runTimers();
            loop_->runFor(1ms);
            loop_->poll();
        }
    }

private:
    std::shared_ptr<RunLoop> loop_ = std::make_shared<RunLoop>();
    std::unique_ptr<lsp::Server> server_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<Life> life;
    static int inputs = 0;
    // What one document holds is bounded by this, too.
    if (!life || life->ended() || ++inputs % 256 == 0) life = std::make_unique<Life>();
    if (size == 0) return 0;
    std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    if (data[0] % 2 == 0) {
        life->bytes(text);
    } else {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            life->message(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }
    life->work();
    return 0;
}

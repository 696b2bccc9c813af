// SPDX-License-Identifier: MIT
#include "lsp/input.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>

#include "session/write_all.h"

namespace vemo::lsp {

namespace {

constexpr std::size_t mostWaiting = Framing::usualLimit;  // bytes of messages that the loop has not taken
constexpr int processInterval = 2000;                     // milliseconds between looks at the process

}  // namespace

struct Input::State : std::enable_shared_from_this<State> {
    int descriptor;
    std::array<int, 2> wake{-1, -1};  // a pipe, whose closed end stops the thread
    std::shared_ptr<RunLoop> loop;
    std::function<void(Frame)> take;
    std::function<void()> ended;
    std::atomic<int> process = 0;

    std::mutex mutex;
    std::condition_variable taken;
    std::size_t waiting = 0;
    bool closed = false;

    bool processIsGone() const { return process > 0 && kill(process, 0) != 0 && errno == ESRCH; }

    void end() {
        loop->post([state = shared_from_this()] {
            if (!state->closed) state->ended();
        });
    }

    // Reads some bytes; false at the end of the stream.
    bool read(std::array<char, 1 << 16>& buffer, std::string_view& bytes) {
        pollfd events[] = {{descriptor, POLLIN, 0}, {wake[0], POLLIN, 0}};
        bytes = {};
        const int ready = poll(events, 2, process > 0 ? processInterval : -1);
        if (ready < 0) return errno == EINTR;
        if ((events[1].revents & POLLIN) != 0) {  // there is a process to follow from now on
            char word = 0;
            return ::read(wake[0], &word, 1) >= 0;
        }
        if (events[1].revents != 0) return false;
        if (ready == 0) return !processIsGone();
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count < 0) return errno == EINTR || errno == EAGAIN;
        bytes = {buffer.data(), static_cast<std::size_t>(count)};
        return count > 0;
    }
};

Input::Input(int descriptor, std::shared_ptr<RunLoop> loop, std::function<void(Frame)> take,
             std::function<void()> ended)
    : state_(std::make_shared<State>()) {
    state_->descriptor = descriptor;
    state_->loop = std::move(loop);
    state_->take = std::move(take);
    state_->ended = std::move(ended);
    if (pipe2(state_->wake.data(), O_CLOEXEC) != 0) {
        // Nothing could end a thread that reads.
        state_->wake = {-1, -1};
        state_->end();
        return;
    }
    thread_ = std::thread([state = state_] {
        Framing framing;
        std::array<char, 1 << 16> buffer;
        for (std::string_view bytes; state->read(buffer, bytes);) {
            auto frames = std::make_shared<std::vector<Frame>>();
            std::size_t size = 0;
            framing.feed(bytes, [&](Frame frame) {
                size += frame.text.size();
                frames->push_back(std::move(frame));
            });
            if (frames->empty()) continue;
            std::unique_lock lock(state->mutex);
            state->taken.wait(lock, [&] { return state->waiting < mostWaiting || state->closed; });
            if (state->closed) return;
            state->waiting += size;
            state->loop->post([state, frames, size] {
                {
                    const std::lock_guard taking(state->mutex);
                    state->waiting -= size;
                    state->taken.notify_one();
                    if (state->closed) return;
                }
                for (Frame& frame : *frames) state->take(std::move(frame));
            });
        }
        state->end();
    });
}

Input::~Input() {
    {
        const std::lock_guard lock(state_->mutex);
        state_->closed = true;
        state_->taken.notify_one();
    }
    if (thread_.joinable()) {
        close(state_->wake[1]);
        thread_.join();
        close(state_->wake[0]);
    }
    state_->loop = nullptr;  // tasks that wait in the loop hold the state, so both would keep each other alive
}

void Input::follow(int process) {
    state_->process = process;
    session::writeAll(state_->wake[1], "f");  // the wait that is under way has no end
}

}  // namespace vemo::lsp

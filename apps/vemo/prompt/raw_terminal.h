// SPDX-License-Identifier: MIT
#pragma once

#include <signal.h>

#include <cstddef>
#include <string_view>

namespace vemo::cli {

// The terminal on standard input and output, which hands on every key at once, Ctrl-C for one, and shows only what is
// written to it. It is as it was before when this is gone, when the process is suspended and when a signal ends it. One
// at a time.
class RawTerminal {
public:
    struct Size {
        std::size_t rows = 24;
        std::size_t columns = 80;
    };

    RawTerminal();
    ~RawTerminal();
    RawTerminal(const RawTerminal&) = delete;
    RawTerminal& operator=(const RawTerminal&) = delete;

    // False where the terminal can't move its cursor, or there is none: it is left as it is.
    bool isUsable() const { return usable_; }
    static Size size();
    void write(std::string_view text) const;
    // Stops the process as Ctrl-Z does, and comes back when it goes on.
    void suspend();

    // The mask for a wait that a new size of the terminal shall end.
    static const sigset_t* signalsWhileWaiting();
    // True when the size has changed since the last call.
    static bool takeResized();

private:
    void enter() const;
    void leave() const;

    bool usable_ = false;
};

}  // namespace vemo::cli

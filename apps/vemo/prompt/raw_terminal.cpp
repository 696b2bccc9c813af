// SPDX-License-Identifier: MIT
#include "prompt/raw_terminal.h"

#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "session/write_all.h"

namespace vemo::cli {

namespace {

constexpr std::string_view takesPastes = "\033[?2004h";  // between marks, so that they are told from keys
constexpr std::string_view noPastes = "\033[?2004l";
constexpr int ending[] = {SIGTERM, SIGHUP, SIGQUIT};

// What signals may find at any time.
termios before;
termios raw;
sigset_t waiting;
sigset_t maskBefore;
struct sigaction actionsBefore[std::size(ending)];
struct sigaction sizeActionBefore;
volatile sig_atomic_t resized = 0;

void endBySignal(int signal) {
    session::writeAll(STDOUT_FILENO, noPastes);
    tcsetattr(STDIN_FILENO, TCSANOW, &before);
    raise(signal);  // whose handler is gone
}

bool movesCursor() {
    const char* terminal = std::getenv("TERM");
    return terminal && *terminal && std::string_view(terminal) != "dumb";
}

}  // namespace

RawTerminal::RawTerminal() {
    usable_ = movesCursor() && isatty(STDOUT_FILENO) && tcgetattr(STDIN_FILENO, &before) == 0;
    if (!usable_) return;
    raw = before;
    raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG | IEXTEN);
    raw.c_iflag &= ~static_cast<tcflag_t>(IXON | ICRNL | INLCR | IGNCR | ISTRIP);
    raw.c_cc[VMIN] = 1;
    raw.c_cc[VTIME] = 0;
    struct sigaction action {};
    action.sa_handler = [](int) { resized = 1; };
    sigaction(SIGWINCH, &action, &sizeActionBefore);
    action.sa_handler = endBySignal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (std::size_t i = 0; i < std::size(ending); ++i) {
        sigaction(ending[i], nullptr, &actionsBefore[i]);
        // nohup(1) has it ignored, and so it stays.
        if (actionsBefore[i].sa_handler != SIG_IGN) sigaction(ending[i], &action, nullptr);
    }
    // A new size is heard of only where keys are waited for.
    sigset_t sizes;
    sigemptyset(&sizes);
    sigaddset(&sizes, SIGWINCH);
    sigprocmask(SIG_BLOCK, &sizes, &maskBefore);
    waiting = maskBefore;
    sigdelset(&waiting, SIGWINCH);
    enter();
}

RawTerminal::~RawTerminal() {
    if (!usable_) return;
    leave();
    for (std::size_t i = 0; i < std::size(ending); ++i) sigaction(ending[i], &actionsBefore[i], nullptr);
    sigaction(SIGWINCH, &sizeActionBefore, nullptr);
    sigprocmask(SIG_SETMASK, &maskBefore, nullptr);
}

void RawTerminal::enter() const {
    tcsetattr(STDIN_FILENO, TCSADRAIN, &raw);
    write(takesPastes);
}

void RawTerminal::leave() const {
    write(noPastes);
    tcsetattr(STDIN_FILENO, TCSADRAIN, &before);
}

RawTerminal::Size RawTerminal::size() {
    winsize window{};
    Size size;
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) != 0) return size;
    if (window.ws_row > 0) size.rows = std::max<std::size_t>(window.ws_row, 2);
    if (window.ws_col > 0) size.columns = std::max<std::size_t>(window.ws_col, 8);
    return size;
}

void RawTerminal::write(std::string_view text) const {
    session::writeAll(STDOUT_FILENO, text);
}

void RawTerminal::suspend() {
    leave();
    raise(SIGTSTP);
    enter();
}

const sigset_t* RawTerminal::signalsWhileWaiting() {
    return &waiting;
}

bool RawTerminal::takeResized() {
    const bool was = resized != 0;
    resized = 0;
    return was;
}

}  // namespace vemo::cli

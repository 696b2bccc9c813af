// SPDX-License-Identifier: MIT
#include "support/terminal.h"

#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <system_error>

namespace vemo::test {

namespace {

constexpr std::chrono::seconds patience(30);  // a failure takes as long; nothing else does

}  // namespace

Terminal::Terminal(const Start& start) : screen_(start.rows, start.columns) {
    std::setlocale(LC_CTYPE, "C.UTF-8");  // for the widths of characters
    winsize size{static_cast<unsigned short>(start.rows), static_cast<unsigned short>(start.columns), 0, 0};
    process_ = forkpty(&terminal_, nullptr, nullptr, &size);
    if (process_ < 0) throw std::system_error(errno, std::generic_category(), "no terminal");
    if (process_ > 0) return;
    for (const auto& [name, value] : start.environment) setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments;
    for (const std::string& argument : start.arguments) arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    if (chdir(start.folder.c_str()) == 0) execv(arguments[0], arguments.data());
    _exit(127);
}

Terminal::~Terminal() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    close(terminal_);
}

void Terminal::type(std::string_view keys) {
    while (!keys.empty()) {
        const ssize_t written = write(terminal_, keys.data(), keys.size());
        if (written < 0) throw std::system_error(errno, std::generic_category(), "cannot type");
        keys.remove_prefix(static_cast<std::size_t>(written));
    }
}

void Terminal::resize(std::size_t rows, std::size_t columns) {
    winsize size{static_cast<unsigned short>(rows), static_cast<unsigned short>(columns), 0, 0};
    screen_ = Screen(rows, columns);
    ioctl(terminal_, TIOCSWINSZ, &size);
}

void Terminal::send(int signal) {
    kill(process_, signal);
}

bool Terminal::becomes(const std::function<bool(const Screen&)>& wanted) {
    const auto deadline = Clock::now() + patience;
    while (!wanted(screen_))
        if (!readSome(deadline)) return false;
    return true;
}

int Terminal::ends() {
    const auto deadline = Clock::now() + patience;
    while (readSome(deadline)) {
    }
    int status = 0;
    if (Clock::now() >= deadline || waitpid(process_, &status, 0) != process_) return -1000;
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

bool Terminal::editsLines() const {
    termios state{};
    return tcgetattr(terminal_, &state) == 0 && (state.c_lflag & ICANON) != 0;
}

bool Terminal::readSome(Clock::time_point deadline) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd descriptor{terminal_, POLLIN, 0};
    if (left <= 0 || poll(&descriptor, 1, static_cast<int>(left)) <= 0) return false;
    char buffer[4096];
    const ssize_t count = read(terminal_, buffer, sizeof buffer);
    if (count <= 0) return false;
    output_.append(buffer, static_cast<std::size_t>(count));
    for (const char byte : std::string_view(buffer, static_cast<std::size_t>(count))) {
        screen_.write({&byte, 1});
        if (watcher_) watcher_(screen_);
    }
    return true;
}

}  // namespace vemo::test

// SPDX-License-Identifier: MIT
#include "output.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iostream>

#include "session/printable.h"

namespace vemo::cli {

bool writeOutput(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(STDOUT_FILENO, text.data(), text.size());
        if (written >= 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno != EINTR) {
            if (errno != EPIPE) complain(std::string("standard output: ") + std::strerror(errno));
            return false;
        }
    }
    return true;
}

void complain(std::string_view message) {
    std::cerr << "vemo: " << session::printable(message) << '\n';
}

}  // namespace vemo::cli

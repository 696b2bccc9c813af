// SPDX-License-Identifier: MIT
#include "session/write_all.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace vemo::session {

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            pollfd event{descriptor, POLLOUT, 0};
            poll(&event, 1, -1);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace vemo::session

// SPDX-License-Identifier: MIT
#include "c/failure.h"

namespace vemo::c {

namespace {

struct Latest {
    vemo_status status = VEMO_OK;
    std::string message;
};

thread_local Latest latest;

}  // namespace

void noteSuccess() noexcept {
    latest.status = VEMO_OK;
}

void noteFailure(vemo_status status, const char* message) noexcept {
    latest.status = status;
    try {
        latest.message = message;
    } catch (...) {
        latest.message.clear();
    }
}

vemo_status lastStatus() noexcept {
    return latest.status;
}

const char* lastError() noexcept {
    return latest.status == VEMO_OK ? nullptr : latest.message.c_str();
}

void checkIndex(std::size_t index, std::size_t count, const char* what) {
    if (index >= count)
        throw Refusal{VEMO_BAD_ARGUMENT, "there is no " + std::string(what) + " " + std::to_string(index) + " of " +
                                             std::to_string(count)};
}

}  // namespace vemo::c

vemo_status vemo_last_status(void) {
    return vemo::c::lastStatus();
}

const char* vemo_last_error(void) {
    return vemo::c::lastError();
}

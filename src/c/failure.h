// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <new>
#include <string>
#include <utility>

#include "vemo/vemo.h"

namespace vemo::c {

// What a function of the C interface cannot do, and why. Thrown below it and caught in it: nothing passes to the
// caller.
struct Refusal {
    vemo_status status = VEMO_FAILED;
    std::string message;
};

// What became of this thread's latest call.
void noteSuccess() noexcept;
void noteFailure(vemo_status status, const char* message) noexcept;
vemo_status lastStatus() noexcept;
const char* lastError() noexcept;  // null after a success

// Runs what a function does. `otherwise` is its answer where that fails.
template <class Answer, class Act>
Answer guarded(Answer otherwise, Act act) noexcept {
    noteSuccess();
    try {
        return act();
    } catch (const Refusal& refusal) {
        noteFailure(refusal.status, refusal.message.c_str());
    } catch (const std::bad_alloc&) {
        noteFailure(VEMO_NO_MEMORY, "there is no memory left");
    } catch (const std::exception& error) {
        noteFailure(VEMO_FAILED, error.what());
    } catch (...) {
        noteFailure(VEMO_FAILED, "unknown failure");
    }
    return otherwise;
}

// The same for a function whose answer is the status.
template <class Act>
vemo_status guardedStatus(Act act) noexcept {
    guarded(0, [&] {
        act();
        return 0;
    });
    return lastStatus();
}

// The object; throws when there is none.
template <class Object>
Object& given(Object* object, const char* what) {
    if (!object) throw Refusal{VEMO_BAD_ARGUMENT, std::string(what) + " is NULL"};
    return *object;
}

// Throws unless an index is one of so many.
void checkIndex(std::size_t index, std::size_t count, const char* what);

}  // namespace vemo::c

// SPDX-License-Identifier: MIT
#pragma once

#include <csignal>

namespace vemo {

// While it lives, the calling thread takes no signals; neither do the threads it starts meanwhile, ever: signals are
// the application's, and its threads must be the ones that they interrupt.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t before_;
};

}  // namespace vemo

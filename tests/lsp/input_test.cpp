// SPDX-License-Identifier: MIT
#include "lsp/input.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace vemo::test {
namespace {

// Without a way to wake its thread up it would never end.
TEST(LspInput, endsAtOnceWhereNoFileCanBeOpened) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer of undefined behaviour opens a pipe of its own to look at memory";
#endif
    int stream[2];
    ASSERT_EQ(pipe2(stream, O_CLOEXEC), 0);
    rlimit usual{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &usual), 0);
    const auto loop = std::make_shared<RunLoop>();
    bool ended = false;
    {
        rlimit none = usual;
        none.rlim_cur = 0;
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
        const lsp::Input input(
            stream[0], loop, [](lsp::Frame) {}, [&] { ended = true; });
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &usual), 0);
        loop->poll();
        EXPECT_TRUE(ended);
        close(stream[1]);
    }
    close(stream[0]);
}

}  // namespace
}  // namespace vemo::test

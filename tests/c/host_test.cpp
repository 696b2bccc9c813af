// SPDX-License-Identifier: MIT
#include "c/host.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "c/failure.h"
#include "support/calculators.h"

namespace vemo::test {
namespace {

// What other threads wait for ends with them, whatever ends the engine's thread.
TEST(Host, refusesWhatWaitsWhenItsThreadFails) {
    vemo_options options;
    options.environment = fixedEnvironment();
    c::Host host(options);
    std::mutex mutex;
    std::condition_variable changed;
    bool called = false, posted = false;
    const auto live = host.open([&] {
        std::unique_lock lock(mutex);
        called = true;
        changed.notify_all();
        changed.wait(lock, [&] { return posted; });
        std::this_thread::sleep_for(std::chrono::milliseconds(50));  // what is asked for now waits in the loop
        throw std::runtime_error("no more");
    });
    host.setText(live, u"1 + 1");
    std::optional<vemo_status> status;
    std::thread other([&] {
        {
            std::unique_lock lock(mutex);
            changed.wait(lock, [&] { return called; });
            posted = true;
            changed.notify_all();
        }
        try {
            host.run([](VemoEngine&) {});
        } catch (const c::Refusal& refusal) {
            status = refusal.status;
        }
    });
    other.join();
    EXPECT_EQ(status, VEMO_CLOSED);
    host.end(live);
    host.close();
}

}  // namespace
}  // namespace vemo::test

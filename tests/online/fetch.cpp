// SPDX-License-Identifier: MIT
// Fetches a rates file into a folder again and again, until it is killed, and prints a dot for each time: fetch URL
// FOLDER

#include <unistd.h>

#include "online/periodic_file_loader.h"

int main(int, char** arguments) {
    using namespace vemo;
    const auto loop = std::make_shared<RunLoop>();
    SchedulerThreads scheduler(loop);
    HttpClient client;
    std::shared_ptr<PeriodicFileLoader> loader;
    const auto again = [&](std::string_view message) {
        if (message.starts_with("Download finished") && ::write(STDOUT_FILENO, ".", 1) != 1) return;
        if (!message.starts_with("Download finished") && !message.starts_with("Failed")) return;
        loop->post([&] { loader->download(); });
    };
    loader = std::make_shared<PeriodicFileLoader>(
        scheduler, client, arguments[2], [](std::string_view) { return std::string(); }, again);
    loader->start(
        arguments[1], [](const std::string*) {}, std::chrono::hours(1));
    loop->run();
}

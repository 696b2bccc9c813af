// SPDX-License-Identifier: MIT
#include "online.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

#include "session/sources.h"

namespace vemo::cli {

namespace {

using namespace std::chrono_literals;

constexpr auto usualWait = 5000ms;
constexpr const char* wait = "VEMO_WAIT";
constexpr const char* longWait = "60";  // in seconds: as long as a server may take at all
constexpr auto longestWaitForPlaces = 2000ms;
constexpr auto step = 5ms;

}  // namespace

std::shared_ptr<Online> Online::forOptions(const Options& options) {
    auto online = std::make_shared<Online>();
    if (session::isUrl(options.rates)) online->sources_.currencyRates = options.rates;
    if (session::isUrl(options.coins)) online->sources_.cryptoRates = options.coins;
    online->sources_.timeZones = options.places;
    if (online->sources_ == Sources()) return nullptr;
    online->sources_.offline = options.offline;
    return online;
}

std::chrono::milliseconds waitForRates() {
    const char* seconds = std::getenv(wait);
    if (!seconds || !*seconds) return usualWait;
    return std::chrono::seconds(std::clamp(std::atoi(seconds), 0, 3600));
}

void fetchAfterwards(const Options& options) {
    if (std::getenv(wait)) return;  // somebody decided how long
    std::vector<std::string> words{"vemo", "--rates", options.rates, "--coins", options.coins, "-e", "1"};
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    std::string waits = std::string(wait) + "=" + longWait;
    std::vector<char*> variables{waits.data()};
    for (char** each = environ; *each; ++each) variables.push_back(*each);
    variables.push_back(nullptr);
    // A process for which nobody waits, without the terminal and the streams of the caller. No code of this one runs
    // in it: other threads may hold locks at this moment, that of the heap for one.
    posix_spawn_file_actions_t streams;
    posix_spawnattr_t attributes;
    if (posix_spawn_file_actions_init(&streams) != 0) return;
    if (posix_spawnattr_init(&attributes) == 0) {
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
        posix_spawn_file_actions_addopen(&streams, STDIN_FILENO, "/dev/null", O_RDWR, 0);
        for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
            posix_spawn_file_actions_adddup2(&streams, STDIN_FILENO, stream);
        pid_t process = 0;
        posix_spawn(&process, "/proc/self/exe", &streams, &attributes, arguments.data(), variables.data());
        posix_spawnattr_destroy(&attributes);
    }
    posix_spawn_file_actions_destroy(&streams);
}

void Online::complainOf(std::string problem) {
    if (std::find(problems_.begin(), problems_.end(), problem) == problems_.end())
        problems_.push_back(std::move(problem));
}

std::vector<std::string> Online::takeProblems() {
    return std::exchange(problems_, {});
}

void Online::engineOnlineProblem(const OnlineProblem& problem) {
    complainOf(session::problemText(problem));
}

void Online::runUntil(const std::function<bool()>& done, std::chrono::milliseconds atMost) {
    const auto end = std::chrono::steady_clock::now() + atMost;
    while (!done() && std::chrono::steady_clock::now() < end) loop_->runFor(step);
}

VemoEngine::Result Online::calculate(VemoEngine& engine, std::u16string_view text, const Context& context) {
    runUntil([&] { return initialized_ && !engine.pending().rates; }, waitForRates());
    late_ = engine.pending().rates;
    if (late_) complainOf("no rates came in time; those of before are used, if there are any");
    const auto answer = [&] {
        std::optional<VemoEngine::Result> result;
        engine.calculate(text, context, [&](VemoEngine::Result answered) {
            result = std::move(answered);
            loop_->stop();
        });
        while (!result) loop_->run();
        return *std::move(result);
    };
    changed_ = false;
    auto result = answer();
    // A line asks for its next place only when it knows the one before.
    const auto end = std::chrono::steady_clock::now() + longestWaitForPlaces;
    do {
        runUntil([&] { return !engine.pending().places; },
                 std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()));
        loop_->poll();  // what came of it may have to be told yet
        if (!std::exchange(changed_, false)) break;
        result = answer();
    } while (std::chrono::steady_clock::now() < end);
    return result;
}

}  // namespace vemo::cli

// SPDX-License-Identifier: MIT
#include "online.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace vemo::cli {

namespace {

using namespace std::chrono_literals;

constexpr auto usualWait = 5000ms;
constexpr const char* wait = "VEMO_WAIT";
constexpr const char* longWait = "60";  // as long as a server may take at all
constexpr auto longestWaitForPlaces = 2000ms;
constexpr auto step = 5ms;

}  // namespace

bool isUrl(const std::string& source) {
    return source.starts_with("http://") || source.starts_with("https://");
}

std::shared_ptr<Online> Online::forOptions(const Options& options) {
    auto online = std::make_shared<Online>();
    if (isUrl(options.rates)) online->sources_.currencyRates = options.rates;
    if (isUrl(options.coins)) online->sources_.cryptoRates = options.coins;
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

void fetchBehind(const Options& options) {
    if (std::getenv(wait)) return;  // somebody decided how long
    std::vector<std::string> words{"vemo", "--rates", options.rates, "--coins", options.coins, "-e", "1"};
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    if (fork() != 0) return;
    // A process that nobody waits for, without the caller's terminal and streams.
    setsid();
    setenv(wait, longWait, 1);
    const int nothing = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, stream);
    execv("/proc/self/exe", arguments.data());
    _exit(1);
}

void Online::complainOf(std::string problem) {
    const std::lock_guard lock(mutex_);
    if (std::find(problems_.begin(), problems_.end(), problem) == problems_.end())
        problems_.push_back(std::move(problem));
}

std::vector<std::string> Online::takeProblems() {
    const std::lock_guard lock(mutex_);
    return std::exchange(problems_, {});
}

void Online::hear(std::string_view message) {
    hearOfPlaces(message);
    constexpr std::string_view failed = "Failed to download ", unkept = "The copy can't be written of ",
                               unread = "Cached rates are no use: ", why = ", error:";
    if (message.starts_with(failed)) {
        const std::size_t end = std::min(message.find(why), message.size());
        complainOf("no rates came from " + std::string(message.substr(failed.size(), end - failed.size())) + ": " +
                   std::string(message.substr(std::min(end + why.size(), message.size()))));
    } else if (message.starts_with(unkept)) {
        complainOf("no copy can be kept of " + std::string(message.substr(unkept.size())));
    } else if (message.starts_with(unread)) {
        complainOf("the copy of rates is no use: " + std::string(message.substr(unread.size())));
    }
    // The loader says these on the main loop.
    if (message.starts_with("Keeping to the copy of "))
        ++unread_;
    else if (message.starts_with("Started download "))
        ++downloads_, ++unread_;
    else if (message.starts_with("Failed to download "))
        --downloads_;
    else if (message.starts_with("Download finished for "))
        --downloads_, ++unread_;
    else if (message.starts_with("Processing data for "))
        --unread_;
}

// These come from any thread.
void Online::hearOfPlaces(std::string_view message) {
    constexpr std::string_view failed = "Request failed with error: ",
                               unexpected = "Request succeded, status code not expected: ";
    if (message.starts_with(failed))
        complainOf("the service for places did not answer: " + std::string(message.substr(failed.size())));
    else if (message.starts_with(unexpected))
        complainOf("the service for places answered with status " + std::string(message.substr(unexpected.size())));
    constexpr std::string_view asking = "Looking up ", answer = "Request succeded for ";
    const std::lock_guard lock(mutex_);
    if (message.starts_with(asking)) {
        asked_.emplace(message.substr(asking.size()));
    } else if (message.starts_with(answer)) {
        const auto place = std::find_if(asked_.begin(), asked_.end(), [&](const std::string& name) {
            return message.substr(answer.size()).starts_with(name + ": ");
        });
        if (place == asked_.end()) return;
        if (!message.ends_with(": no time zone")) found_.insert(*place);
        asked_.erase(place);
    } else if (message.starts_with("Request ")) {
        ++failed_;  // of whatever place
    }
}

void Online::engineContextUpdated(const Context& context) {
    const std::lock_guard lock(mutex_);
    const std::size_t known = std::erase_if(
        found_, [&](const std::string& name) { return context.find(u"geo_name" + utf16(name)) != nullptr; });
    resolved_ = resolved_ || known > 0;
}

bool Online::awaitsPlaces() {
    const std::lock_guard lock(mutex_);
    return asked_.size() > failed_ || !found_.empty();
}

void Online::runUntil(const std::function<bool()>& done, std::chrono::milliseconds atMost) {
    const auto end = std::chrono::steady_clock::now() + atMost;
    while (!done() && std::chrono::steady_clock::now() < end) loop_->runFor(step);
}

VemoEngine::Result Online::calculate(VemoEngine& engine, std::u16string_view text, const Context& context) {
    runUntil([&] { return initialized_ && downloads_ <= 0 && unread_ <= 0; }, waitForRates());
    if (downloads_ > 0) complainOf("no rates came in time; those of before are used, if there are any");
    const auto answer = [&] {
        std::optional<VemoEngine::Result> result;
        engine.calculate(text, context, [&](VemoEngine::Result answered) {
            result = std::move(answered);
            loop_->stop();
        });
        while (!result) loop_->run();
        return *std::move(result);
    };
    auto result = answer();
    // A line asks for its next place when it knows the one before.
    for (const auto end = std::chrono::steady_clock::now() + longestWaitForPlaces; awaitsPlaces() || resolved_;) {
        runUntil([&] { return !awaitsPlaces(); },
                 std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()));
        if (!std::exchange(resolved_, false)) break;
        result = answer();
    }
    return result;
}

}  // namespace vemo::cli

// SPDX-License-Identifier: MIT
#include "online.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace vemo::cli {

namespace {

using namespace std::chrono_literals;

constexpr auto longestWaitForRates = 5000ms;
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
    return online->sources_ == Sources() ? nullptr : online;
}

void Online::hear(std::string_view message) {
    hearOfPlaces(message);
    // The loader says these on the main loop.
    if (message.starts_with("Started download "))
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
    runUntil([&] { return initialized_ && downloads_ <= 0 && unread_ <= 0; }, longestWaitForRates);
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

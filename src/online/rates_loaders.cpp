// SPDX-License-Identifier: MIT
#include "online/rates_loaders.h"

#include "base/text.h"
#include "online/rates_file.h"

namespace vemo {

namespace {

constexpr std::chrono::seconds interval{21600};
constexpr int loggedRates = 3;

std::string problemOf(std::string_view bytes) {
    const auto rates = parseRates(bytes);
    return rates ? std::string() : rates.failure().message;
}

}  // namespace

CurrencyRatesLoader::CurrencyRatesLoader(const Scheduler& scheduler, HttpClient& client,
                                         const std::filesystem::path& caches, Log log, Report report,
                                         PendingWork pending)
    : log_(log),
      report_(report),
      fileLoader_(std::make_shared<PeriodicFileLoader>(scheduler, client, caches, problemOf, std::move(log),
                                                       std::move(report), std::move(pending))) {}

void CurrencyRatesLoader::start(const std::string& url, Deliver deliver, bool offline) {
    const auto handle = [weak = weak_from_this(), url, deliver = std::move(deliver)](const std::string* bytes) {
        const auto self = weak.lock();
        if (!self || !bytes) return;
        auto rates = parseRates(*bytes);
        if (!rates) {
            if (self->log_) self->log_("Cached rates are no use: " + rates.failure().message);
            if (self->report_) self->report_({OnlineProblem::Kind::copyUnusable, url, rates.failure().message});
            return;
        }
        self->received(*rates);
        deliver(*std::move(rates));
    };
    fileLoader_->start(url, handle, offline ? std::chrono::seconds(0) : interval);
}

void CryptoRatesLoader::received(const CurrencyRatesContainer& rates) {
    if (!log()) return;
    int logged = 0;
    for (const auto& [code, rate] : rates.rates) {
        if (logged++ == loggedRates) break;
        log()("Rates for " + toUtf8(code) + " = " + rate.toString());
    }
    if (!first_) return;
    first_ = false;
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - started_;
    log()("Measure CryptoRatesLoader initial load: " + std::to_string(elapsed.count()));
}

}  // namespace vemo

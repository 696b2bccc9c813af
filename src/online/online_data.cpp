// SPDX-License-Identifier: MIT
#include "online/online_data.h"

namespace vemo {

namespace {

// The URL of a rates file, or nothing.
std::string sourceOf(const std::string& url, const std::string& host, std::string_view path) {
    if (!url.empty() || host.empty()) return url;
    const std::string base = host.find("://") == host.npos ? "https://" + host : host;
    return base.substr(0, base.find_last_not_of('/') + 1) + std::string(path);
}

}  // namespace

OnlineData::OnlineData(const Scheduler& scheduler, const Environment& environment, PeriodicFileLoader::Report report)
    : sources_(environment.sources),
      client_(std::make_shared<HttpClient>()),
      currency_(std::make_shared<CurrencyRatesLoader>(scheduler, *client_, environment.caches, environment.log, report,
                                                      pendingRates_)),
      crypto_(std::make_shared<CryptoRatesLoader>(scheduler, *client_, environment.caches, environment.log, report,
                                                  pendingRates_)) {
    if (sources_.timeZones.empty() || sources_.offline) return;
    auto service = std::make_shared<GeoNamesService>(scheduler, client_, sources_.timeZones, environment.log, report);
    geoNames_ = std::make_shared<GeoNamesManager>(scheduler, std::move(service), pendingPlaces_);
}

void OnlineData::start(CurrencyRatesLoader::Deliver currency, CurrencyRatesLoader::Deliver crypto) {
    const std::string currencyUrl = sourceOf(sources_.currencyRates, sources_.ratesHost, "/rates/currency.json");
    const std::string cryptoUrl = sourceOf(sources_.cryptoRates, sources_.ratesHost, "/rates/coins2.json");
    if (!currencyUrl.empty()) currency_->start(currencyUrl, std::move(currency), sources_.offline);
    if (!cryptoUrl.empty()) crypto_->start(cryptoUrl, std::move(crypto), sources_.offline);
}

void OnlineData::stop() {
    currency_->stop();
    crypto_->stop();
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "online/geo_names_manager.h"
#include "online/rates_loaders.h"
#include "vemo/environment.h"

namespace vemo {

// What a calculator fetches from the sources of its environment. Where none is configured, nothing starts.
class OnlineData {
public:
    // Problems are reported on any thread.
    OnlineData(const Scheduler& scheduler, const Environment& environment, PeriodicFileLoader::Report report);

    // Starts the rates, whose receivers run on the main executor until `stop`. Both belong there, too.
    void start(CurrencyRatesLoader::Deliver currency, CurrencyRatesLoader::Deliver crypto);
    void stop();

    // Null without a source of places.
    GeoNamesManager* geoNames() const { return geoNames_.get(); }

    // What is being fetched; who takes what came adds to it while it is on its way.
    const PendingWork& pendingRates() const { return pendingRates_; }
    const PendingWork& pendingPlaces() const { return pendingPlaces_; }

private:
    PendingWork pendingRates_;
    PendingWork pendingPlaces_;
    Sources sources_;
    std::shared_ptr<HttpClient> client_;
    std::shared_ptr<CurrencyRatesLoader> currency_;
    std::shared_ptr<CryptoRatesLoader> crypto_;
    std::shared_ptr<GeoNamesManager> geoNames_;
};

}  // namespace vemo

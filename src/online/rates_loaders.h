// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "online/periodic_file_loader.h"
#include "vemo/context.h"

namespace vemo {

// Keeps the exchange rates of a file fresh. Used on the main executor, where the rates are delivered too.
class CurrencyRatesLoader : public std::enable_shared_from_this<CurrencyRatesLoader> {
public:
    using Deliver = std::function<void(CurrencyRatesContainer)>;
    using Log = PeriodicFileLoader::Log;
    using Report = PeriodicFileLoader::Report;

    CurrencyRatesLoader(const Scheduler& scheduler, HttpClient& client, const std::filesystem::path& caches, Log log,
                        Report report = {}, PendingWork pending = {});
    virtual ~CurrencyRatesLoader() = default;

    // Delivers the copy of an earlier run and, unless `offline`, the file of the URL now and every six hours.
    void start(const std::string& url, Deliver deliver, bool offline = false);
    void stop() { fileLoader_->stop(); }

protected:
    // Called with every new set of rates before it is delivered.
    virtual void received(const CurrencyRatesContainer&) {}
    const Log& log() const { return log_; }

private:
    Log log_;
    Report report_;
    std::shared_ptr<PeriodicFileLoader> fileLoader_;
};

// The same for crypto-currencies; the log shows how long the first rates took, and some of each file.
class CryptoRatesLoader : public CurrencyRatesLoader {
public:
    using CurrencyRatesLoader::CurrencyRatesLoader;

protected:
    void received(const CurrencyRatesContainer& rates) override;

private:
    std::chrono::steady_clock::time_point started_ = std::chrono::steady_clock::now();
    bool first_ = true;
};

}  // namespace vemo

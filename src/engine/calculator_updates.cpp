// SPDX-License-Identifier: MIT
// What changes a calculator from outside: the minute, rates and places.
#include <cmath>

#include "engine/calculator.h"
#include "scanning/dates/time_zone_abbreviations.h"

namespace vemo {

void Calculator::start(bool onMain) {
    onMain_ = onMain;
    if (config_.testMode || !scheduler_) return;
    using namespace std::chrono;
    // The first tick comes when the minute turns.
    const auto now = floor<milliseconds>(environment_.clock());
    const auto untilNextMinute = floor<minutes>(now) + 1min - now;
    minuteTimer_ = scheduler_->every(
        1min, [this] { later([](Calculator& self) { self.minuteTimerDing(); }); }, untilNextMinute);
    const auto receive = [this](void (Calculator::*set)(CurrencyRatesContainer)) {
        return [this, set](CurrencyRatesContainer rates) {
            later([set, rates = std::move(rates), token = online_->pendingRates().begin()](Calculator& self) {
                (self.*set)(rates);
            });
        };
    };
    online_->start(receive(&Calculator::setCurrencyRates), receive(&Calculator::setCryptoRates));
}

void Calculator::retire() {
    retired_ = true;
    minuteTimer_ = nullptr;
    if (online_) online_->stop();
}

void Calculator::later(std::function<void(Calculator&)> change) {
    if (!scheduler_) return change(*this);
    const auto run = [weak = weak_from_this(), change = std::move(change)] {
        if (const auto self = weak.lock()) change(*self);
    };
    if (onMain_)
        scheduler_->postMain(run);
    else
        scheduler_->postWorker(run);
}

void Calculator::contextUpdated(Context& context) {
    if (retired_) return;
    if (const auto delegate = delegate_.lock()) delegate->calculatorContextUpdated(context);
}

double Calculator::secondsSince2001() const {
    constexpr double from1970 = 978307200;
    return environment_.clock().time_since_epoch().count() - from1970;
}

void Calculator::storeRates(std::u16string_view key, std::u16string_view timeKey, CurrencyRatesContainer rates) {
    context_.set(key, std::make_shared<const CurrencyRatesContainer>(std::move(rates)));
    // Lines depend on the time: it must differ even when the clock stands still.
    const double* before = context_.get<double>(timeKey);
    const double now = secondsSince2001();
    context_.set(timeKey, before && *before >= now ? std::nextafter(*before, HUGE_VAL) : now);
}

void Calculator::setCurrencyRates(CurrencyRatesContainer rates) {
    context_.syncUpdate(
        [&] { storeRates(context_keys::currencyRates, context_keys::currencyRatesTime, std::move(rates)); });
}

void Calculator::setCryptoRates(CurrencyRatesContainer rates) {
    const std::lock_guard lock(context_.mutex());
    const bool first = !std::exchange(cryptoInitialized_, true);
    if (first) {
        Measurer("Crypto units", environment_.log).measure("Crypto units initialization", [&] {
            registerCryptoCurrencies(unitRegistry_, rates, [&](std::u16string_view code) {
                return !zoneForAbbreviation(code).empty() || operatorCollection_.phraseDetector().find(code) ||
                       functionManager_.phraseDetector().find(code) || scaleManager_.phraseDetector().find(code);
            });
        });
        cacheManager_.clear();  // lines were read without these units
    }
    context_.beginUpdates();
    storeRates(context_keys::cryptoRates, context_keys::cryptoRatesTime, std::move(rates));
    context_.endUpdates(!first);
    const auto delegate = first && !retired_ ? delegate_.lock() : nullptr;
    if (delegate) delegate->calculatorCryptoInitialized();
}

void Calculator::lookUpPlaces(const LineResult& line) {
    line.absentKeys([&](std::u16string_view key) {
        if (!key.starts_with(context_keys::geoName)) return;
        const std::u16string name(key.substr(context_keys::geoName.size()));
        if (const auto known = online_->geoNames()->known(name)) {
            const auto zone = known->empty() ? placeNames_.zoneOf(name) : known;
            if (zone) setPlaceLater(name, *zone);
            return;
        }
        online_->geoNames()->lookup(name, [weak = weak_from_this(), name](std::optional<std::u16string> zone) {
            const auto self = weak.lock();
            if (!self) return;
            if (!zone) zone = self->placeNames_.zoneOf(name);
            if (zone) self->setPlaceLater(name, *std::move(zone));
        });
    });
}

void Calculator::setPlaceLater(const std::u16string& name, std::u16string zone) {
    later([name, zone = std::move(zone), token = online_->pendingPlaces().begin()](Calculator& self) {
        self.setPlace(name, zone);
    });
}

void Calculator::setPlace(const std::u16string& name, const std::u16string& zone) {
    const std::lock_guard lock(context_.mutex());
    const std::u16string key = geoNameKey(name);
    if (const auto* present = context_.get<std::u16string>(key); present && *present == zone) return;
    context_.syncUpdate([&] { context_.set(key, zone); });
}

// Where no timer runs, the time is that of each calculation. Within a minute it stands, so that lines stay cached.
void Calculator::renewTime() {
    const Date* known = context_.get<Date>(context_keys::currentTime);
    using std::chrono::floor, std::chrono::minutes;
    if (known && floor<minutes>(*known) == floor<minutes>(environment_.clock())) return;
    context_.beginUpdates();
    setCurrentTime();
    context_.endUpdates(false);
}

VemoEngine::Pending Calculator::pending() const {
    if (!online_) return {};
    return {online_->pendingRates().any(), online_->pendingPlaces().any()};
}

void Calculator::reportOnlineProblem(const OnlineProblem& problem) {
    if (retired_) return;
    if (const auto delegate = delegate_.lock()) delegate->calculatorOnlineProblem(problem);
}

void Calculator::minuteTimerDing() {
    context_.syncUpdate([this] { setCurrentTime(); });
}

}  // namespace vemo

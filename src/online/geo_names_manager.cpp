// SPDX-License-Identifier: MIT
#include "online/geo_names_manager.h"

#include "base/text.h"
#include "platform/time_zones.h"

namespace vemo {

GeoNamesManager::GeoNamesManager(Scheduler scheduler, std::shared_ptr<GeoNamesService> service, PendingWork pending,
                                 std::chrono::steady_clock::duration believedFor)
    : scheduler_(std::move(scheduler)),
      service_(std::move(service)),
      pending_(std::move(pending)),
      believedFor_(believedFor) {}

void GeoNamesManager::beginBatch(std::uint64_t asker) {
    const std::lock_guard lock(mutex_);
    // Forgotten askers ask again with their next calculation.
    if (latest_.size() >= rememberedAskers && !latest_.contains(asker)) latest_.clear();
    asker_ = asker;
    latest_[asker] = ++batchCounter_;
}

bool GeoNamesManager::isLatest(const Question& question) const {
    const auto latest = latest_.find(question.asker);
    return latest == latest_.end() ? question.batch == 0 : latest->second == question.batch;
}

std::optional<std::u16string> GeoNamesManager::known(std::u16string_view name) {
    const std::lock_guard lock(mutex_);
    const Answer* answer = cache_.find(name);
    if (!answer) return std::nullopt;
    if (answer->zone.empty() && std::chrono::steady_clock::now() - answer->time > believedFor_) return std::nullopt;
    return answer->zone;
}

void GeoNamesManager::lookup(const std::u16string& name, Completion completion) {
    if (name.size() > longestPlace) return;
    std::uint64_t batch = 0;
    {
        const std::lock_guard lock(mutex_);
        const auto latest = latest_.find(asker_);
        batch = latest == latest_.end() ? 0 : latest->second;
        const auto [question, isNew] = asked_.try_emplace(name, Question{asker_, batch, false});
        // The answer that another asker waits for comes for all.
        if (!isNew && (question->second.sent || isLatest(question->second))) return;
        question->second = {asker_, batch, false};
    }
    service_->log("Looking up " + toUtf8(name));
    scheduler_.postBackground(
        [weak = weak_from_this(), name, batch, token = pending_.begin(), completion = std::move(completion)] {
            const auto self = weak.lock();
            if (!self) return;
            {
                const std::lock_guard lock(self->mutex_);
                const auto question = self->asked_.find(name);
                if (question == self->asked_.end() || question->second.batch != batch || question->second.sent) return;
                if (!self->isLatest(question->second)) {
                    self->asked_.erase(question);
                    return;
                }
                question->second.sent = true;
            }
            self->service_->request(toUtf8(name),
                                    [weak, name, token, completion](const std::optional<std::string>& answer) {
                                        const auto manager = weak.lock();
                                        if (!manager) return;
                                        // An answer that names no time zone is no answer.
                                        std::u16string zone = answer ? toUtf16(*answer) : u"";
                                        if (!zone.empty() && !TimeZoneRules::find(zone)) zone.clear();
                                        {
                                            const std::lock_guard lock(manager->mutex_);
                                            manager->asked_.erase(name);
                                            if (Answer* entry = manager->cache_.obtain(name))
                                                *entry = {zone, std::chrono::steady_clock::now()};
                                        }
                                        completion(zone.empty() ? std::nullopt : std::optional(zone));
                                    });
        });
}

}  // namespace vemo

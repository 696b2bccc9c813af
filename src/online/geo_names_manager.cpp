// SPDX-License-Identifier: MIT
#include "online/geo_names_manager.h"

#include "platform/text.h"
#include "platform/time_zones.h"

namespace vemo {

GeoNamesManager::GeoNamesManager(Scheduler& scheduler, std::shared_ptr<GeoNamesService> service)
    : scheduler_(scheduler), service_(std::move(service)) {}

void GeoNamesManager::beginBatch() {
    const std::lock_guard lock(mutex_);
    ++batchCounter_;
}

std::optional<std::u16string> GeoNamesManager::known(std::u16string_view name) {
    const std::lock_guard lock(mutex_);
    const std::u16string* zone = cache_.find(name);
    return zone ? std::optional(*zone) : std::nullopt;
}

void GeoNamesManager::lookup(const std::u16string& name, Completion completion) {
    std::uint64_t batch = 0;
    {
        const std::lock_guard lock(mutex_);
        batch = batchCounter_;
    }
    scheduler_.postBackground([weak = weak_from_this(), name, batch, completion = std::move(completion)] {
        const auto self = weak.lock();
        if (!self) return;
        {
            const std::lock_guard lock(self->mutex_);
            if (self->batchCounter_ != batch) return;
        }
        self->service_->request(toUtf8(name), [weak, name, completion](const std::optional<std::string>& answer) {
            const auto manager = weak.lock();
            if (!manager) return;
            // An answer that names no time zone is no answer.
            std::u16string zone = answer ? toUtf16(*answer) : u"";
            if (!zone.empty() && !TimeZoneRules::find(zone)) zone.clear();
            {
                const std::lock_guard lock(manager->mutex_);
                if (auto* entry = manager->cache_.obtain(name)) *entry = zone;
            }
            completion(zone.empty() ? std::nullopt : std::optional(zone));
        });
    });
}

}  // namespace vemo

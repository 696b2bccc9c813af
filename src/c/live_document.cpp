// SPDX-License-Identifier: MIT
// Documents on the engine's thread.
#include <algorithm>

#include "c/failure.h"
#include "c/host.h"

namespace vemo::c {

std::shared_ptr<LiveDocument> Host::open(std::function<void()> answered) {
    const auto live = std::make_shared<LiveDocument>();
    live->answered = std::move(answered);
    run([&](VemoEngine&) { documents_.push_back(live); });
    return live;
}

void Host::setText(const std::shared_ptr<LiveDocument>& live, std::u16string text) {
    {
        const std::lock_guard lock(live->mutex);
        live->text = std::move(text);
        ++live->version;
    }
    post([this, live] {
        bool last = false;
        {
            // Of several texts that were set meanwhile, the last is the one to calculate.
            const std::lock_guard lock(live->mutex);
            if (live->ended || !engine_) return;
            if (!live->document) live->document = std::make_unique<VemoDocument>(*engine_, u"", 0, settings());
            last = live->document->version() != live->version;
            if (last) live->document->edit(0, live->document->text().size(), live->text, live->version);
        }
        if (last) calculate(live);
    });
}

void Host::calculate(const std::shared_ptr<LiveDocument>& live) {
    live->document->calculate([weak = std::weak_ptr(live), text = live->document->text()](const auto& answer) mutable {
        const auto answering = weak.lock();
        if (!answering) return;
        {
            const std::lock_guard lock(answering->mutex);
            answering->latest = answer;
            answering->answeredText = std::move(text);
            answering->changed.notify_all();
        }
        if (answering->answered) answering->answered();
    });
}

void Host::contextChanged() {
    const auto documents = documents_;  // a callback may end one
    for (const auto& live : documents)
        if (live->document) calculate(live);
}

void Host::end(const std::shared_ptr<LiveDocument>& live) {
    try {
        run([&](VemoEngine&) {
            endHere(*live);
            std::erase(documents_, live);
        });
    } catch (const Refusal& refusal) {
        if (refusal.status != VEMO_CLOSED) throw;  // the engine ended it
    }
}

void Host::endHere(LiveDocument& live) {
    live.document = nullptr;
    const std::lock_guard lock(live.mutex);
    live.ended = true;
    live.changed.notify_all();
}

}  // namespace vemo::c

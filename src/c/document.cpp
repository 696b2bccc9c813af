// SPDX-License-Identifier: MIT
#include <chrono>

#include "c/engine.h"
#include "c/failure.h"
#include "c/result.h"
#include "c/texts.h"

struct vemo_document {
    std::shared_ptr<vemo::c::Host> host;
    std::shared_ptr<vemo::c::LiveDocument> live;
};

namespace {

using namespace vemo;
using c::Refusal;

// The latest result. Under the document's lock.
vemo_result* resultOf(const vemo_document& document) {
    const auto& live = *document.live;
    return new vemo_result(document.host, live.answeredText, live.latest->result);
}

}  // namespace

vemo_document* vemo_document_create(vemo_engine* engine, vemo_answered answered, void* user) {
    return c::guarded<vemo_document*>(nullptr, [&] {
        const auto& host = c::given(engine, "the engine").host;
        auto document = std::make_unique<vemo_document>();
        document->host = host;
        std::function<void()> callback;
        if (answered) callback = [answered, user] { answered(user); };
        document->live = host->open(std::move(callback));
        return document.release();
    });
}

void vemo_document_destroy(vemo_document* document) {
    c::guardedStatus([&] {
        if (!document) return;
        document->host->end(document->live);
        delete document;
    });
}

vemo_status vemo_document_set_text(vemo_document* document, const char* text, size_t length) {
    return c::guardedStatus([&] {
        vemo_document& each = c::given(document, "the document");
        each.host->setText(each.live, utf16(c::givenText(text, length, "the text")));
    });
}

vemo_result* vemo_document_latest(vemo_document* document) {
    return c::guarded<vemo_result*>(nullptr, [&]() -> vemo_result* {
        vemo_document& each = c::given(document, "the document");
        const std::lock_guard lock(each.live->mutex);
        return each.live->latest ? resultOf(each) : nullptr;
    });
}

vemo_result* vemo_document_wait(vemo_document* document, int milliseconds) {
    return c::guarded<vemo_result*>(nullptr, [&] {
        vemo_document& each = c::given(document, "the document");
        auto& live = *each.live;
        std::unique_lock lock(live.mutex);
        if (live.version == 0) throw Refusal{VEMO_BAD_ARGUMENT, "the document has no text yet"};
        const auto isAnswered = [&] { return live.latest && live.latest->version == live.version; };
        const auto isOver = [&] { return isAnswered() || live.ended; };
        if (!isOver() && each.host->isOwnThread())
            throw Refusal{VEMO_IN_CALLBACK, "a callback can't wait for its own thread"};
        if (milliseconds < 0)
            live.changed.wait(lock, isOver);
        else
            live.changed.wait_for(lock, std::chrono::milliseconds(milliseconds), isOver);
        if (isAnswered()) return resultOf(each);
        if (live.ended) throw Refusal{VEMO_CLOSED, "the engine is destroyed"};
        throw Refusal{VEMO_TIMED_OUT, "the text is not calculated yet"};
    });
}

// SPDX-License-Identifier: MIT
#include "c/engine.h"

#include <chrono>

#include "c/failure.h"
#include "c/result.h"
#include "c/texts.h"

namespace {

using namespace vemo;
using c::Refusal;

vemo_status takeRates(vemo_engine* engine, VemoEngine::RatesFile kind, const char* json, std::size_t length) {
    return c::guardedStatus([&] {
        c::Host& host = *c::given(engine, "the engine").host;
        host.takeRates(kind, c::givenText(json, length, "the text of rates"));
    });
}

}  // namespace

const char* vemo_version(void) {
    static const std::string version(VemoEngine::version());
    c::noteSuccess();
    return version.c_str();
}

vemo_engine* vemo_engine_create(const vemo_options* options) {
    return c::guarded<vemo_engine*>(nullptr, [&] {
        const vemo_options usual;
        auto host = std::make_shared<c::Host>(options ? *options : usual);
        return new vemo_engine{std::move(host)};
    });
}

void vemo_engine_destroy(vemo_engine* engine) {
    c::guardedStatus([&] {
        if (!engine) return;
        engine->host->close();
        delete engine;
    });
}

vemo_text vemo_engine_log(const vemo_engine* engine) {
    return c::guarded(vemo_text{}, [&] { return c::handed(c::given(engine, "the engine").host->startUpLog()); });
}

vemo_result* vemo_engine_calculate(vemo_engine* engine, const char* text, size_t length) {
    return c::guarded<vemo_result*>(nullptr, [&] {
        const auto& host = c::given(engine, "the engine").host;
        std::u16string lines = utf16(c::givenText(text, length, "the text"));
        auto result = host->calculate(lines);
        return new vemo_result(host, std::move(lines), std::move(result));
    });
}

vemo_status vemo_engine_take_rates(vemo_engine* engine, const char* json, size_t length) {
    return takeRates(engine, VemoEngine::RatesFile::currency, json, length);
}

vemo_status vemo_engine_take_coins(vemo_engine* engine, const char* json, size_t length) {
    return takeRates(engine, VemoEngine::RatesFile::crypto, json, length);
}

vemo_status vemo_engine_wait(vemo_engine* engine, int milliseconds) {
    return c::guardedStatus([&] {
        c::Host& host = *c::given(engine, "the engine").host;
        if (milliseconds < 0) throw Refusal{VEMO_BAD_ARGUMENT, "a negative time"};
        std::string problem;
        const vemo_status status = host.wait(std::chrono::milliseconds(milliseconds), problem);
        if (status != VEMO_OK) throw Refusal{status, problem};
    });
}

// SPDX-License-Identifier: MIT
// Whatever a document says, it is calculated; and the runs of each line join to the line.

#include <cstdint>
#include <cstdlib>

#include "base/text.h"
#include "vemo/engine.h"

namespace {

std::unique_ptr<vemo::VemoEngine> newEngine() {
    vemo::Environment environment;
    environment.locale = "en_US";
    environment.language = "en";
    environment.timeZone = "Europe/Berlin";
    environment.clock = [] { return vemo::Date(std::chrono::duration<double>(1795525200)); };
    auto engine = std::make_unique<vemo::VemoEngine>(std::move(environment));
    vemo::VemoEngine::Config config;
    config.testMode = true;
    engine->buildVemoWorker(config);
    return engine;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = vemo::utf16(std::string_view(reinterpret_cast<const char*>(data), size));
    static const auto engine = newEngine();
    vemo::Context context;
    const auto result = engine->calculateSync(text, context);
    const auto lines = vemo::lineRanges(text);
    if (!result || result->lines.size() != lines.size()) std::abort();
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (result->lines[i].attributedText().compoundString() != lines[i].in(text)) std::abort();
    return 0;
}

// SPDX-License-Identifier: MIT
// Whatever a document says, it is calculated; and the runs of each line join to the line.

#include <cstdint>
#include <cstdlib>

#include "platform/text.h"
#include "vemo/engine.h"

namespace {

vemo::VemoEngine& engine() {
    static vemo::VemoEngine instance = [] {
        vemo::Environment environment;
        environment.locale = "en_US";
        environment.language = "en";
        environment.timeZone = "Europe/Berlin";
        environment.clock = [] { return vemo::Date(std::chrono::duration<double>(1795525200)); };
        return environment;
    }();
    static const bool built = [] {
        vemo::VemoEngine::Config config;
        config.testMode = true;
        instance.buildVemoWorker(config);
        return true;
    }();
    (void)built;
    return instance;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = vemo::utf16(std::string_view(reinterpret_cast<const char*>(data), size));
    vemo::Context context;
    const auto result = engine().calculateSync(text, context);
    const auto lines = vemo::lineRanges(text);
    if (!result || result->lines.size() != lines.size()) std::abort();
    for (std::size_t i = 0; i < lines.size(); ++i)
        if (result->lines[i].attributedText().compoundString() != lines[i].in(text)) std::abort();
    return 0;
}

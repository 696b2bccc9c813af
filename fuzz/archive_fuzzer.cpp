// SPDX-License-Identifier: MIT
// Whatever bytes a stored result is read from, reading ends; and what was read is stored and read back the same.

#include <cstdint>
#include <cstdlib>

#include "output/archive/stored_result.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using Stored = vemo::VemoEngineResultSerializerResult;
    const auto stored = Stored::decode(std::string(reinterpret_cast<const char*>(data), size));
    if (!stored) return 0;
    const auto again = Stored::decode(stored->encode());
    if (!again || again->attributedText != stored->attributedText || again->formattedResult != stored->formattedResult)
        std::abort();
    return 0;
}

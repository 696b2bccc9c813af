// SPDX-License-Identifier: MIT
#include "session/document_text.h"

namespace vemo::session {

std::optional<std::size_t> firstInvalidByte(std::string_view text) {
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const std::size_t length = byte < 0x80   ? 1
                                   : byte < 0xc2 ? 0
                                   : byte < 0xe0 ? 2
                                   : byte < 0xf0 ? 3
                                   : byte < 0xf5 ? 4
                                                 : 0;
        if (length == 0 || i + length > text.size()) return i;
        for (std::size_t k = 1; k < length; ++k)
            if ((static_cast<unsigned char>(text[i + k]) & 0xc0) != 0x80) return i;
        const auto second = length > 1 ? static_cast<unsigned char>(text[i + 1]) : 0;
        // Overlong forms, surrogates and code points past U+10FFFF.
        if ((byte == 0xe0 && second < 0xa0) || (byte == 0xed && second > 0x9f) || (byte == 0xf0 && second < 0x90) ||
            (byte == 0xf4 && second > 0x8f))
            return i;
        i += length;
    }
    return std::nullopt;
}

}  // namespace vemo::session

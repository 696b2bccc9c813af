// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vemo/vemo.h"

namespace vemo::c {

// A text handed in: throws for NULL, for what is not UTF-8 and for what is larger than any document.
std::string_view givenText(const char* text, std::size_t length, const char* what);

// A text handed out, which stays where it is.
inline vemo_text handed(const std::string& text) {
    return {text.c_str(), text.size()};
}
inline vemo_text handed(const std::optional<std::string>& text) {
    return text ? handed(*text) : vemo_text{nullptr, 0};
}

// How many bytes a part of a text takes as UTF-8, where its start and length are in UTF-16 units.
std::size_t bytesOf(std::u16string_view text, std::size_t start, std::size_t length);

}  // namespace vemo::c

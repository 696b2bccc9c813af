// SPDX-License-Identifier: MIT
#include "c/texts.h"

#include <cstring>

#include "base/text.h"
#include "c/failure.h"
#include "session/document_text.h"

namespace vemo::c {

namespace {

constexpr std::size_t largestText = std::size_t{256} << 20;  // bytes

}  // namespace

std::string_view givenText(const char* text, std::size_t length, const char* what) {
    given(text, what);
    const std::string_view view(text, length == VEMO_TO_NUL ? std::strlen(text) : length);
    if (view.size() > largestText) throw Refusal{VEMO_BAD_ARGUMENT, std::string(what) + " has more than 256 MiB"};
    if (const auto offset = session::firstInvalidByte(view))
        throw Refusal{VEMO_NOT_UTF8, std::string(what) + " is not UTF-8 at byte " + std::to_string(*offset)};
    return view;
}

std::size_t bytesOf(std::u16string_view text, std::size_t start, std::size_t length) {
    return start < text.size() ? toUtf8(text.substr(start, length)).size() : 0;
}

}  // namespace vemo::c

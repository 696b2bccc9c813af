// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/locid.h>

#include <string_view>

namespace vemo {

// True for an ICU or POSIX identifier of a length that ICU can take, such as "de_DE", "zh-Hant-TW" or "de_DE@euro";
// longer parts make it write past its buffers. Its keywords have values.
bool isUsableLocale(std::string_view identifier);

// The locale, without a POSIX character set; the root for an identifier that can't be used.
icu::Locale icuLocale(std::string_view identifier);

}  // namespace vemo

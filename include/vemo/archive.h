// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "vemo/attributed_text.h"

namespace vemo {

// Writes one record as a keyed archive, a binary property list: the form in which stored results hold it. Any thread
// may call it.
std::string archived(const AttributedTextElement& element);
std::string archived(const AttributedText& text);
std::string archived(const FormattedValue& value);

// Reads such an archive. Nothing when the bytes hold no such record, or one that lacks what it needs; types of runs
// that are not known here become plain text. The bytes may come from anywhere: the work is bounded in proportion to
// their number. Any thread may call it.
std::optional<AttributedTextElement> unarchivedElement(std::string bytes);
std::optional<AttributedText> unarchivedText(std::string bytes);
std::optional<FormattedValue> unarchivedValue(std::string bytes);

}  // namespace vemo

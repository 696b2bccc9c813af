// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "vemo/attributed_text.h"

namespace vemo {

// One record as a keyed archive, a binary property list: the form in which stored results hold them, too. What is read
// may come from anywhere: the work is limited in proportion to its size. Nothing for bytes that hold no such record, or
// one without what it needs; types of runs that are not known here become plain text. Any thread.
std::string archived(const AttributedTextElement& element);
std::string archived(const AttributedText& text);
std::string archived(const FormattedValue& value);
std::optional<AttributedTextElement> unarchivedElement(std::string bytes);
std::optional<AttributedText> unarchivedText(std::string bytes);
std::optional<FormattedValue> unarchivedValue(std::string bytes);

}  // namespace vemo

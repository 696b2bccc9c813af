// SPDX-License-Identifier: MIT
#pragma once

#include "functions/function_manager.h"
#include "records/element.h"

namespace vemo {

// True for a line that is nothing but an aggregate, the previous result or a name, apart from words, a label, a comment
// and brackets: what it shows is on other lines. `written` are its elements before evaluation.
bool onlyRepeatsLines(const ElementList& written, const FunctionManager& functions);

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include "records/line_result.h"
#include "vemo/engine.h"

namespace vemo {

// Makes the handles by which applications see the results of lines.
class LineMaker {
public:
    static const LineResult& resultOf(const VemoEngine::Result::Line& line) { return *line.result_; }
    static VemoEngine::Result::Line make(LineResultPointer line) { return VemoEngine::Result::Line(std::move(line)); }
};

}  // namespace vemo

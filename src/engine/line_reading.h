// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "records/reading.h"

namespace vemo {

// A value written out with all its digits; empty where it shows nothing.
using ValueWriter = std::function<std::u16string(const Value&)>;

// The line as it was calculated: the result's steps with every bracket and sign, names as their values. `steps` are
// those of the evaluation, in their order.
std::u16string lineReading(std::u16string_view line, std::span<const ReadingStep> steps, const Value& result,
                           const ValueWriter& write);

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vemo {

// Knows the time zones of places, at once. Thread-safe.
class Places {
public:
    virtual ~Places() = default;
    // The IANA identifier; nothing for what is no known place.
    virtual std::optional<std::u16string> zoneOf(std::u16string_view place) const = 0;
};

}  // namespace vemo

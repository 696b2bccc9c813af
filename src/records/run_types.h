// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "vemo/attributed_text.h"

namespace vemo {

// The code of each run type, in the order of `RunType`: what applications receive and archives hold.
inline constexpr std::array<std::u16string_view, 11> runTypeCodes{
    u"", u"var", u"prnth", u"num", u"cmnt", u"unit", u"hdr", u"lbl", u"fn", u"oprtr", u"oprtrsmb"};
static_assert(runTypeCodes.size() == static_cast<std::size_t>(RunType::operatorSymbol) + 1);

// How many bits tell a type in a stored line.
inline constexpr std::uint32_t runTypeBits = 4;
static_assert(runTypeCodes.size() <= 1u << runTypeBits);

// The type with the code; `none` for an unknown one.
constexpr RunType runTypeWithCode(std::u16string_view code) {
    for (std::size_t i = 0; i < runTypeCodes.size(); ++i)
        if (runTypeCodes[i] == code) return static_cast<RunType>(i);
    return RunType::none;
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

namespace vemo::session {

// How far a word of the vocabulary stands from those that people type most; the same for all that they rarely do.
std::size_t rarityOf(std::u16string_view word);

}  // namespace vemo::session

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vemo::notepad {

class Page;

// The grand total of a page of several lines, with a word where it is one of some lines only. Empty for none.
QString totalText(Page& page);

}  // namespace vemo::notepad

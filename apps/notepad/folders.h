// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vemo::notepad {

// Where the notepad keeps what belongs to no file: unsaved texts, open tabs, answers of last time. Under
// $XDG_STATE_HOME, else ~/.local/state; made for its owner only.
QString stateFolder();

// A folder in it, which is made.
QString stateFolder(const QString& name);

}  // namespace vemo::notepad

// SPDX-License-Identifier: MIT
#pragma once

namespace vemo::notepad {

class MainWindow;
class Workspace;

// What opens, saves, exports and closes pages, in the window's menus.
void fillFileMenu(MainWindow& window, Workspace& workspace);

}  // namespace vemo::notepad

// SPDX-License-Identifier: MIT
#pragma once

class QMenu;

namespace vemo::notepad {

class MainWindow;
class Workspace;

// What leaves a page: files in other formats, paper, and the clipboard.
QMenu* buildExportMenu(MainWindow& window, Workspace& workspace, QMenu& parent);
void addPrinting(MainWindow& window, Workspace& workspace, QMenu& menu);
QMenu* buildCopyMenu(MainWindow& window, Workspace& workspace, QMenu& parent);

}  // namespace vemo::notepad

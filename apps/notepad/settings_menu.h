// SPDX-License-Identifier: MIT
#pragma once

namespace vemo::notepad {

class Calculation;
class MainWindow;
class Settings;

// The entry of the dialog in the edit menu.
void fillSettingsMenu(MainWindow& window, Settings& settings, Calculation& calculation);

}  // namespace vemo::notepad

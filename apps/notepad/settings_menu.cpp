// SPDX-License-Identifier: MIT
#include "notepad/settings_menu.h"

#include <QMenu>

#include "notepad/main_window.h"
#include "notepad/settings.h"
#include "notepad/settings_dialog.h"

namespace vemo::notepad {

void fillSettingsMenu(MainWindow& window, Settings& settings, Calculation& calculation) {
    window.editMenu()->addSeparator();
    QAction* action = window.editMenu()->addAction(SettingsDialog::tr("&Settings…"), &window, [&] {
        SettingsDialog dialog(settings, calculation, &window);
        dialog.exec();
    });
    action->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Comma)});
}

}  // namespace vemo::notepad

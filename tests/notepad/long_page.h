// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vemo::notepad {

// A page of so many lines as people write them; every third depends on the name in the first.
inline QString longPage(int lines) {
    QString text = QStringLiteral("rate = 4\n");
    for (int i = 1; i < lines; ++i) {
        const QString number = QString::number(i % 977 + 1);
        switch (i % 6) {
            case 0:
                text += QStringLiteral("# Week %1\n").arg(number);
                break;
            case 1:
            case 4:
                text += QStringLiteral("work %1 h * rate  // as agreed\n").arg(number);
                break;
            case 2:
                text += QStringLiteral("item: $%1.50 + 8%\n").arg(number);
                break;
            case 3:
                text += QStringLiteral("%1 km in miles\n").arg(number);
                break;
            default:
                text += QStringLiteral("rent and so on %1 * 3 (2 + 1)\n").arg(number);
        }
    }
    return text;
}

}  // namespace vemo::notepad

// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringView>
#include <string>
#include <string_view>

namespace vemo::notepad {

// Both sides keep UTF-16, so a text is copied as it is.
inline QString toQt(std::u16string_view text) {
    return QStringView(text.data(), static_cast<qsizetype>(text.size())).toString();
}

inline std::u16string_view viewOf(QStringView text) {
    return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace vemo::notepad

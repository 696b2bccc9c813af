// SPDX-License-Identifier: MIT
#include "notepad/theme.h"

#include <QApplication>

namespace vemo::notepad {

namespace {

Theme lightTheme() {
    Theme theme;
    theme.background = QColor(0xfdfdfb);
    theme.text = QColor(0x22272e);
    theme.currentLine = QColor(0xf3f4ef);
    theme.divider = QColor(0xdcdfd8);
    theme.lineNumber = QColor(0x8d949c);
    theme.answer = QColor(0x0f6b3c);
    theme.reason = QColor(0x747b83);
    theme.hover = QColor(0xdfeee3);
    theme.note = QColor(0xc07a1c);
    theme.match = QColor(0xffe08a);
    theme.number = QColor(0x1b2f52);
    theme.unit = QColor(0x0b6e75);
    theme.variable = QColor(0x7a3aa0);
    theme.function = QColor(0x1f57b5);
    theme.operatorColor = QColor(0xa1520e);
    theme.parenthesis = QColor(0x6a7078);
    theme.comment = QColor(0x757c84);
    theme.label = QColor(0x4d6070);
    theme.header = QColor(0x15191e);
    theme.plain = QColor(0x454b53);
    return theme;
}

Theme darkTheme() {
    Theme theme;
    theme.background = QColor(0x1d2024);
    theme.text = QColor(0xe3e6e8);
    theme.currentLine = QColor(0x262a2f);
    theme.divider = QColor(0x383d44);
    theme.lineNumber = QColor(0x7c848d);
    theme.answer = QColor(0x7fd6a0);
    theme.reason = QColor(0x929aa3);
    theme.hover = QColor(0x2c4637);
    theme.note = QColor(0xe0a650);
    theme.match = QColor(0x6b5715);
    theme.number = QColor(0xd9e4f7);
    theme.unit = QColor(0x6fd0d6);
    theme.variable = QColor(0xcfa2ec);
    theme.function = QColor(0x86b4f8);
    theme.operatorColor = QColor(0xeda565);
    theme.parenthesis = QColor(0x9aa2ab);
    theme.comment = QColor(0x8b939c);
    theme.label = QColor(0xa9bac8);
    theme.header = QColor(0xf5f7f8);
    theme.plain = QColor(0xc3c8cd);
    return theme;
}

// The colours of widgets around the page.
QPalette paletteOf(const Theme& theme, bool dark) {
    const QColor window(dark ? 0x282c31 : 0xeff0ec), button(dark ? 0x33383e : 0xf7f8f5);
    const QColor faint(dark ? 0x7b838b : 0x9aa0a6), accent(dark ? 0x3f8f63 : 0x2a8a57);
    QPalette palette(theme.text, button, button.lighter(110), window.darker(130), window.darker(115), theme.text,
                     Qt::white, theme.background, window);
    palette.setColor(QPalette::AlternateBase, theme.currentLine);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::ToolTipBase, theme.background);
    palette.setColor(QPalette::ToolTipText, theme.text);
    palette.setColor(QPalette::Link, theme.function);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

}  // namespace

QColor Theme::of(RunType type) const {
    switch (type) {
        case RunType::variable:
            return variable;
        case RunType::parenthesis:
            return parenthesis;
        case RunType::number:
            return number;
        case RunType::comment:
            return comment;
        case RunType::unit:
            return unit;
        case RunType::header:
            return header;
        case RunType::label:
            return label;
        case RunType::function:
            return function;
        case RunType::operatorWord:
        case RunType::operatorSymbol:
            return operatorColor;
        case RunType::none:
            break;
    }
    return plain;
}

const Theme& Theme::light() {
    static const Theme theme = lightTheme();
    return theme;
}

const Theme& Theme::dark() {
    static const Theme theme = darkTheme();
    return theme;
}

const Theme& Theme::matching(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128 ? dark() : light();
}

void applyTheme(ThemeChoice choice) {
    static const QPalette desktop = QApplication::palette();
    const bool isDark =
        choice == ThemeChoice::dark || (choice == ThemeChoice::desktop && &Theme::matching(desktop) == &Theme::dark());
    QApplication::setPalette(paletteOf(isDark ? Theme::dark() : Theme::light(), isDark));
}

}  // namespace vemo::notepad

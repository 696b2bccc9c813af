// SPDX-License-Identifier: MIT
#include "notepad/exporting.h"

#include <algorithm>
#include <optional>
#include <sstream>

#include "session/listing.h"
#include "session/tables.h"

namespace vemo::notepad {

namespace {

std::string written(TextFormat format, const VemoEngine::Result& result, const QString& title, bool withTotal) {
    if (format == TextFormat::plain) {
        session::Layout layout;
        layout.total = withTotal;
        std::ostringstream out;
        session::printResult(out, result, layout);
        return out.str();
    }
    const auto rows = session::rowsOf(result, {});
    if (format == TextFormat::csv) return session::csvText(rows);
    const auto total = withTotal ? session::totalOf(result, false) : std::nullopt;
    if (format == TextFormat::markdown) return session::markdownText(rows, total);
    return session::htmlText(rows, total, title.toStdString());
}

}  // namespace

std::string textIn(TextFormat format, const VemoEngine::Result& result, const QString& title) {
    return written(format, result, title, true);
}

VemoEngine::Result linesOf(const VemoEngine::Result& result, int first, int count) {
    const auto size = static_cast<std::ptrdiff_t>(result.lines.size());
    const auto from = std::clamp<std::ptrdiff_t>(first, 0, size),
               to = std::clamp<std::ptrdiff_t>(first + count, from, size);
    VemoEngine::Result lines;
    lines.lines.assign(result.lines.begin() + from, result.lines.begin() + to);
    lines.context = result.context;
    return lines;
}

std::string textOfLinesIn(TextFormat format, const VemoEngine::Result& lines) {
    return written(format, lines, {}, false);
}

}  // namespace vemo::notepad

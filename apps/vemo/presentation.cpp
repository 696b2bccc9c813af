// SPDX-License-Identifier: MIT
#include "presentation.h"

#include <algorithm>
#include <iostream>
#include <sstream>

#include "extensions.h"
#include "output.h"
#include "session/json.h"
#include "session/tables.h"

namespace vemo::cli {

namespace {

using Format = Options::Format;

constexpr int failed = 1;
constexpr int unusable = 2;

std::string textOf(const Options& options, const session::Layout& layout, const VemoEngine::Result& result,
                   const std::string& log, const std::vector<std::string>& problems,
                   const std::vector<std::string>& readings) {
    if (options.json()) return session::jsonText(result, log, problems, readings);
    if (options.format == Format::table) {
        std::ostringstream out;
        if (options.results)
            session::printResults(out, result, layout.writing);
        else
            session::printResult(out, result, layout, readings);
        return out.str();
    }
    auto rows = session::rowsOf(result, layout.writing);
    if (options.results) std::erase_if(rows, [](const session::Row& row) { return row.result.empty(); });
    if (options.format == Format::csv) return session::csvText(rows);
    if (options.format == Format::tsv) return session::tsvText(rows);
    const auto total = layout.total && !options.results ? session::totalOf(result, options.shortTexts) : std::nullopt;
    if (options.format == Format::markdown) return session::markdownText(rows, total);
    const bool named = !options.file.empty() && options.file != "-";
    return session::htmlText(rows, total, named ? options.file : "vemo");
}

}  // namespace

int present(const Options& options, const session::Layout& layout, const VemoEngine::Result& result,
            const std::string& log, const std::vector<std::string>& problems,
            const std::vector<std::string>& readings) {
    const bool anyResult = std::any_of(result.lines.begin(), result.lines.end(),
                                       [](const auto& line) { return line.formattedResult().regular.has_value(); });
    const bool anyReason = std::any_of(result.lines.begin(), result.lines.end(),
                                       [](const auto& line) { return line.reason().has_value(); });
    if (options.argument && !anyResult && !anyReason) {
        complain(options.expressions.front() + ": cannot be read");
        return unusable;
    }
    const bool written = writeOutput(textOf(options, layout, result, log, problems, readings));
    // Remarks go to standard error when the output does not hold them.
    if (options.format == Format::table && !options.quiet && (options.results || !layout.remarks))
        session::printRemarks(std::cerr, result, options.file.empty() ? "vemo" : options.file);
    printLog(std::cerr, log);
    for (const std::string& problem : problems) complain(problem);
    return !written || (options.strict() && anyReason) ? failed : 0;
}

}  // namespace vemo::cli

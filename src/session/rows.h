// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "vemo/engine.h"

namespace vemo::session {

// How results are written.
struct Writing {
    bool shortTexts = false;
    bool plain = false;                     // for programs: see `plainResult`
    std::optional<std::int64_t> precision;  // of plain numbers; nothing: as they are
};

// A line with its result, as the output formats need it; empty texts for what it lacks.
struct Row {
    std::string text;
    std::string result;
    std::string number;  // exact, without separators; of a date, its instant
    std::string unit;
    std::string remark;  // notes and the reason
};

// A number with "." as its point and without separators, an ASCII minus, and the unit after a blank; or an instant in
// UTC. Empty where there is neither.
std::string plainResult(const Row& row);

// The text of a result, short where one is wanted and there; empty without a result.
std::string resultText(const FormattedValue& value, bool shortTexts);

// An instant such as 2026-11-24T12:00:00Z.
std::string instantText(Date date);

Row rowOf(const VemoEngine::Result& result, std::size_t line, const Writing& writing);
std::vector<Row> rowsOf(const VemoEngine::Result& result, const Writing& writing);

// The grand total of a document of several lines.
struct Total {
    std::string label;
    std::string text;  // empty where a line without a result leaves none
};
std::optional<Total> totalOf(const VemoEngine::Result& result, bool shortTexts);

}  // namespace vemo::session

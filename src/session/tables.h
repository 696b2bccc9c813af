// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "session/rows.h"

namespace vemo::session {

// Tables for other programs of what each line gives, with a header.
std::string csvText(const std::vector<Row>& rows);
std::string tsvText(const std::vector<Row>& rows);
std::string markdownText(const std::vector<Row>& rows, const std::optional<Total>& total);
// A whole page that needs nothing else.
std::string htmlText(const std::vector<Row>& rows, const std::optional<Total>& total, std::string_view title);

}  // namespace vemo::session

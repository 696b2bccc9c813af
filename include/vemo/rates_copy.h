// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "vemo/time.h"

namespace vemo {

// When the rates of a URL were fetched last, by this process or another: the time of the copy that is kept of them.
// `caches` is that of the environment. Nothing where there is no copy. Any thread.
std::optional<Date> ratesFetched(const std::string& url, const std::filesystem::path& caches = {});

}  // namespace vemo

// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "base/function_ref.h"
#include "vemo/engine.h"

namespace vemo {

class JSRunner;
class JSVemo;

// Evaluates the files of a folder and of those below it whose extension is exactly "js", in the order of their
// paths, each under `lock`. `scripts` gives who does it; it is not called when there is no such file.
std::vector<Extension> loadExtensions(const std::filesystem::path& folder, std::recursive_mutex& lock,
                                      const std::function<void(std::string_view)>& log,
                                      FunctionRef<std::pair<JSRunner&, JSVemo&>()> scripts);

// What the log of the start-up says about these files.
std::string startUpLog(const std::vector<Extension>& extensions);

}  // namespace vemo

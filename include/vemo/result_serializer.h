// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>

#include "vemo/engine.h"

namespace vemo {

// Keeps the latest result of a document in a file, to be shown before the engine has calculated again: the runs and
// the result of every line. Any thread; a file belongs to one writer at a time.
class VemoEngineResultSerializer {
public:
    // Replaces the file, as a whole. Failures are not reported, nor a result that would take more than 256 MiB: the
    // earlier file stays.
    void serialize(const VemoEngine::Result& result, const std::filesystem::path& path) const;
    // Lines without completions, and an empty context. Nothing when the file is missing, is no such file, or holds no
    // lines.
    std::optional<VemoEngine::Result> deserialize(const std::filesystem::path& path) const;
};

}  // namespace vemo

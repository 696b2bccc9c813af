// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "vemo/environment.h"
#include "vemo/vemo.h"

struct vemo_options {
    vemo::Environment environment;
    std::filesystem::path extensions;
    std::optional<std::int64_t> precision;
};

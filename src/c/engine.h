// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "c/host.h"
#include "vemo/vemo.h"

struct vemo_engine {
    std::shared_ptr<vemo::c::Host> host;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "vemo/engine.h"

namespace vemo::cli {

// False when there is no such folder; the person has been told then.
bool isFolder(const std::string& path);

void printLog(std::ostream& out, const std::string& log);
// The messages of the scripts, each after the name of its file.
void printLogs(std::ostream& out, const std::vector<Extension>& extensions);

// What each script defined and said. False when one of them failed.
bool report(std::ostream& out, const std::vector<Extension>& extensions);

}  // namespace vemo::cli

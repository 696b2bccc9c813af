// SPDX-License-Identifier: MIT
#include "vemo/rates_copy.h"

#include <sys/stat.h>

#include <utility>

#include "online/periodic_file_loader.h"
#include "platform/system.h"

namespace vemo {

std::optional<Date> ratesFetched(const std::string& url, const std::filesystem::path& caches) {
    Environment environment;
    environment.caches = caches;
    const std::filesystem::path folder = withDefaults(std::move(environment)).caches;
    struct stat status {};
    if (folder.empty() || ::stat(PeriodicFileLoader::cacheFile(folder, url).c_str(), &status) != 0) return std::nullopt;
    return Date(std::chrono::duration<double>(static_cast<double>(status.st_mtim.tv_sec)));
}

}  // namespace vemo

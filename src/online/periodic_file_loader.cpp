// SPDX-License-Identifier: MIT
#include "online/periodic_file_loader.h"

#include <optional>

#include "base/sha1.h"
#include "platform/file_io.h"

namespace vemo {

namespace {

constexpr std::size_t largestFile = std::size_t(16) << 20;
constexpr long ok = 200;

// Why an answer is no use, or nothing.
std::string problemOf(const HttpResponse& response, const PeriodicFileLoader::Validator& validator) {
    if (!response.error.empty()) return response.error;
    if (response.status != ok) return "HTTP status " + std::to_string(response.status);
    return validator(response.body);
}

}  // namespace

std::filesystem::path PeriodicFileLoader::cacheFile(const std::filesystem::path& caches, const std::string& url) {
    const std::string path = url.substr(0, url.find_first_of("?#"));
    return caches / (sha1Hex(url) + "-" + path.substr(path.rfind('/') + 1));
}

void PeriodicFileLoader::log(std::string_view message, std::string_view more) const {
    if (log_) log_(std::string(message) + url_ + std::string(more));
}

void PeriodicFileLoader::report(OnlineProblem::Kind kind, std::string message) const {
    if (report_) report_({kind, url_, std::move(message)});
}

void PeriodicFileLoader::start(const std::string& url, Handler handler, std::chrono::seconds interval) {
    url_ = url;
    handler_ = std::move(handler);
    cacheFile_ = caches_.empty() ? std::filesystem::path() : cacheFile(caches_, url);
    if (interval == std::chrono::seconds(0)) {
        log("Keeping to the copy of ");
        return loadCached();
    }
    loadCached();
    download();
    timer_ = scheduler_.every(interval, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->download();
    });
}

void PeriodicFileLoader::stop() {
    timer_ = nullptr;
    url_.clear();
    cacheFile_.clear();
    handler_ = nullptr;
}

void PeriodicFileLoader::loadCached() {
    if (url_.empty()) return;
    if (cacheFile_.empty()) {
        log("Processing data for ");
        const Handler handler = handler_;
        return handler(nullptr);
    }
    scheduler_.postBackground(
        [weak = weak_from_this(), file = cacheFile_, scheduler = scheduler_, token = pending_.begin()] {
            removeLeftovers(file);
            scheduler.postMain([weak, file, token, bytes = readFileAtMost(file, largestFile)] {
                const auto self = weak.lock();
                if (!self || self->cacheFile_ != file) return;
                self->log("Processing data for ");
                const Handler handler = self->handler_;  // which may stop the loader
                handler(bytes ? &*bytes : nullptr);
            });
        });
}

void PeriodicFileLoader::download() {
    if (url_.empty()) return;
    log("Started download ");
    client_.get(url_, [weak = weak_from_this(), file = cacheFile_, validator = validator_, scheduler = scheduler_,
                       token = pending_.begin()](const HttpResponse& response) {
        std::string problem = problemOf(response, validator);
        // An answer that can't be kept is still used, from memory.
        std::optional<std::string> unkept;
        if (problem.empty()) {
            std::error_code error;
            if (!file.empty()) std::filesystem::create_directories(file.parent_path(), error);
            if (file.empty() || !replaceFile(file, response.body)) unkept = response.body;
        }
        scheduler.postMain([weak, file, problem, token, unkept = std::move(unkept)] {
            const auto self = weak.lock();
            if (!self || self->url_.empty() || self->cacheFile_ != file) return;
            if (!problem.empty()) {
                self->log("Failed to download ", ", error:" + problem);
                return self->report(OnlineProblem::Kind::ratesNotFetched, problem);
            }
            self->log("Download finished for ");
            if (!unkept) return self->loadCached();
            self->log("The copy can't be written of ");
            self->report(OnlineProblem::Kind::ratesNotKept);
            self->log("Processing data for ");
            const Handler handler = self->handler_;  // which may stop the loader
            handler(&*unkept);
        });
    });
}

}  // namespace vemo

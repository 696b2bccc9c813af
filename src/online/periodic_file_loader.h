// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "online/pending_work.h"
#include "platform/http_client.h"
#include "platform/scheduler.h"
#include "vemo/environment.h"

namespace vemo {

// Keeps a copy of a remote file on disk and hands its bytes on: once at the start, from the copy of an earlier run, and
// after every download, which is repeated. What can't be fetched, or is not valid, leaves the copy as it is; what can't
// be kept is handed on from memory. Used on the main executor, where the handler runs too.
class PeriodicFileLoader : public std::enable_shared_from_this<PeriodicFileLoader> {
public:
    using Handler = std::function<void(const std::string* bytes)>;  // null when there is no copy
    // What is wrong with a file; empty for a good one. Runs on another thread.
    using Validator = std::function<std::string(std::string_view bytes)>;
    using Log = std::function<void(std::string_view)>;
    using Report = std::function<void(const OnlineProblem&)>;

    // `client` must outlive what the loader starts. Without a `caches` folder no copy is kept. `pending` counts the
    // reading and the downloads under way, until the handler has run.
    PeriodicFileLoader(Scheduler scheduler, HttpClient& client, std::filesystem::path caches, Validator validator,
                       Log log, Report report = {}, PendingWork pending = {})
        : scheduler_(std::move(scheduler)),
          client_(client),
          caches_(std::move(caches)),
          validator_(std::move(validator)),
          log_(std::move(log)),
          report_(std::move(report)),
          pending_(std::move(pending)) {}

    // Nothing is downloaded with an interval of zero.
    void start(const std::string& url, Handler handler, std::chrono::seconds interval);
    // After this the handler is not called any more.
    void stop();

    // The steps of `start`, but for the timer.
    void loadCached();
    void download();

    // The copy of a URL: its SHA-1 digest in hexadecimal, a hyphen, and its last path component.
    static std::filesystem::path cacheFile(const std::filesystem::path& caches, const std::string& url);

private:
    void log(std::string_view message, std::string_view more = "") const;
    void report(OnlineProblem::Kind kind, std::string message = "") const;

    Scheduler scheduler_;
    HttpClient& client_;
    std::filesystem::path caches_;
    Validator validator_;
    Log log_;
    Report report_;
    PendingWork pending_;
    std::string url_;
    std::filesystem::path cacheFile_;
    std::unique_ptr<Scheduler::Timer> timer_;
    Handler handler_;
};

}  // namespace vemo

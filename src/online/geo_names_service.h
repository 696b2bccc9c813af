// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/http_client.h"
#include "platform/scheduler.h"
#include "vemo/environment.h"

namespace vemo {

// Asks a server for the time zone of a place: GET endpoint?q=PLACE, answered with 200 and the identifier as plain text,
// with 204 for a place that has none, or with 503 when it is busy, after which it is asked again.
class GeoNamesService : public std::enable_shared_from_this<GeoNamesService> {
public:
    static constexpr int maxRetryCount = 4;

    using Completion = std::function<void(std::optional<std::string> zone)>;
    using Log = std::function<void(std::string_view)>;
    using Report = std::function<void(const OnlineProblem&)>;

    // The delay before the first retry doubles with each further one.
    GeoNamesService(Scheduler scheduler, std::shared_ptr<HttpClient> client, std::string endpoint, Log log,
                    Report report = {}, std::chrono::milliseconds firstDelay = std::chrono::seconds(1))
        : scheduler_(std::move(scheduler)),
          client_(std::move(client)),
          endpoint_(std::move(endpoint)),
          log_(std::move(log)),
          report_(std::move(report)),
          firstDelay_(firstDelay) {}

    // The completion runs once, on another thread, unless the service is gone by then.
    void request(const std::string& name, Completion completion, int attempt = 0);
    void log(const std::string& message) const;

private:
    void failed(const std::string& name, const std::string& message) const;
    void answer(const std::string& name, const Completion& completion, int attempt, const HttpResponse& response);

    Scheduler scheduler_;
    std::shared_ptr<HttpClient> client_;
    std::string endpoint_;
    Log log_;
    Report report_;
    std::chrono::milliseconds firstDelay_;
};

}  // namespace vemo

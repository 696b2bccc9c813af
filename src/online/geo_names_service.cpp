// SPDX-License-Identifier: MIT
#include "online/geo_names_service.h"

namespace vemo {

namespace {

constexpr long ok = 200;
constexpr long noContent = 204;
constexpr long unavailable = 503;

constexpr std::size_t longestZone = 100;  // bytes; a longer answer is no identifier

std::string_view trimmedBytes(std::string_view text) {
    constexpr std::string_view space = " \t\r\n\v\f";
    const std::size_t start = text.find_first_not_of(space);
    return start == text.npos ? std::string_view() : text.substr(start, text.find_last_not_of(space) + 1 - start);
}

}  // namespace

void GeoNamesService::log(const std::string& message) const {
    if (log_) log_(message);
}

void GeoNamesService::failed(const std::string& name, const std::string& message) const {
    if (report_) report_({OnlineProblem::Kind::placeNotFetched, name, message});
}

void GeoNamesService::request(const std::string& name, Completion completion, int attempt) {
    client_->get(
        HttpClient::withQuery(endpoint_, "q", name),
        [weak = weak_from_this(), name, completion = std::move(completion), attempt](const HttpResponse& response) {
            if (const auto self = weak.lock()) self->answer(name, completion, attempt, response);
        });
}

void GeoNamesService::answer(const std::string& name, const Completion& completion, int attempt,
                             const HttpResponse& response) {
    if (response.status == unavailable && attempt < maxRetryCount) {
        const auto delay = firstDelay_ * (1 << attempt);
        log("Service unavailable, retry in " +
            std::to_string(std::chrono::duration_cast<std::chrono::seconds>(delay).count()));
        scheduler_.postBackgroundAfter(delay, [weak = weak_from_this(), name, completion, attempt] {
            if (const auto self = weak.lock()) self->request(name, completion, attempt + 1);
        });
        return;
    }
    if (!response.error.empty()) {
        log("Request failed with error: " + response.error);
        failed(name, "did not answer: " + response.error);
        return completion(std::nullopt);
    }
    if (response.status == noContent) {
        log("Request succeded for " + name + ": no time zone");
        return completion(std::nullopt);
    }
    if (response.status != ok) {
        log("Request succeded, status code not expected: " + std::to_string(response.status));
        failed(name, "answered with status " + std::to_string(response.status));
        return completion(std::nullopt);
    }
    log("Request succeded for " + name + ": " + response.body.substr(0, longestZone));
    const std::string_view zone = trimmedBytes(response.body);
    completion(zone.empty() || zone.size() > longestZone ? std::nullopt : std::optional<std::string>(zone));
}

}  // namespace vemo

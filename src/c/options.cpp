// SPDX-License-Identifier: MIT
#include "c/options.h"

#include <chrono>

#include "c/failure.h"
#include "c/texts.h"
#include "session/online.h"

namespace {

using namespace vemo;
using c::Refusal;

constexpr int mostPrecision = 999;
constexpr std::int64_t latest = 253402300800000;    // the end of the year 9999, in milliseconds
constexpr std::int64_t earliest = -62135596800000;  // the beginning of the year 1

// Sets what is text, where it is of use: `problem` says what is wrong, and is empty otherwise.
template <class Check, class Set>
vemo_status setText(vemo_options* options, const char* text, Check problem, Set set) {
    return c::guardedStatus([&] {
        vemo_options& all = c::given(options, "options");
        const std::string value(c::givenText(text, VEMO_TO_NUL, "a setting"));
        if (const std::string wrong = problem(value); !wrong.empty())
            throw Refusal{VEMO_UNUSABLE, "'" + value + "' is no " + wrong};
        set(all, value);
    });
}

std::string folderProblem(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error) ? "" : "folder";
}

std::string urlProblem(const std::string& url) {
    return session::isUrl(url) ? "" : "URL";
}

vemo_status setUrl(vemo_options* options, const char* url, std::string Sources::*member) {
    return setText(options, url, urlProblem,
                   [&](vemo_options& all, const std::string& value) { all.environment.sources.*member = value; });
}

}  // namespace

vemo_options* vemo_options_create(void) {
    return c::guarded<vemo_options*>(nullptr, [] { return new vemo_options; });
}

void vemo_options_destroy(vemo_options* options) {
    c::guardedStatus([&] { delete options; });
}

vemo_status vemo_options_set_language(vemo_options* options, const char* code) {
    return setText(
        options, code,
        [](const std::string& value) { return std::string(isKnownLanguage(value) ? "" : "language with phrases"); },
        [](vemo_options& all, const std::string& value) { all.environment.language = value; });
}

vemo_status vemo_options_set_locale(vemo_options* options, const char* identifier) {
    return setText(
        options, identifier,
        [](const std::string& value) { return std::string(isKnownLocale(value) ? "" : "known locale"); },
        [](vemo_options& all, const std::string& value) { all.environment.locale = value; });
}

vemo_status vemo_options_set_time_zone(vemo_options* options, const char* name) {
    return setText(
        options, name,
        [](const std::string& value) { return std::string(isKnownTimeZone(value) ? "" : "known time zone"); },
        [](vemo_options& all, const std::string& value) { all.environment.timeZone = value; });
}

vemo_status vemo_options_set_precision(vemo_options* options, int digits) {
    return c::guardedStatus([&] {
        vemo_options& all = c::given(options, "options");
        if (digits < 0 || digits > mostPrecision) throw Refusal{VEMO_BAD_ARGUMENT, "digits are from 0 to 999"};
        all.precision = digits;
    });
}

vemo_status vemo_options_set_now(vemo_options* options, int64_t milliseconds) {
    return c::guardedStatus([&] {
        vemo_options& all = c::given(options, "options");
        if (milliseconds < earliest || milliseconds >= latest)
            throw Refusal{VEMO_BAD_ARGUMENT, "that is not in the years 1 to 9999"};
        const Date now{std::chrono::duration<double>(static_cast<double>(milliseconds) / 1000)};
        all.environment.clock = [now] { return now; };
    });
}

vemo_status vemo_options_set_extensions(vemo_options* options, const char* folder) {
    return setText(options, folder, folderProblem,
                   [](vemo_options& all, const std::string& value) { all.extensions = value; });
}

vemo_status vemo_options_set_caches(vemo_options* options, const char* folder) {
    return setText(options, folder, folderProblem,
                   [](vemo_options& all, const std::string& value) { all.environment.caches = value; });
}

vemo_status vemo_options_set_rates(vemo_options* options, const char* url) {
    return setUrl(options, url, &Sources::currencyRates);
}

vemo_status vemo_options_set_coins(vemo_options* options, const char* url) {
    return setUrl(options, url, &Sources::cryptoRates);
}

vemo_status vemo_options_set_places(vemo_options* options, const char* url) {
    return setUrl(options, url, &Sources::timeZones);
}

// SPDX-License-Identifier: MIT
#include "platform/http_client.h"

#define CURL_DISABLE_TYPECHECK
#include <curl/curl.h>
#undef curl_easy_setopt
#undef curl_easy_getinfo
#undef curl_multi_setopt
#include <dlfcn.h>

#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

#include "platform/signals_blocked.h"

namespace vemo {

namespace {

constexpr long mostRedirects = 5;
constexpr int longestWait = 60'000;  // milliseconds; a new request wakes the thread up

// The library, loaded with the first request: a program that makes none starts sooner. (Were it linked, `vemo -e 1`
// would take 17.3 ms of processor time instead of 13.2: LD_PRELOAD=libcurl.so.4 perf stat -r 20 vemo -e 1.)
struct CurlLibrary {
    decltype(&::curl_global_init) globalInit = nullptr;
    decltype(&::curl_easy_init) easyInit = nullptr;
    decltype(&::curl_easy_setopt) easySetopt = nullptr;
    decltype(&::curl_easy_getinfo) easyGetinfo = nullptr;
    decltype(&::curl_easy_cleanup) easyCleanup = nullptr;
    decltype(&::curl_easy_strerror) easyStrerror = nullptr;
    decltype(&::curl_multi_init) multiInit = nullptr;
    decltype(&::curl_multi_cleanup) multiCleanup = nullptr;
    decltype(&::curl_multi_add_handle) multiAddHandle = nullptr;
    decltype(&::curl_multi_remove_handle) multiRemoveHandle = nullptr;
    decltype(&::curl_multi_perform) multiPerform = nullptr;
    decltype(&::curl_multi_poll) multiPoll = nullptr;
    decltype(&::curl_multi_wakeup) multiWakeup = nullptr;
    decltype(&::curl_multi_info_read) multiInfoRead = nullptr;

    // False when the library, or a function of it, is missing.
    bool load() {
        void* handle = dlopen("libcurl.so.4", RTLD_NOW | RTLD_LOCAL);
        if (!handle) return false;
        bool complete = true;
        const auto find = [&]<class Function>(const char* name, Function& function) {
            function = reinterpret_cast<Function>(dlsym(handle, name));
            complete = complete && function != nullptr;
        };
        find("curl_global_init", globalInit);
        find("curl_easy_init", easyInit);
        find("curl_easy_setopt", easySetopt);
        find("curl_easy_getinfo", easyGetinfo);
        find("curl_easy_cleanup", easyCleanup);
        find("curl_easy_strerror", easyStrerror);
        find("curl_multi_init", multiInit);
        find("curl_multi_cleanup", multiCleanup);
        find("curl_multi_add_handle", multiAddHandle);
        find("curl_multi_remove_handle", multiRemoveHandle);
        find("curl_multi_perform", multiPerform);
        find("curl_multi_poll", multiPoll);
        find("curl_multi_wakeup", multiWakeup);
        find("curl_multi_info_read", multiInfoRead);
        return complete && globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    }
};

struct Transfer {
    HttpClient::Completion completion;
    HttpResponse response;
    std::size_t mostBytes = 0;
    bool tooLarge = false;

    static std::size_t receive(char* bytes, std::size_t size, std::size_t count, void* transfer) {
        auto& self = *static_cast<Transfer*>(transfer);
        if (size * count > self.mostBytes - self.response.body.size()) {
            self.tooLarge = true;
            return 0;
        }
        self.response.body.append(bytes, size * count);
        return size * count;
    }
};

struct Request {
    std::string url;
    HttpClient::Completion completion;
};

}  // namespace

struct HttpClient::State {
    explicit State(const Limits& bounds) : limits(bounds) {}

    const Limits limits;
    CurlLibrary curl;
    std::mutex mutex;  // guards what follows
    std::vector<Request> waiting;
    bool stopping = false;
    std::condition_variable called;
    CURLM* multi = nullptr;
    std::thread thread;                                    // used by the client's owner
    std::map<CURL*, std::unique_ptr<Transfer>> transfers;  // used by the thread

    // Tells the thread of a request or the end; under the lock.
    void wakeUp() {
        called.notify_all();
        if (multi) curl.multiWakeup(multi);
    }

    bool isStopping() {
        const std::lock_guard lock(mutex);
        return stopping;
    }

    void run() {
        if (!curl.load() || !openMulti()) return refuseAll();
        for (;;) {
            std::vector<Request> requests;
            {
                const std::lock_guard lock(mutex);
                if (stopping) break;
                requests.swap(waiting);
            }
            for (Request& request : requests) begin(std::move(request));
            int active = 0;
            curl.multiPerform(multi, &active);
            finish();
            curl.multiPoll(multi, nullptr, 0, longestWait, nullptr);
        }
        for (auto& [easy, transfer] : transfers) {
            curl.multiRemoveHandle(multi, easy);
            curl.easyCleanup(easy);
        }
        const std::lock_guard lock(mutex);
        curl.multiCleanup(std::exchange(multi, nullptr));
    }

    bool openMulti() {
        const std::lock_guard lock(mutex);
        multi = curl.multiInit();
        return multi != nullptr;
    }

    // Without the library every request fails.
    void refuseAll() {
        std::unique_lock lock(mutex);
        for (;;) {
            called.wait(lock, [&] { return stopping || !waiting.empty(); });
            if (stopping) return;
            const std::vector<Request> requests = std::exchange(waiting, {});
            lock.unlock();
            for (const Request& request : requests) request.completion({0, "", "no HTTP library (libcurl.so.4)"});
            lock.lock();
        }
    }

    void begin(Request request) {
        CURL* easy = curl.easyInit();
        if (!easy) return request.completion({0, "", "out of memory"});
        auto transfer = std::make_unique<Transfer>();
        transfer->completion = std::move(request.completion);
        transfer->mostBytes = limits.body;
        const bool secure = request.url.starts_with("https:");
        const auto set = [&](CURLoption option, auto value) { curl.easySetopt(easy, option, value); };
        set(CURLOPT_URL, request.url.c_str());
        set(CURLOPT_PROTOCOLS_STR, "http,https");
        set(CURLOPT_REDIR_PROTOCOLS_STR, secure ? "https" : "http,https");
        set(CURLOPT_FOLLOWLOCATION, 1L);
        set(CURLOPT_MAXREDIRS, mostRedirects);
        set(CURLOPT_SSL_VERIFYPEER, 1L);
        set(CURLOPT_SSL_VERIFYHOST, 2L);
        if (!limits.authorities.empty()) set(CURLOPT_CAINFO, limits.authorities.c_str());
        set(CURLOPT_ACCEPT_ENCODING, "");
        set(CURLOPT_QUICK_EXIT, 1L);  // the end does not wait for names being resolved
        set(CURLOPT_NOSIGNAL, 1L);
        set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limits.connect.count()));
        set(CURLOPT_TIMEOUT_MS, static_cast<long>(limits.total.count()));
        set(CURLOPT_USERAGENT, "vemo/" VEMO_VERSION);
        set(CURLOPT_WRITEFUNCTION, &Transfer::receive);
        set(CURLOPT_WRITEDATA, static_cast<void*>(transfer.get()));
        transfers.emplace(easy, std::move(transfer));
        curl.multiAddHandle(multi, easy);
    }

    void finish() {
        int left = 0;
        while (const CURLMsg* message = curl.multiInfoRead(multi, &left)) {
            if (message->msg != CURLMSG_DONE) continue;
            CURL* easy = message->easy_handle;
            const CURLcode code = message->data.result;
            const auto transfer = std::move(transfers.extract(easy).mapped());
            HttpResponse& response = transfer->response;
            if (code == CURLE_OK) {
                curl.easyGetinfo(easy, CURLINFO_RESPONSE_CODE, &response.status);
            } else {
                response.body.clear();
                response.error = transfer->tooLarge ? "the answer is too large" : curl.easyStrerror(code);
            }
            curl.multiRemoveHandle(multi, easy);
            curl.easyCleanup(easy);
            if (!isStopping()) transfer->completion(std::move(response));
        }
    }
};

HttpClient::HttpClient(const Limits& limits) : state_(std::make_shared<State>(limits)) {}

HttpClient::~HttpClient() {
    if (!state_->thread.joinable()) return;
    {
        const std::lock_guard lock(state_->mutex);
        state_->stopping = true;
        state_->wakeUp();
    }
    if (state_->thread.get_id() == std::this_thread::get_id())
        state_->thread.detach();
    else
        state_->thread.join();
}

void HttpClient::get(const std::string& url, Completion completion) {
    const std::lock_guard lock(state_->mutex);
    state_->waiting.push_back({url, std::move(completion)});
    state_->wakeUp();
    if (state_->thread.joinable()) return;
    const SignalsBlocked blocked;
    state_->thread = std::thread([state = state_] { state->run(); });
}

std::string HttpClient::withQuery(const std::string& url, const std::string& name, const std::string& value) {
    std::string result = url + (url.find('?') == std::string::npos ? '?' : '&') + name + '=';
    for (const char c : value) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                           c == '_' || c == '.' || c == '~';
        if (plain) {
            result += c;
        } else {
            constexpr char digits[] = "0123456789ABCDEF";
            result += {'%', digits[byte >> 4], digits[byte & 15]};
        }
    }
    return result;
}

}  // namespace vemo

// SPDX-License-Identifier: MIT
// The language server as an editor sees it: a process, a pipe, and the time until results are there.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <vector>

#include "lsp/client.h"

namespace {

using namespace vemo::test;

constexpr std::size_t lines = 10000;

std::string document() {
    std::string text = "1\n";
    for (std::size_t i = 2; i < lines; ++i) {
        const std::string number = std::to_string(i);
        text +=
            i % 5 == 0 ? "x" + number + " = " + number + " km in m\n" : "item " + number + ": $" + number + " * 3\n";
    }
    return text + "sum\n";
}

void edit(LspClient& client, int version) {
    const nlohmann::json change{{"range", rangeOf(0, 0, 0, 1)}, {"text", std::to_string(version % 10)}};
    client.change(someUri, nlohmann::json::array({change}), version);
}

// Milliseconds from the edit to the answer, the median of a hundred.
double latency(LspClient& client, std::size_t first, std::size_t last, int& version) {
    std::vector<double> times;
    for (int i = 0; i < 100; ++i) {
        const auto start = std::chrono::steady_clock::now();
        edit(client, ++version);
        client.request("textDocument/inlayHint",
                       {{"textDocument", documentNamed(someUri)}, {"range", rangeOf(first, 0, last, 0)}});
        times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

double residentMebibytes(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/statm");
    double total = 0, resident = 0;
    file >> total >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

}  // namespace

int main() {
    LspClient client;
    client.initialize();
    client.open(someUri, document());
    client.hints(someUri, 1);
    int version = 1;
    std::printf("edit to hints of 50 lines    %6.2f ms\n", latency(client, 0, 50, version));
    std::printf("edit to hints of all lines   %6.2f ms\n", latency(client, 0, lines, version));
    for (const int edits : {1000, 10000}) {
        while (version < edits) {
            edit(client, ++version);
            client.hints(someUri, 1);
        }
        std::printf("memory after %5d edits     %6.1f MiB\n", edits, residentMebibytes(client.process()));
    }
    return 0;
}

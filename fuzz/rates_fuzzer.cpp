// SPDX-License-Identifier: MIT
// Whatever bytes a file of rates holds, reading it ends with usable rates or with a reason; and the rates written out
// again are read as the same.

#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "online/rates_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vemo;
    const auto rates = parseRates({reinterpret_cast<const char*>(data), size});
    if (!rates) {
        if (rates.failure().message.empty()) std::abort();
        return 0;
    }
    if (rates->rates.empty()) std::abort();
    nlohmann::json written;
    for (const auto& [code, rate] : rates->rates) {
        const double amount = rate.toDouble();
        if (code.empty() || !(amount >= 1e-12 && amount <= 1e15)) std::abort();
        written["rates"][toUtf8(code)] = amount;
    }
    const auto again = parseRates(written.dump());
    if (!again || !(*again == *rates)) std::abort();
    return 0;
}

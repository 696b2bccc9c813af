// SPDX-License-Identifier: MIT
#include "support/calculators.h"

namespace vemo::test {

Environment fixedEnvironment() {
    Environment environment;
    environment.locale = "en_US";
    environment.language = "en";
    environment.timeZone = "UTC";
    environment.clock = [] { return Date(std::chrono::duration<double>(1795525200)); };
    environment.trace = [](std::string_view) {};
    return environment;
}

std::unique_ptr<Calculator> newCalculator(const Environment& environment) {
    Calculator::Config config;
    config.testMode = true;
    auto calculator = std::make_unique<Calculator>(config, environment);
    calculator->initialize();
    return calculator;
}

std::vector<std::string> results(std::string_view document) {
    static const auto calculator = newCalculator();
    Context context;
    std::vector<std::string> texts;
    for (const LineResultPointer& line : calculator->calculate(utf16(document), context).lines)
        texts.push_back(utf8(line->formattedValue().regular.value_or(u"")));
    return texts;
}

std::string result(std::string_view document) { return results(document).back(); }

}  // namespace vemo::test

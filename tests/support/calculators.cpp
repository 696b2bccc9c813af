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

std::string plainSpaces(std::string text) {
    for (const std::string_view space : {"\u202f", "\u00a0"})
        for (std::size_t i; (i = text.find(space)) != text.npos;) text.replace(i, space.size(), " ");
    return text;
}

namespace {

std::vector<std::string> resultsOf(Calculator& calculator, std::string_view document) {
    Context context;
    std::vector<std::string> texts;
    for (const LineResultPointer& line : calculator.calculate(utf16(document), context).lines)
        texts.push_back(plainSpaces(utf8(line->formattedValue().regular.value_or(u""))));
    return texts;
}

}  // namespace

std::vector<std::string> results(std::string_view document) {
    static const auto calculator = newCalculator();
    return resultsOf(*calculator, document);
}

std::vector<std::string> results(std::string_view document, const Environment& environment) {
    return resultsOf(*newCalculator(environment), document);
}

std::string result(std::string_view document) {
    return results(document).back();
}

}  // namespace vemo::test

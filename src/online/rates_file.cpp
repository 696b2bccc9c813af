// SPDX-License-Identifier: MIT
#include "online/rates_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/text.h"

namespace vemo {

namespace {

// A rate outside of these is a mistake: results would overflow or vanish.
constexpr double smallestRate = 1e-12;
constexpr double largestRate = 1e15;
constexpr std::size_t largestFile = std::size_t(16) << 20;
constexpr std::size_t longestCode = 16;  // bytes
constexpr std::size_t mostRates = 100'000;

// Takes the members of "rates", two levels deep, and keeps nothing else in memory.
class RatesHandler : public nlohmann::json_sax<nlohmann::json> {
public:
    CurrencyRatesContainer container;
    bool found = false;
    bool tooMany = false;
    bool outOfRange = false;  // a number is

    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t value) override { return rate(static_cast<double>(value)); }
    bool number_unsigned(number_unsigned_t value) override { return rate(static_cast<double>(value)); }
    // Doubles, whose 16 digits a file's rates have; a float would show in the cents of large amounts.
    bool number_float(number_float_t value, const string_t&) override { return rate(value); }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool start_object(std::size_t) override {
        if (++depth_ != 2 || key_ != "rates") return true;
        container.rates.clear();
        inRates_ = found = true;
        return true;
    }
    bool end_object() override {
        if (depth_-- == 2) inRates_ = false;
        if (depth_ <= 1) key_.clear();
        return true;
    }
    bool start_array(std::size_t) override {
        ++depth_;
        return true;
    }
    bool end_array() override {
        --depth_;
        return true;
    }
    bool key(string_t& key) override {
        if (depth_ <= 2) key_ = std::move(key);
        return true;
    }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error) override {
        constexpr int numberOverflow = 406;
        outOfRange = error.id == numberOverflow;
        return false;
    }

private:
    bool rate(double value) {
        if (!inRates_ || depth_ != 2) return true;
        if (!(value >= smallestRate && value <= largestRate) || key_.empty() || key_.size() > longestCode) return true;
        if (container.rates.size() >= mostRates) {
            tooMany = true;
            return false;
        }
        container.rates.insert_or_assign(toUtf16(key_), DecimalNumber::fromDouble(value));
        return true;
    }

    std::size_t depth_ = 0;
    std::string key_;
    bool inRates_ = false;
};

// The text with null in place of each number that no double holds: it costs its rate, not the file.
std::string withoutHugeNumbers(std::string_view json) {
    const auto isOfNumber = [&](std::size_t i) {
        return i < json.size() && std::string_view("+-.eE0123456789").find(json[i]) != std::string_view::npos;
    };
    std::string result;
    result.reserve(json.size());
    for (std::size_t i = 0, end = 0; i < json.size(); i = end) {
        end = i + 1;
        if (json[i] == '"') {
            while (end < json.size() && json[end] != '"') end += json[end] == '\\' ? 2 : 1;
            end = std::min(end + 1, json.size());
        } else if (isOfNumber(i)) {
            while (isOfNumber(end)) ++end;
            RatesHandler alone;
            if (!nlohmann::json::sax_parse(json.substr(i, end - i), &alone) && alone.outOfRange) {
                result += "null";
                continue;
            }
        }
        result.append(json, i, end - i);
    }
    return result;
}

}  // namespace

Result<CurrencyRatesContainer> parseRates(std::string_view json) {
    if (json.size() > largestFile) return Failure{"is larger than 16 MiB"};
    RatesHandler handler;
    bool parsed = nlohmann::json::sax_parse(json, &handler);
    if (!parsed && handler.outOfRange) {
        handler = RatesHandler();
        parsed = nlohmann::json::sax_parse(withoutHugeNumbers(json), &handler);
    }
    if (!parsed) return Failure{handler.tooMany ? "has too many rates" : "not JSON"};
    if (!handler.found) return Failure{"has no object \"rates\""};
    if (handler.container.rates.empty()) return Failure{"has no usable rates"};
    return std::move(handler.container);
}

}  // namespace vemo

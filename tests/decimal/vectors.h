// SPDX-License-Identifier: MIT
#pragma once

#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "vemo/decimal_number.h"

namespace vemo {

// A line of vectors.txt, described in generate_vectors.py.
struct Vector {
    std::string operation, mode, scale, a, b, expected, status;
    std::string line;
};

inline std::vector<Vector> readVectors() {
    std::ifstream file(std::string(VEMO_TEST_DATA_DIR) + "/decimal/vectors.txt");
    std::vector<Vector> vectors;
    Vector v;
    while (std::getline(file, v.line)) {
        if (v.line.empty() || v.line[0] == '#') continue;
        std::istringstream(v.line) >> v.operation >> v.mode >> v.scale >> v.a >> v.b >> v.expected >> v.status;
        vectors.push_back(v);
    }
    return vectors;
}

inline std::optional<RoundingMode> modeNamed(const std::string& name) {
    if (name == "plain") return RoundingMode::plain;
    if (name == "down") return RoundingMode::down;
    if (name == "up") return RoundingMode::up;
    if (name == "bankers") return RoundingMode::bankers;
    return std::nullopt;
}

inline std::string statusName(DecimalStatus status) {
    switch (status) {
        case DecimalStatus::exact:
            return "exact";
        case DecimalStatus::lossOfPrecision:
            return "lossOfPrecision";
        case DecimalStatus::underflow:
            return "underflow";
        case DecimalStatus::overflow:
            return "overflow";
        case DecimalStatus::divideByZero:
            break;
    }
    return "divideByZero";
}

}  // namespace vemo

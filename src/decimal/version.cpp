// SPDX-License-Identifier: MIT
#include "vemo/mx_decimal.h"

#ifndef VEMO_VERSION
#define VEMO_VERSION "0.1.0"
#endif

namespace {

// "major.minor…" as a number.
constexpr double versionNumber(const char* text) {
    double number = 0;
    double unit = 1;
    bool fraction = false;
    for (; (*text >= '0' && *text <= '9') || (*text == '.' && !fraction); ++text) {
        if (*text == '.') {
            fraction = true;
            continue;
        }
        number = number * 10 + (*text - '0');
        if (fraction) unit *= 10;
    }
    return number / unit;
}

}  // namespace

const double VemoEngineVersionNumber = versionNumber(VEMO_VERSION);
const unsigned char VemoEngineVersionString[] = VEMO_VERSION;

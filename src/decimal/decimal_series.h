// SPDX-License-Identifier: MIT
#pragma once

#include "decimal/decimal_math.h"
#include "decimal/decimal_power.h"

// What the power series of the mathematical functions share.
namespace vemo {

// number! for number up to 51, the last one that a series divides by.
const DecimalNumber& seriesFactorial(unsigned number);

inline DecimalNumber smallInteger(unsigned value) {
    return DecimalNumber::fromUInt64(value);
}

// Adds to `sum` the terms x^n / divisor(n) for n = first, first + 2, …, last; alternating ones are
// subtracted first. A term that fails in the way `stop` names ends the series and does not count.
enum class SeriesSign { same, alternating };
enum class SeriesStop { never, onFailure, onUnderflow };

template <class Divisor>
DecimalNumber sumSeries(DecimalNumber sum, const DecimalNumber& x, unsigned first, unsigned last, SeriesSign sign,
                        SeriesStop stop, Divisor divisor) {
    PowerSequence powers(x, first);
    bool negative = sign == SeriesSign::alternating;
    for (unsigned n = first; n <= last && !sum.notANumber(); n += 2) {
        DecimalStatus powerStatus;
        DecimalStatus status;
        const DecimalNumber power = powers.current(mxBehavior, &powerStatus);
        const DecimalNumber term = power.dividing(divisor(n), mxBehavior, &status);
        const auto reports = [&](DecimalStatus what) { return powerStatus == what || status == what; };
        if (stop != SeriesStop::never && reports(DecimalStatus::underflow)) break;
        if (stop == SeriesStop::onFailure &&
            (reports(DecimalStatus::overflow) || reports(DecimalStatus::divideByZero))) {
            break;
        }
        sum = negative ? mxSubtract(sum, term) : mxAdd(sum, term);
        if (sign == SeriesSign::alternating) negative = !negative;
        if (n < last) powers.advance();
    }
    return sum;
}

}  // namespace vemo

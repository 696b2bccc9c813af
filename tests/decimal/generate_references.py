#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes references.txt: the decimal functions on grids, to 60 digits.

Each line is: function a b reference. References come from Python's decimal module and series at 450 digits;
"NaN" stands where the function has no value. Grids hold the ends of each domain, tiny, huge and negative arguments.
"""
import decimal
import fractions
import math
import pathlib
import random
from decimal import Decimal

decimal.setcontext(decimal.Context(prec=450, rounding=decimal.ROUND_HALF_EVEN, Emin=-999999, Emax=999999,
                                   traps=[decimal.InvalidOperation, decimal.DivisionByZero]))
shown = decimal.Context(prec=60, rounding=decimal.ROUND_HALF_EVEN, Emin=-999999, Emax=999999)
source = random.Random(15)
LARGEST = Decimal(10**38 - 1).scaleb(127)
NAN = Decimal("NaN")


def series(first, ratio):
    """first + first × ratio(1) + …, summed until the terms vanish."""
    total = term = first
    n = 1
    while term != 0 and term.adjusted() > total.adjusted() - 445:
        term *= ratio(n)
        total += term
        n += 1
    return total


def inverse_arctangent(n):
    return series(1 / Decimal(n), lambda k: -Decimal(2 * k - 1) / ((2 * k + 1) * n * n))


PI = 4 * (4 * inverse_arctangent(5) - inverse_arctangent(239))


def sine(x):
    x = x.remainder_near(2 * PI)
    return series(x, lambda n: -x * x / (2 * n * (2 * n + 1)))


def cosine(x):
    return sine(PI / 2 - x.remainder_near(2 * PI))


def upright(x):
    return round(cosine(x), 34) == 0


def arctangent(x):
    if abs(x) > 1:
        return (PI / 2).copy_sign(x) - arctangent(1 / x)
    if abs(x) > Decimal("0.05"):
        return 2 * arctangent(x / (1 + (1 + x * x).sqrt()))
    return series(x, lambda k: -x * x * (2 * k - 1) / (2 * k + 1))


def arcsine(x):
    if abs(x) > 1:
        return NAN
    return (PI / 2).copy_sign(x) if abs(x) == 1 else arctangent(x / (1 - x * x).sqrt())


def hyperbolic_sine(x):
    if abs(x) < 1:
        return series(x, lambda n: x * x / (2 * n * (2 * n + 1)))
    return (x.exp() - (-x).exp()) / 2


def hyperbolic_cosine(x):
    return (x.exp() + (-x).exp()) / 2


def inverse_hyperbolic_tangent(x):
    if abs(x) >= 1:
        return NAN
    if abs(x) < Decimal("0.01"):
        return series(x, lambda k: x * x * (2 * k - 1) / (2 * k + 1))
    return ((1 + x) / (1 - x)).ln() / 2


def inverse_hyperbolic_sine(x):
    return NAN if abs(x) > 1 else inverse_hyperbolic_tangent(x / (1 + x * x).sqrt())


def inverse_hyperbolic_cosine(x):
    return (x + (x * x - 1).sqrt()).ln() if x >= 1 else NAN


def positive(x, function):
    return function(x) if x > 0 else NAN


def bernoulli(count):
    numbers = [fractions.Fraction(1)]
    for m in range(1, count + 1):
        numbers.append(-sum(math.comb(m + 1, k) * numbers[k] for k in range(m)) / (m + 1))
    return numbers


BERNOULLI = bernoulli(120)


def factorial(x):
    if x < Decimal("-0.5"):
        return -PI / (sine(PI * x) * factorial(-1 - x))
    divisor = Decimal(1)
    while x < 150:  # where Stirling's series has all the digits asked for
        x += 1
        divisor *= x
    y = x + 1
    logarithm = (y - Decimal("0.5")) * y.ln() - y + (2 * PI).ln() / 2
    for k in range(1, 60):
        b = BERNOULLI[2 * k]
        logarithm += Decimal(b.numerator) / b.denominator / (2 * k * (2 * k - 1)) / y ** (2 * k - 1)
    return logarithm.exp() / divisor


def power(base, exponent):
    if exponent == exponent.to_integral_value():
        sign = -1 if base < 0 and exponent % 2 != 0 else 1
        return sign * (abs(base).ln() * exponent).exp() if base != 0 else NAN
    return (base.ln() * exponent).exp() if base > 0 else NAN


def inverse(function):
    return lambda x: NAN if x == 0 or function(x).is_nan() or function(x) == 0 else 1 / function(x)


def of_inverse(function):
    return lambda x: NAN if x == 0 else function(1 / x)


def decimals(*texts):
    return [Decimal(t) for t in texts]


def either_sign(numbers):
    return [n for m in numbers for n in (m, -m)]


def random_numbers(low, high, count=12):
    """Of 38 digits, the exponents evenly spread."""
    return [Decimal(source.randrange(10**37, 10**38)).scaleb(source.randint(low, high) - 38) for _ in range(count)]


ONE_UP, ONE_DOWN = Decimal(1) + Decimal("1e-37"), Decimal(1) - Decimal("1e-38")
TINY = decimals("1e-128", "3e-64", "7e-38", "1e-20", "1.1e-20", "1e-5")
HUGE = [LARGEST] + decimals("1e127", "1e40", "12345678901234567890123456789012345678", "1e16")
ANGLES = either_sign(TINY + HUGE + decimals("0.5", "1", "1.5", "3", "5", "20", "1e3", "6.2831853071795864769")
                     + [+Decimal(str(PI * k / 2)[:38]) for k in (1, 2, 3, 4, 5)] + random_numbers(-3, 165))
SINES = either_sign(TINY + decimals("0.1", "0.5", "0.7071067811865475244", "0.999") + [ONE_DOWN, Decimal(1), ONE_UP]
                    + random_numbers(-4, 0))
AREAS = either_sign(TINY + decimals("0.3", "1", "2", "9.99", "60", "290", "379") + random_numbers(-4, 2))
POSITIVES = TINY + HUGE + decimals("0.3", "0.4", "0.5", "1", "1.5", "2", "10", "1000") + [ONE_UP, ONE_DOWN] \
    + random_numbers(-90, 165, 20)
OUTSIDE = either_sign([1 / Decimal(3), Decimal(1), ONE_UP, Decimal(2), Decimal("1e30"), LARGEST]
                      + random_numbers(1, 30)) + decimals("0")

UNARY = {
    "sin": (sine, ANGLES), "cos": (cosine, ANGLES), "csc": (inverse(sine), ANGLES), "sec": (inverse(cosine), ANGLES),
    "tan": (lambda x: NAN if upright(x) else sine(x) / cosine(x), ANGLES),
    "cot": (lambda x: NAN if upright(x) else cosine(x) / sine(x), ANGLES),
    "asin": (arcsine, SINES), "acos": (lambda x: PI / 2 - arcsine(x), SINES), "atan": (arctangent, ANGLES),
    "asec": (of_inverse(lambda x: PI / 2 - arcsine(x)), OUTSIDE), "acsc": (of_inverse(arcsine), OUTSIDE),
    "acot": (lambda x: PI / 2 - arctangent(x), ANGLES),
    "sinh": (hyperbolic_sine, AREAS), "cosh": (hyperbolic_cosine, AREAS),
    "tanh": (lambda x: hyperbolic_sine(x) / hyperbolic_cosine(x), AREAS),
    "csch": (inverse(hyperbolic_sine), AREAS), "sech": (inverse(hyperbolic_cosine), AREAS),
    "coth": (inverse(lambda x: hyperbolic_sine(x) / hyperbolic_cosine(x)), AREAS),
    "asinh": (inverse_hyperbolic_sine, SINES), "acosh": (inverse_hyperbolic_cosine, POSITIVES),
    "atanh": (inverse_hyperbolic_tangent, SINES), "acsch": (of_inverse(inverse_hyperbolic_sine), OUTSIDE),
    "asech": (of_inverse(inverse_hyperbolic_cosine), SINES), "acoth": (of_inverse(inverse_hyperbolic_tangent), OUTSIDE),
    "sqrt": (Decimal.sqrt, POSITIVES), "ln": (Decimal.ln, POSITIVES), "log10": (Decimal.log10, POSITIVES),
    "factorial": (factorial, either_sign(decimals("0.5", "1e-30", "0.999999999999", "1.5", "20.1", "50.5"))
                  + decimals("103.9", "-1.0000000001", "-0.9999999999", "-70.3") + random_numbers(-2, 2)
                  + decimals("5", "49", "77", "100", "103", "104")),
}
BINARY = {
    "nthRoot": (lambda a, b: (a.ln() / b).exp(),
                [(a, Decimal(b)) for a in POSITIVES for b in ("3", "5", "-2", "1000", "2.5")]),
    "power": (power, [(a, Decimal(b)) for a in POSITIVES[:24] for b in ("-1", "0.5", "-0.3", "-7", "1.0000001")]
              + [(Decimal("-1.5"), Decimal(-55)), (Decimal(2), Decimal(-55)), (Decimal(2), Decimal("-300.25")),
                 (Decimal("-2"), Decimal("0.5")), (ONE_UP, Decimal("1e38") + 1), (ONE_DOWN, Decimal("123e37"))]),
    "nthLog": (lambda a, b: a.ln() / b.ln(), [(a, b) for a in POSITIVES[::2] for b in (Decimal(2), ONE_UP, LARGEST)]),
    "mod": (lambda a, b: a - b * (a / b).to_integral_value(decimal.ROUND_FLOOR),
            [(a, Decimal(b)) for a in either_sign(HUGE + decimals("7.5", "1e-128", "0.1"))
             for b in ("7", "-7", "0.3", "1e-20", "-12345678901234567890123456789012345678")]),
}


def text(number):
    if number.is_nan():
        return "NaN"
    if number == 0:
        return "0"
    sign, digits, exponent = number.normalize(shown).as_tuple()
    return f"{'-' if sign else ''}{''.join(map(str, digits))}e{exponent}"


def representable(result):
    """Too large is not-a-number; what is too small rounds to zero, which no reference needs to say."""
    return NAN if not result.is_nan() and abs(result) > LARGEST else result


def main():
    lines = [f"{name} {text(a)} 0 {text(representable(function(a)))}"
             for name, (function, grid) in UNARY.items() for a in grid]
    lines += [f"{name} {text(a)} {text(b)} {text(representable(function(a, b)))}"
              for name, (function, grid) in BINARY.items() for a, b in grid]
    path = pathlib.Path(__file__).with_name("references.txt")
    path.write_text("# function a b reference; written by generate_references.py\n" + "\n".join(lines) + "\n",
                    encoding="utf-8")
    print(f"{len(lines)} lines")


if __name__ == "__main__":
    main()

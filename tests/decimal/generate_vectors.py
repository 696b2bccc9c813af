#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes vectors.txt: decimal operations and their results from Python's decimal module.

Each line is: operation mode scale a b expected status. The exact result comes from arithmetic at a precision
that drops nothing which could matter, then one quantize.
"""
import decimal
import pathlib
import random
from decimal import Decimal

PRECISION = 6000  # digits: exact for sums, products and the powers below; far past any tie for quotients
DIGITS, SMALLEST, LARGEST = 38, -128, 127
MODES = {"plain": decimal.ROUND_HALF_UP, "down": decimal.ROUND_FLOOR, "up": decimal.ROUND_CEILING,
         "bankers": decimal.ROUND_HALF_EVEN}
SCALES = ["none", 38, 0, 2, 5, 20, 40, 128, -3]

context = decimal.Context(prec=PRECISION, rounding=decimal.ROUND_DOWN, Emin=-999999, Emax=999999,
                          traps=[decimal.InvalidOperation])
decimal.setcontext(context)
source = random.Random(38)


def rounded(exact, mode, scale):
    """The representable number nearest in the mode's sense, and the status."""
    if exact == 0:
        return Decimal(0), "exact"
    quantum = max(exact.adjusted() + 1 - DIGITS, SMALLEST)
    if scale != "none":
        quantum = max(quantum, -scale)
    result = exact
    if exact.as_tuple().exponent < quantum:
        result = exact.quantize(Decimal((0, (1,), quantum)), rounding=MODES[mode])
    if result != 0:
        result = result.normalize()
        if result.adjusted() > LARGEST + DIGITS - 1:
            return Decimal("NaN"), "overflow"
        assert result.as_tuple().exponent >= SMALLEST and len(result.as_tuple().digits) <= DIGITS
    if exact.adjusted() < SMALLEST:
        return result, "underflow"
    return result, "exact" if result == exact else "lossOfPrecision"


def text(number):
    if number.is_nan():
        return "NaN"
    sign, digits, exponent = number.as_tuple()
    return f"{'-' if sign else ''}{''.join(map(str, digits))}e{exponent}"


def exact_result(operation, a, b):
    if operation == "add":
        return a + b
    if operation == "subtract":
        return a - b
    if operation == "multiply":
        return a * b
    if operation == "raise":
        return a ** int(b)
    if operation == "round":
        return a
    assert operation == "divide"
    return None if b == 0 else a / b


def line(operation, mode, scale, a, b):
    exact = exact_result(operation, a, b)
    if exact is None:
        result, status = Decimal("NaN"), "divideByZero"
    else:
        result, status = rounded(exact, mode, scale)
    return f"{operation} {mode} {scale} {text(a)} {text(b)} {text(result)} {status}"


def any_number(digits=None, low=SMALLEST, high=LARGEST):
    count = digits or source.choice([1, 2, 3, 8, 18, 19, 20, 30, 37, 38, 38])
    kind = source.random()
    if kind < 0.7:
        mantissa = source.randrange(10 ** (count - 1), 10 ** count)
    elif kind < 0.8:
        mantissa = 10 ** count - source.randrange(1, 3)
    elif kind < 0.9:
        mantissa = 10 ** (count - 1) + source.randrange(0, 3)
    else:
        mantissa = 2 ** source.choice([63, 64, 126]) + source.randrange(-1, 2)
    sign = source.choice([0, 1])
    return Decimal((sign, tuple(map(int, str(mantissa))), source.randint(low, high)))


def near_by(a, spread):
    low = max(SMALLEST, a.as_tuple().exponent - spread)
    high = min(LARGEST, a.as_tuple().exponent + spread)
    return any_number(None, low, high)


def mode_and_scale():
    return source.choice(list(MODES)), source.choice(SCALES[:2] * 3 + SCALES)


def arithmetic():
    for _ in range(350):
        for operation in ("add", "subtract"):
            a = any_number()
            yield line(operation, *mode_and_scale(), a, near_by(a, source.choice([0, 3, 38, 39, 76, 77, 120])))
        a = any_number(None, -60, 60)
        b = any_number(None, -60, 60)
        yield line("multiply", *mode_and_scale(), a, b)
        yield line("divide", *mode_and_scale(), a, b)
        yield line("divide", *mode_and_scale(), any_number(None, -30, 30), Decimal(source.randrange(1, 1000)))
        yield line("multiply", *mode_and_scale(), any_number(), any_number())


def deceptive_quotients():
    """Quotients that seem exact, or a tie, until long after the last digit kept."""
    found = 0
    while found < 80:
        a, b = (Decimal(source.randrange(10 ** 37, 10 ** 38)) for _ in range(2))
        digits = (a / b).as_tuple().digits
        if digits[38:40] in ((0, 0), (5, 0)):
            found += 1
            for mode in MODES:
                yield line("divide", mode, "none", a, source.choice([b, -b]))


def boundaries():
    """Exact ties and their neighbours, in each mode and with both signs."""
    largest = Decimal(10 ** DIGITS - 1)
    one = Decimal(1)
    for mode in MODES:
        for sign in (1, -1):
            for unit in (1, 2):  # an even and an odd last digit
                for tail in ("0.5", "0.4999999999999999999999999999999999999",
                             "0.5000000000000000000000000000000000001", "1e-60", "1e-128", "0.25", "0.75"):
                    whole = sign * (Decimal(10 ** 37) + unit)
                    yield line("add", mode, "none", whole, sign * Decimal(tail))
                    yield line("subtract", mode, "none", whole, sign * Decimal(tail))
            for value in ("0.5", "1.5", "2.5", "0.499", "0.501", "0.05", "1e-128", "0.95", "99.995", "7"):
                for scale in (0, 1, 2, 38, -1, -2, -130):
                    yield line("round", mode, scale, sign * Decimal(value), Decimal(0))
            for a, b in ((1, 3), (2, 3), (1, 8), (5, 2), (10 ** 37 + 1, 2), (10 ** 38 - 1, 2), (2 * 10 ** 37 + 1, 4),
                         (1, 7 * 10 ** 30), (10 ** 38 - 1, 10 ** 19 - 1), (10 ** 38 - 1, 10 ** 19 + 1), (6, 3),
                         (10 ** 38 - 2, 10 ** 38 - 1), (1, 10 ** 38 - 1), (10 ** 18, 3 * 10 ** 18 + 1)):
                for scale in ("none", 38, 3):
                    yield line("divide", mode, scale, sign * Decimal(a), Decimal(b))
            # The smallest exponent.
            for coefficient in (1, 4, 5, 6, 15, 25, 99, 149, 150, 151):
                tiny = sign * Decimal((0, tuple(map(int, str(coefficient))), -128))
                for scale in ("none", 128, 38):
                    yield line("divide", mode, scale, tiny, Decimal(100))
                    yield line("multiply", mode, scale, tiny, Decimal("0.01"))
                    yield line("multiply", mode, scale, tiny, tiny)
            # The largest number and what lies beyond.
            top = sign * largest.scaleb(LARGEST)
            for step in ("1e127", "5e126", "4.9e126", "1e-128", "9e126"):
                yield line("add", mode, "none", top, sign * Decimal(step))
                yield line("subtract", mode, "none", top, sign * Decimal(step))
            yield line("multiply", mode, "none", top, Decimal(10))
            yield line("multiply", mode, "none", sign * Decimal("1e127"), Decimal("1e37"))
            yield line("multiply", mode, "none", sign * Decimal("1e127"), Decimal("1e38"))
            yield line("divide", mode, 38, sign * one, Decimal(0))
            # Whatever was scaled away must still tell a difference from a round number.
            yield line("subtract", mode, "none", sign * Decimal("1e100"), sign * Decimal("1e-128"))
            yield line("add", mode, "none", sign * Decimal("1e100"), sign * Decimal("1e-128"))
            yield line("subtract", mode, "none", sign * Decimal("1e38"), sign * Decimal("0.5"))


def powers():
    bases = ["2", "-2", "3", "-7", "1.1", "-1.1", "0.5", "10", "0.1", "1.0000000000000000000000000000000000001",
             "0.99999999999999999999999999999999999999", "99999999999999999999999999999999999999", "12345678901234567",
             "3.1415926535897932384626433832795028842", "1.5e-20", "2.7182818284590452353602874713526624978"]
    for base in bases:
        for exponent in (0, 1, 2, 3, 4, 7, 10, 31, 64, 100, 126, 149):
            for mode, scale in (("bankers", "none"), ("up", 38), ("down", "none"), ("plain", 5)):
                yield line("raise", mode, scale, Decimal(base), Decimal(exponent))


def conversions():
    for _ in range(120):
        number = any_number()
        shown = rounded(number, "bankers", "none")[0]
        yield f"text - - {text(number)} 0 {shown:f} -" if shown == number else None
        yield f"toDouble - - {text(number)} 0 {float(number).hex()} -"
        digits = "".join(source.choice("0123456789") for _ in range(source.choice([5, 38, 39, 45, 80])))
        point = source.randint(0, len(digits))
        literal = f"{digits[:point]}.{digits[point:]}e{source.randint(-180, 130)}"
        yield f"parse - - {literal} 0 {text(rounded(Decimal(literal), 'bankers', 'none')[0])} -"
        double = source.uniform(1, 10) * 10.0 ** source.randint(-40, 40)
        yield f"fromDouble - - {double.hex()} 0 {text(Decimal(repr(double)).normalize())} -"
    for literal in ("1e-129", "5e-129", "5.0000000000000000000000000000000000000000001e-129", "15e-129", "1e164",
                    "1e165", "99999999999999999999999999999999999999.5", "1e-999999999999", "1e999999999999",
                    "12345678901234567890123456789012345678500000000000000000000000000000000000000000000000001e-40"):
        exact = Decimal(0) if literal == "1e-999999999999" else None
        if literal == "1e999999999999":
            exact = Decimal("NaN")
        shown = text(exact if exact is not None else rounded(Decimal(literal), "bankers", "none")[0])
        yield f"parse - - {literal} 0 {shown} -"


def main():
    sections = (arithmetic(), deceptive_quotients(), boundaries(), powers(), conversions())
    lines = [entry for section in sections for entry in section if entry]
    path = pathlib.Path(__file__).with_name("vectors.txt")
    path.write_text("# operation mode scale a b expected status; written by generate_vectors.py\n"
                    + "\n".join(lines) + "\n", encoding="utf-8")
    print(f"{len(lines)} lines")


if __name__ == "__main__":
    main()

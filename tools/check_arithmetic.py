#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares random lines of arithmetic with results of its own: exact integers and fractions, rounded once per step.

    tools/check_arithmetic.py build/release/vemo                    a million lines; exit status 1 if one differs
    tools/check_arithmetic.py --lines 1500 --seed 7 --write FILE    the sample that the tests read

Each result is compared twice: the number with all its digits, and the text that is shown.
"""
import argparse
import decimal
import json
import math
import random
import subprocess
import sys
import tempfile
from decimal import Decimal

DIGITS, LEAST, MOST = 38, -128, 127  # significant digits, exponents of ten
PRECISE = decimal.Context(prec=130, rounding=decimal.ROUND_HALF_EVEN, Emin=-99999, Emax=99999, traps=[])
NAN = None
PRIORITIES = {"^": 300, "*": 200, "/": 200, "mod": 200, "&": 200, "|": 200, "xor": 200, "<<": 200, ">>": 200,
              "+": 100, "-": 100}
PREFIXES = {"hex": ("0x", 16), "oct": ("0o", 8), "bin": ("0b", 2)}


# Numbers are pairs (m, e), of the value m × 10^e, or NAN.

def scaled(number, exponent):
    m, e = number
    return m * 10 ** (e - exponent)


def normal(m, e):
    """Without trailing zeros; not-a-number when out of range."""
    if m == 0:
        return (0, 0)
    while m % 10 == 0:
        m //= 10
        e += 1
    if e > MOST:
        m, e = m * 10 ** (e - MOST), MOST
    return NAN if abs(m) >= 10 ** DIGITS else (m, e)


def up(m, e, rest=False):
    """The sum of m × 10^e and, with `rest`, something less than a unit of it: rounded towards plus infinity."""
    drop = max(len(str(abs(m))) - DIGITS, LEAST - e, 0)
    q, r = divmod(m, 10 ** drop)
    return normal(q + (1 if r or rest else 0), e + drop)


def even(m, e, rest=False):
    """The same, half to even."""
    drop = max(len(str(abs(m))) - DIGITS, LEAST - e, 0)
    if drop == 0:
        return normal(m, e)
    q, r = divmod(m, 10 ** drop)
    half = 10 ** drop // 2
    return normal(q + (1 if r > half or (r == half and (rest or q % 2)) else 0), e + drop)


def add(a, b):
    e = min(a[1], b[1])
    return up(scaled(a, e) + scaled(b, e), e)


def negative(a):
    return (-a[0], a[1])


def multiply(a, b):
    return up(a[0] * b[0], a[1] + b[1])


def divide(a, b):
    if b[0] == 0:
        return NAN
    shift = 2 * DIGITS + 4
    numerator, denominator = (a[0], b[0]) if b[0] > 0 else (-a[0], -b[0])
    q, r = divmod(numerator * 10 ** shift, denominator)
    return up(q, a[1] - b[1] - shift, r != 0)


def modulo(a, b):
    if b[0] == 0:
        return NAN
    e = min(a[1], b[1])
    return even(scaled(a, e) % scaled(b, e), e)


def from_decimal(d):
    """Half to even, from many more digits."""
    if not d.is_finite():
        return NAN
    sign, digits, exponent = d.as_tuple()
    m = int("".join(map(str, digits)))
    return even(-m if sign else m, exponent)


def to_decimal(a):
    return Decimal(a[0]).scaleb(a[1], PRECISE)


def whole(a):
    return a[1] >= 0


def power(a, b):
    if b[0] == 0:
        return (1, 0)
    if a[0] == 0:
        return NAN if b[0] < 0 else a
    if whole(b):
        n = abs(scaled(b, 0))
        if n > 2000:
            return from_decimal(exponential(PRECISE.multiply(PRECISE.ln(abs(to_decimal(a))), to_decimal(b)),
                                            a[0] < 0 and n % 2))
        m, e = a[0] ** n, a[1] * n
        if b[0] > 0:
            return even(m, e)
        shift = len(str(abs(m))) + 2 * DIGITS
        q, r = divmod(10 ** shift * (1 if m > 0 else -1), abs(m))
        return even(q, -e - shift, r != 0)
    return NAN if a[0] < 0 else from_decimal(exponential(PRECISE.multiply(PRECISE.ln(to_decimal(a)), to_decimal(b))))


def exponential(x, flip=False):
    if abs(x) > 1000:
        return Decimal("Infinity") if x > 0 else Decimal(0)
    return PRECISE.copy_negate(PRECISE.exp(x)) if flip else PRECISE.exp(x)


def nearly_whole(a):
    """The whole number that this is but for rounding, or nothing."""
    if whole(a):
        return scaled(a, 0)
    unit = 10 ** -a[1]
    nearest = (2 * a[0] + unit) // (2 * unit)
    distance = abs(a[0] - nearest * unit)
    near = distance * 10 ** 30 <= unit or (distance * 10 ** 6 <= unit and distance * 10 ** 36 <= abs(a[0]))
    return nearest if near else None


def truncated(a):
    m = abs(a[0]) * 10 ** a[1] if a[1] >= 0 else abs(a[0]) // 10 ** -a[1]
    return -m if a[0] < 0 else m


def integer(a):
    near = nearly_whole(a)
    return truncated(a) if near is None else near


def from_integer(n):
    return even(n, 0)


def bitwise(operation):
    def apply(a, b):
        a, b = integer(a), integer(b)
        if max(abs(a), abs(b)) >= 2 ** 64:
            return NAN
        bits = operation(a % 2 ** 64, b % 2 ** 64)
        return from_integer(bits - 2 ** 64 if operation(a < 0, b < 0) and bits >= 2 ** 63 else bits)
    return apply


def shift(left):
    def apply(a, b):
        n = max(min(truncated(a), 2 ** 63 - 1), -2 ** 63)
        count = min(truncated(b), 63)
        if not left:
            return from_integer(n >> count)
        bits = (n << count) % 2 ** 64
        return from_integer(bits - 2 ** 64 if bits >= 2 ** 63 else bits)
    return apply


def floor(a):
    near = nearly_whole(a)
    return from_integer(near or a[0] // 10 ** -a[1])


def ceiling(a):
    near = nearly_whole(a)
    return from_integer(near or -(-a[0] // 10 ** -a[1]))


def rounded(a):
    if whole(a):
        return a
    unit = 10 ** -a[1]
    m = (2 * abs(a[0]) + unit) // (2 * unit)
    return from_integer(-m if a[0] < 0 else m)


def absolute(a):
    return (abs(a[0]), a[1])


def root(n, a):
    if a[0] == 0:
        return a
    if a[0] < 0:
        positive = root(n, negative(a)) if n % 2 else NAN
        return positive and negative(positive)
    return from_decimal(PRECISE.exp(PRECISE.divide(PRECISE.ln(to_decimal(a)), Decimal(n))))


def square_root(a):
    return NAN if a[0] < 0 else from_decimal(PRECISE.sqrt(to_decimal(a)))


def logarithm(a):
    return NAN if a[0] <= 0 else from_decimal(PRECISE.ln(to_decimal(a)))


def logarithm_to(base, a):
    if a[0] <= 0:
        return NAN
    return from_decimal(PRECISE.divide(PRECISE.ln(to_decimal(a)), PRECISE.ln(Decimal(base))))


def factorial(a):
    if not whole(a):
        return NAN
    return even(math.factorial(abs(scaled(a, 0))), 0)


BITWISE = {"&": bitwise(lambda a, b: a & b), "|": bitwise(lambda a, b: a | b), "xor": bitwise(lambda a, b: a ^ b),
           "<<": shift(True), ">>": shift(False)}
FUNCTIONS = {"sqrt": square_root, "cbrt": lambda a: root(3, a), "abs": absolute, "ln": logarithm, "round": rounded,
             "floor": floor, "ceil": ceiling}


class Value:
    """A number with its unit ("%" or none) and its notation."""

    def __init__(self, number, unit="", notation=""):
        self.number, self.unit, self.notation = number, unit, notation


def apply(op, left, right):
    if left.number is NAN or right.number is NAN:
        return Value(NAN)
    a, b = left.number, right.number
    if right.unit and op in "+-*" and (op == "*" or not left.unit):
        part = multiply(a, divide(b, (100, 0)))
        if part is not NAN and op != "*":
            part = add(a, part if op == "+" else negative(part))
        return Value(part, left.unit, left.notation)
    if op in ("mod", "^") or op in BITWISE:
        compute = {"mod": modulo, "^": power}.get(op) or BITWISE[op]
        return Value(compute(a, b), left.unit, left.notation)
    if op == "/" and right.unit and not left.unit:
        return Value(divide(a, divide(b, (100, 0))), left.unit, left.notation)
    unit, notation = right.unit or left.unit, right.notation or left.notation
    if op == "/":
        return Value(divide(a, b), "" if right.unit else left.unit, notation)
    number = multiply(a, b) if op == "*" else add(a, b if op == "+" else negative(b))
    return Value(number, unit, notation)


def reduced(values, operators):
    """The highest priority first, from the left."""
    values, operators = list(values), list(operators)
    while operators:
        i = max(range(len(operators)), key=lambda k: (PRIORITIES[operators[k]], -k))
        values[i:i + 2] = [apply(operators[i], values[i], values[i + 1])]
        if values[i].number is NAN:
            return Value(NAN)
        del operators[i]
    return values[0]


class Lines:
    """Random expressions, each as a text and a value."""

    def __init__(self, source):
        self.source = source

    def literal(self):
        source = self.source
        kind = source.random()
        if kind < 0.45:
            text = str(source.randrange(0, 10 ** source.randint(1, 4)))
        elif kind < 0.7:
            text = f"{source.randrange(0, 10 ** source.randint(1, 6))}.{self.digits(source.randint(1, 6))}"
        elif kind < 0.78:
            text = f"{source.randrange(0, 10 ** source.randint(4, 22)):,}"
        elif kind < 0.86:
            text = f"{self.digits(source.randint(1, 22))}.{self.digits(source.randint(1, 22))}"
        elif kind < 0.9:
            text = f"0.{'0' * source.randint(2, 45)}{self.digits(source.randint(1, 8))}"
        elif kind < 0.95:
            exponent = source.randint(-40, 40)
            mantissa = f"{source.randrange(1, 1000)}.{self.digits(source.randint(1, 5))}"
            number = even(int(mantissa.replace(".", "")), -len(mantissa.split(".")[1]))
            return f"{mantissa}e{exponent}", Value(up(number[0], number[1] + exponent), notation="sci")
        else:
            notation, (prefix, base) = source.choice(list(PREFIXES.items()))
            n = source.randrange(0, 2 ** source.choice([4, 8, 16, 60, 64, 100]))
            return prefix + in_base(n, base), Value(from_integer(n), notation=notation)
        plain = text.replace(",", "")
        point = len(plain) - plain.index(".") - 1 if "." in plain else 0
        number = even(int(plain.replace(".", "")), -point)
        if source.random() < 0.08:
            return text + "%", Value(number, "%")
        return text, Value(number)

    def digits(self, count):
        return "".join(self.source.choice("0123456789") for _ in range(count))

    def operand(self, depth):
        source = self.source
        kind = source.random()
        if depth > 0 and kind < 0.3:
            text, value = self.expression(depth - 1)
            return f"({text})", value
        if depth > 0 and kind < 0.42:
            return self.function(depth - 1)
        if kind < 0.5:
            text, value = self.literal()
            return "-" + text, apply("-", Value((0, 0)), value) if not value.unit else \
                Value(negative(value.number), value.unit)
        if depth > 0 and kind < 0.54:
            text, value = self.literal()
            other, factor = self.expression(depth - 1)
            if not value.unit:
                return f"{text} ({other})", apply("*", value, factor)
        return self.literal()

    def function(self, depth):
        source = self.source
        kind = source.random()
        if kind < 0.1:
            n = source.randrange(0, 120)
            return f"fact ({n})", Value(factorial((n, 0)))
        text, value = self.expression(depth)
        if kind < 0.25:
            n = source.choice([2, 3, 4, 5, 7, 10])
            return f"root ({n}) ({text})", Value(value.number and root(n, value.number))
        if kind < 0.35:
            base = source.choice([2, 3, 10])
            return f"log ({base}) ({text})", Value(value.number and logarithm_to(base, value.number))
        name = source.choice(list(FUNCTIONS))
        return f"{name} ({text})", Value(value.number and FUNCTIONS[name](value.number), value.unit, value.notation)

    def expression(self, depth):
        source = self.source
        texts, values, operators = [], [], []
        for i in range(source.choice([1, 2, 2, 3, 3, 4])):
            if i > 0:
                op = source.choice(["+", "+", "-", "-", "*", "*", "/", "/", "^", "mod"] +
                                   ["&", "|", "xor", "<<", ">>"] * (source.random() < 0.15))
                operators.append(op)
                texts.append({"*": source.choice("*×"), "/": source.choice("/÷")}.get(op, op))
            if i > 0 and op == "^":
                text, value = self.exponent()
            elif i > 0 and op in ("<<", ">>"):
                count = source.randrange(0, 70)
                text, value = str(count), Value((count, 0))
            else:
                text, value = self.operand(depth)
            texts.append(text)
            values.append(value)
        text = " ".join(texts)
        return text, reduced(values, operators)

    def exponent(self):
        text = self.source.choice(["2", "3", "0", "1", "5", "10", "64", "0.5", "1.5", "-1", "-2", "-0.5", "-7"])
        point = len(text) - text.index(".") - 1 if "." in text else 0
        return text, Value(even(int(text.replace(".", "")), -point))

    def line(self):
        text, value = self.expression(2)
        if value.number is not NAN and not value.unit and self.source.random() < 0.1:
            notation = self.source.choice(["hex", "oct", "bin", "sci", "decimal"])
            word = {"oct": "octal", "bin": "binary", "sci": "scientific"}.get(notation, notation)
            return f"({text}) in {word}", Value(value.number, notation=notation)
        return text, value


def in_base(n, base):
    return {16: f"{n:x}", 8: f"{n:o}", 2: f"{n:b}"}[base]


def half_up(m, e, fraction):
    """The magnitude m × 10^e as an integer of units of 10^-fraction."""
    if e >= -fraction:
        return m * 10 ** (e + fraction)
    unit = 10 ** (-fraction - e)
    return (2 * m + unit) // (2 * unit)


def fixed(units, fraction):
    digits = str(units).rjust(fraction + 1, "0")
    end = len(digits) - fraction
    tail = digits[end:].rstrip("0")
    return f"{int(digits[:end]):,}" + (f".{tail}" if tail else "")


def scientific(m, e, fraction):
    if m == 0:
        return "0E0"
    top = len(str(m)) - 1 + e
    units = half_up(m, e - top, fraction)
    if units >= 10 ** (fraction + 1):
        top += 1
        units = half_up(m, e - top, fraction)
    return f"{fixed(units, fraction)}E{top}"


def shown(value):
    """The text of a result in US English."""
    m, e = abs(value.number[0]), value.number[1]
    sign = "-" if value.number[0] < 0 else ""
    if value.notation in PREFIXES:
        prefix, base = PREFIXES[value.notation]
        n = abs(integer(value.number))
        text, zero = prefix + in_base(n, base), n == 0
    elif value.notation == "sci":
        text, zero = scientific(m, e, 2), m == 0
    else:
        units = half_up(m, e, 2)
        text, zero = fixed(units, 2), units == 0
        if zero and m and len(str(m)) + e > -15:
            fraction = 2 - len(str(m)) - e
            units, zero = half_up(m, e, fraction), False
            text = fixed(units, fraction)
            if units < 10 ** (fraction - 6) if fraction >= 6 else False:
                text = scientific(units, -fraction, 1)
    return ("" if zero else sign) + text + value.unit


def exact(number):
    """As the engine writes numbers for programs."""
    m, e = number
    sign, digits = ("-" if m < 0 else ""), str(abs(m))
    if e >= 0:
        return sign + digits + "0" * e if m else "0"
    digits = digits.rjust(1 - e, "0")
    return f"{sign}{digits[:e]}.{digits[e:]}"


def lines_of(seed, count):
    lines = Lines(random.Random(seed))
    while count > 0:
        text, value = lines.line()
        if len(text) < 400:
            count -= 1
            yield text, value


def results_of(command, texts):
    with tempfile.NamedTemporaryFile("w", suffix=".vemo", encoding="utf-8") as file:
        file.write("\n".join(texts) + "\n")
        file.flush()
        output = subprocess.run([command, "--json", "--locale", "en_US", "--language", "en", file.name], check=True,
                                capture_output=True)
    return json.loads(output.stdout)["lines"]


def check(command, seed, count):
    lines = list(lines_of(seed, count))
    different = 0
    for (text, value), line in zip(lines, results_of(command, [text for text, _ in lines]), strict=True):
        expected = ("", "") if value.number is NAN else (exact(value.number), shown(value))
        given = (line.get("value", {}).get("number", ""), line.get("regular", ""))
        if given != expected:
            different += 1
            print(f"{text}\n  expected {expected}\n  given    {given}")
    return different


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("command", nargs="?")
    parser.add_argument("--lines", type=int, default=1_000_000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--write", metavar="FILE")
    options = parser.parse_args()
    decimal.setcontext(PRECISE)
    if options.write:
        with open(options.write, "w", encoding="utf-8") as file:
            file.write("# line, number, text; written by tools/check_arithmetic.py\n")
            for text, value in lines_of(options.seed, options.lines):
                number, result = ("", "") if value.number is NAN else (exact(value.number), shown(value))
                file.write(f"{text}\t{number}\t{result}\n")
        return
    if not options.command:
        parser.error("a vemo command is needed")
    different, done, batch = 0, 0, 20_000
    while done < options.lines and different < 50:
        count = min(batch, options.lines - done)
        different += check(options.command, options.seed * 1_000_003 + done, count)
        done += count
        print(f"{done} lines, {different} differ", file=sys.stderr)
    sys.exit(1 if different else 0)


if __name__ == "__main__":
    main()

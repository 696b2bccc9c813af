#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Compares the meanings in tests/units/everyday.txt with those of the program "units" (Debian: apt-get install units).

Usage: tools/check_units.py [FILE]. Names that the program knows under another name, or not at all, are listed below.
Prints what differs in the first twelve digits; exits with 1 unless docs/units.md explains it.
"""
import re
import subprocess
import sys
from fractions import Fraction

# The base units in the program's words.
BASES = {
    "gram": "g", "m2": "m^2", "m3": "m^3", "m/second": "m/s", "m/second2": "m/s^2", "joule/second": "W",
    "coulomb/second": "A", "volt_ampere": "V A", "newton_metre": "N m", "m/m3": "m/m^3", "m3/m": "m^3/m",
    "m3/second": "m^3/s", "gram/m3": "g/m^3", "gram/m2": "g/m^2", "mole/m3": "mol/m^3", "second/m": "s/m",
    "bit/second": "bit/s", "percent": "percent", "hertz": "Hz", "pair": "2", "kelvin": "K", "mole": "mol",
}
# The first name of a line in the program's words, where they differ.
NAMES = {
    "m²": "m^2", "km²": "km^2", "cm²": "cm^2", "sq ft": "ft^2", "sq in": "in^2", "sq yd": "yd^2", "sq mi": "mi^2",
    "cubic metre": "m^3", "cubic feet": "ft^3", "cubic inches": "in^3", "cubic yards": "yd^3", "µm": "um", "px": "inch/96",
    "astronomical unit": "au", "ångström": "angstrom", "rack unit": "1.75 inch", "didot": "didotpoint",
    "nmi": "6080 ft", "fl oz": "usfloz", "shot": "1.5 usfloz", "gill": "usgill", "barrel of oil": "42 usgallon",
    "hogshead": "ushogshead", "bushel": "usbushel", "peck": "uspeck", "dry pint": "33.6003125 in^3",
    "dry quart": "67.200625 in^3", "fluid dram": "usfloz/8", "imperial gallon": "brgallon", "imperial quart": "brquart",
    "imperial pint": "brpint", "imperial cup": "brpint/2", "imperial fluid ounce": "brfloz", "imperial gill": "brgill",
    "metric cup": "250 ml", "metric tablespoon": "15 ml", "metric teaspoon": "5 ml", "australian tablespoon": "20 ml",
    "dessertspoon": "10 ml", "board foot": "boardfoot", "acre foot": "acre foot", "sho": "2401|1331 litre",
    "gō": "2401|13310 litre", "cup": "uscup", "pint": "uspint", "quart": "usquart", "gallon": "usgallon",
    "tablespoon": "ustablespoon", "teaspoon": "usteaspoon", "l": "litre", "t": "tonne", "stone": "14 lb",
    "short ton": "uston", "long ton": "brton", "hundredweight": "ushundredweight", "long hundredweight": "112 lb",
    "dram": "lb/256", "troy ounce": "troyounce", "troy pound": "troypound", "jin": "500 g", "centner": "100 kg",
    "metric carat": "carat", "h": "hour", "d": "day", "fortnight": "14 day", "quarter": "90 day", "decade": "3650 day",
    "century": "36500 day", "millennium": "365000 day", "workday": "8 hour", "month": "30 day", "yr": "365 day",
    "dunam": "1000 m^2", "tatami": "jou_area", "ping": "tsubo", "section": "mile^2", "cubit": "18 inch", "oz": "ounce",
    "deg": "degree", "mrad": "mradian", "rankine": "degR", "kB": "kilobyte", "m/s": "m/s", "knot": "knot",
    "m/s²": "m/s^2", "ft/s²": "ft/s^2", "standard gravity": "gravity", "psi": "psi", "ksi": "1000 psi", "mmHg": "mmHg",
    "cmH2O": "gravity cm 1000 kg/m^3", "rad": "radian", "gradian": "gon", "cal": "cal_th", "kcal": "1000 cal_th", "Wh": "W hour", "kWh": "kW hour", "MWh": "MW hour",
    "GWh": "GW hour", "keV": "keV", "therm": "105480400 J", "foot pound": "ft lbf", "hp": "horsepower", "BTU": "btu",
    "PS": "metrichorsepower", "BTU/h": "btu/hour", "VA": "V A", "kVA": "kV A", "lbf ft": "lbf ft", "lbf in": "lbf in",
    "Nm": "N m", "kNm": "kN m", "kgf m": "kgf m", "rpm": "1|60 Hz", "bpm": "1|60 Hz", "Ah": "A hour", "mAh": "mA hour",
    "Ω": "ohm", "kΩ": "kohm", "MΩ": "Mohm", "µA": "uA", "µC": "uC", "µF": "uF", "µSv": "uSv", "µmol": "umol",
    "µg": "ug", "foot-candle": "footcandle", "‰": "1|1000", "basis point": "0.01 percent", "lm": "lm",
    "kbit/s": "kbit/s", "Mbit/s": "Mbit/s", "Gbit/s": "Gbit/s", "mpg": "mile/usgallon", "imperial mpg": "mile/brgallon",
    "km/l": "km/litre", "l/100km": "litre/(100 km)", "l/min": "litre/min", "gpm": "usgallon/min", "cfm": "ft^3/min",
    "m³/h": "m^3/hour", "g/cm³": "g/cm^3", "kg/m³": "kg/m^3", "gsm": "g/m^2", "mmol/l": "mmol/litre",
    "mg/dl": "mg/dlitre", "kWh/day": "kW hour/day", "km/h": "km/hour", "rem": "16 inch/96", "twip": "inch/1440",
    "pica": "inch/6", "light year": "lightyear", "thou": "mil",
    "pound-force": "lbf", "tsubo": "400|121 m^2", "min/km": "min/km", "percent": "percent", "ppm": "ppm", "ppb": "ppb",
    "°": "degree", "arcminute": "arcmin", "arcsecond": "arcsec", "lb": "pound", "nibble": "nybble", "inHg": "inHg",
    "link": "chain/100", "hectare": "hectare", "pair": "2", "ream": "500", "tael": "tael", "siemens": "siemens",
}
# Where the catalogue means something else, or rounds; the reasons are in docs/units.md.
EXPLAINED = {"nmi", "cup", "pint", "quart", "gallon", "tablespoon", "teaspoon", "stone", "acre", "ping", "deg",
             "parsec", "tatami", "mpg", "gpm", "tael"}


def ask(unit, base):
    run = subprocess.run(["units", "-t", "-o", "%.16g", unit, base], capture_output=True, text=True)
    answer = run.stdout.strip()
    return Fraction(answer) if re.fullmatch(r"[-+0-9.eE]+", answer) else answer


def main():
    path = sys.argv[1] if len(sys.argv) > 1 else "tests/units/everyday.txt"
    compared = differing = unknown = 0
    for line in open(path, encoding="utf-8"):
        if line.startswith("#") or " = " not in line:
            continue
        names, meaning = line.rstrip("\n").split(" = ")
        name = names.split(",")[0].strip()
        amount, base = meaning.split(" ", 1)
        theirs = ask(NAMES.get(name, name), BASES.get(base, base))
        if not isinstance(theirs, Fraction):
            print(f"{name}: {theirs}")
            unknown += 1
            continue
        compared += 1
        if abs(theirs / Fraction(amount) - 1) > Fraction(5, 10**13):
            explained = " (explained)" if name in EXPLAINED else ""
            print(f"{name}: {float(Fraction(amount)):.13g} here, {float(theirs):.13g} there{explained}")
            differing += not explained
    print(f"{compared} compared, {differing} differ unexplained, {unknown} unknown there")
    return 1 if differing or unknown else 0


if __name__ == "__main__":
    sys.exit(main())

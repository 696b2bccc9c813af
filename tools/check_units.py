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
    "bit/second": "bit/s", "percent": "percent", "hertz": "Hz", "pair": "2", "kelvin": "K", "mole": "mol", "sievert/second": "Sv/s", "m3/m2": "m^3/m^2", "watt/m2": "W/m^2", "gram/gram": "1",
    "gram/mole": "g/mol", "joule/mole": "J/mol", "dioptre": "1/m", "radian/second": "radian/s",
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
# Those of a line in everyday spelling that need more than the program's own letters.
NAMES.update({
    "in.": "inch", "′": "ft", "statute mile": "mile", "point": "0.00035277777 m", "light minute": "c minute",
    "light second": "c second", "light hour": "c hour", "kpc": "kiloparsec", "Mpc": "megaparsec", "em": "16 inch/96",
    "survey foot": "US ft", "tbsp.": "ustablespoon", "tsp.": "usteaspoon", "jigger": "1.5 usfloz", "keg": "15.5 usgallon",
    "beer barrel": "31 usgallon", "ccf": "100 ft^3", "mcf": "1000 ft^3", "cu mm": "mm^3", "cu cm": "cm^3",
    "lb.": "lb", "oz.": "oz", "kt": "1000 tonne", "Mt": "1e6 tonne", "dag": "10 g", "hg": "100 g", "kip": "1000 lb", "scruple": "20 grain",
    "catty": "16 * 37.79936375 g", "momme": "3.75 g", "man-hour": "hour", "man-day": "8 hour", "workweek": "40 hour", "mos": "30 day",
    "degree of arc": "degree", "PB": "petabyte", "EB": "exabyte", "Kbit": "kbit", "TiB": "tebibyte", "PiB": "pebibyte",
    "sfm": "ft/min", "sq cm": "cm^2", "rad/s": "radian/s", "technical atmosphere": "kgf/cm^2", "psf": "lbf/ft^2", "lb/in²": "lbf/in^2", "kgf/cm²": "kgf/cm^2",
    "cm of water": "gravity cm 1000 kg/m^3", "mmH2O": "gravity mm 1000 kg/m^3", "inH2O": "gravity inch 1000 kg/m^3",
    "cmHg": "10 mmHg", "Ws": "W s", "TWh": "TW hour", "MMBtu": "1e6 btu", "kBtu": "1000 btu", "toe": "41.868 GJ",
    "bhp": "horsepower", "ton of refrigeration": "12000 btu/hour", "ozf": "lbf/16", "ft-lb": "ft lbf", "in-lb": "lbf inch",
    "rev/min": "1|60 Hz", "rps": "Hz", "mcg/h": "ug/hour", "µg/ml": "ug/ml", "dioptre": "1/m", "kcal/100 g": "1000 cal_th/(100 g)",
    "kcal/day": "1000 cal_th/day", "kWh/100 km": "kW hour/(100 km)", "Wh/km": "W hour/km", "mi/kWh": "mile/(kW hour)",
    "mi/gal": "mile/usgallon", "gph": "usgallon/hour", "gal/day": "usgallon/day", "quire": "25", "percentage point": "percent",
    "kWh/year": "kW hour/(365 day)", "mSv/year": "mSv/(365 day)", "GB/month": "gigabyte/(30 day)", "GB/s": "gigabyte/s",
    "kB/s": "kilobyte/s", "MiB/s": "mebibyte/s", "min/mile": "min/mile", "Ah/day": "A hour/day", "W/m²": "W/m^2", 
    "Gbit": "Gbit", "Tbit/s": "Tbit/s", "IU": "IU", "drops/min": "0.05 ml/min", "ml/h": "ml/hour",
})
# Counts of effect, which are no physical unit.
UNKNOWN_THERE = {"IU", "mIU", "IU/ml"}
# Where the catalogue means something else, or rounds; the reasons are in docs/units.md.
EXPLAINED = {"nmi", "cup", "pint", "quart", "gallon", "tablespoon", "teaspoon", "stone", "acre", "ping", "deg",
             "parsec", "tatami", "mpg", "gpm", "tael", "tbsp.", "tsp.", "mi/gal", "gph", "gal/day", "kpc", "Mpc"}


def spelt(name):
    """The name in the program's letters: "kg/m³" is kg/m^3 there, and an h Planck's constant."""
    name = name.replace("²", "^2").replace("³", "^3").replace("µ", "u")
    return re.sub(r"/h\b", "/hour", name)


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
        if name in UNKNOWN_THERE:
            continue
        theirs = ask(NAMES.get(name, spelt(name)), spelt(BASES.get(base, base)))
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

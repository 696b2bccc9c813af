#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Adds a column to a CSV file: add_column.py IN OUT NAME EXPRESSION

In the expression, the cells of a row stand where their columns are named:

    add_column.py trips.csv out.csv fuel "{distance} / 38 mpg * $3.89/gal"
"""

import csv
import sys

import vemo


def main() -> int:
    if len(sys.argv) != 5:
        print(__doc__, file=sys.stderr)
        return 2
    source, target, name, expression = sys.argv[1:]
    with open(source, newline="", encoding="utf-8") as file:
        reader = csv.DictReader(file)
        columns = list(reader.fieldnames or [])
        rows = list(reader)
    with vemo.Engine() as engine, open(target, "w", newline="", encoding="utf-8") as file:
        writer = csv.DictWriter(file, [*columns, name])
        writer.writeheader()
        for number, row in enumerate(rows, 2):
            line = engine.calculate(expression.format(**row))[0]
            for remark in (*line.notes, line.reason):
                if remark:
                    print(f"{source}:{number}: {remark}", file=sys.stderr)
            writer.writerow({**row, name: line.result or ""})
    return 0


if __name__ == "__main__":
    sys.exit(main())

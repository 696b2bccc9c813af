# SPDX-License-Identifier: MIT
import csv
import gc
import os
import pathlib
import subprocess
import sys
import tempfile
import threading
import unittest
from datetime import datetime, timedelta, timezone
from decimal import Decimal

import vemo

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"
NOON = datetime(2026, 11, 25, 12, tzinfo=timezone.utc)


def english(**options):
    return vemo.Engine(language="en", locale="en_US", time_zone="Europe/Berlin", now=NOON, **options)


class Results(unittest.TestCase):
    def test_values(self):
        with english() as engine:
            inch, exact, percent, none = engine.calculate("5 inch in cm\n1,234,567.125 + 0\n20%\n# header")
        self.assertEqual((inch.number, inch.unit, inch.value), (Decimal("12.7"), "cm", Decimal("12.7")))
        self.assertEqual((str(inch), repr(inch)), ("12.7 cm", "<Line '5 inch in cm': '12.7 cm'>"))
        self.assertEqual((exact.number, exact.unit, exact.instant), (Decimal("1234567.125"), None, None))
        self.assertEqual((percent.number, percent.unit), (Decimal(20), "percent"))
        self.assertEqual((none.result, none.value, str(none), bool(none)), (None, None, "", False))

    def test_instants(self):
        with english() as engine:
            local, tokyo, old = engine.calculate("now\nnow in Tokyo\nMarch 4, 1901")
        self.assertEqual((local.instant, local.value), (NOON, NOON))
        self.assertEqual(str(local.instant.tzinfo), "Europe/Berlin")
        self.assertEqual((tokyo.instant, tokyo.instant.hour), (NOON, 21))
        self.assertEqual((old.instant.year, old.instant.month, old.instant.day), (1901, 3, 4))
        self.assertIsNone(tokyo.number)

    def test_ranges_count_characters(self):
        with english() as engine:
            lines = engine.calculate('größe = 5 m\n"🍎" größe * 2\nRent * 12\n1 / 0')
            name = lines[1].names[0]
            self.assertEqual(lines[1].text[name.start : name.end], "größe")
            self.assertEqual(("größe", False, True), (name.name, name.defines, lines[0].names[0].defines))
            note = lines[2].notes[0]
            self.assertEqual((note.kind, lines[2].text[note.start : note.end]), ("unknown_word", "Rent"))
            self.assertIn("Rent", str(note))
            self.assertEqual(lines[3].reason.code, "division_by_zero")
            self.assertEqual("".join(run.text for run in lines[1].runs), lines[1].text)
            self.assertIn("2", lines[1].reading)
        with self.assertRaises(vemo.Error):
            lines[0].reading  # asks an engine that is closed
        self.assertEqual(lines[1].reading and lines[0].result, "5 m")

    def test_whole_results(self):
        with english() as engine:
            result = engine.calculate("rent: $1,200\ngas: $45.50")
        self.assertEqual(str(result).splitlines()[-1].split(), ["total", "$1,245.50"])
        self.assertEqual((len(result), result.total, result.total_is_partial), (2, "$1,245.50", False))
        self.assertEqual([line.number for line in result[::-1]], [Decimal("45.5"), Decimal(1200)])
        self.assertEqual(result[-1].text, "gas: $45.50")
        self.assertEqual(len(list(csv.reader(result.formatted("csv").splitlines()))), 3)
        with self.assertRaises(IndexError):
            result[2]
        with self.assertRaises(ValueError):
            result.formatted("pdf")


class Engines(unittest.TestCase):
    def test_settings(self):
        with vemo.Engine(language="de", locale="de_DE", precision=4, rates={"EUR": Decimal("0.5")}) as engine:
            self.assertEqual(engine.calculate("10 / 3")[0].result, "3,3333")
            self.assertEqual(engine.calculate("$10 in EUR")[0].number, 5)
        with english(extensions=EXAMPLES / "extensions") as engine:
            self.assertIn("cooking.js", engine.log)
        for wrong in ({"locale": "xx_YY"}, {"precision": -1}, {"rates": "rates.json"}, {"caches": "/no/such/folder"}):
            with self.assertRaises(ValueError):
                vemo.Engine(**wrong)
        with self.assertRaises(ValueError):
            english(rates={})

    def test_text_that_is_none(self):
        with english() as engine:
            with self.assertRaises(ValueError):
                engine.calculate("\ud800")
            self.assertEqual(engine.calculate("1\0 + 1")[0].text, "1\0 + 1")
        with self.assertRaises(vemo.Error):
            engine.calculate("1")
        engine.close()

    def test_completions(self):
        with english() as engine:
            text = "kitchen = 5 m\né kitch"
            offered = engine.complete(text)
            self.assertIn(vemo.Completion("kitchen", "variable", 16), offered)
            self.assertEqual(engine.complete(text, 14), [])
            self.assertLessEqual(len(engine.complete("5 k", most=3)), 3)

    def test_what_does_not_come(self):
        with tempfile.TemporaryDirectory() as folder:
            with english(rates="http://127.0.0.1:1/", caches=folder) as engine:
                with self.assertRaises(vemo.NotFetched):
                    engine.wait(60)

    def test_threads(self):
        def work():
            with english() as engine:
                for i in range(100):
                    got.append(engine.calculate(f"{i} * 2")[0].number == i * 2)
                    got.append(shared.calculate(f"{i} * 3")[0].number == i * 3)

        got = []
        with english() as shared:
            threads = [threading.Thread(target=work) for _ in range(2)]
            for thread in threads:
                thread.start()
            for thread in threads:
                thread.join()
        self.assertEqual(got, [True] * 400)

    def test_nothing_is_kept(self):
        def resident():
            with open("/proc/self/statm") as file:
                return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")

        with english() as engine:
            for round in range(3):
                for i in range(1000):
                    engine.calculate("5 inch in cm\n" * 20)[7].runs
                gc.collect()
                if round == 0:
                    before = resident()
        self.assertLess(resident() - before, 8 << 20)


class Documents(unittest.TestCase):
    def test_documents(self):
        heard = threading.Event()
        with english() as engine:
            with engine.document("a = 1\na * 2", heard.set) as document:
                self.assertEqual(document.wait(60)[1].number, 2)
                self.assertTrue(heard.wait(60))
                for i in range(50):
                    document.set_text(f"a = {i}\na * 2")
                self.assertEqual(document.wait()[1].number, 98)
                self.assertEqual(document.latest()[0].number, 49)
            with self.assertRaises(vemo.Error):
                document.set_text("1")


class Examples(unittest.TestCase):
    def test_a_column_is_added(self):
        with tempfile.TemporaryDirectory() as folder:
            target = os.path.join(folder, "out.csv")
            command = [sys.executable, EXAMPLES / "python/add_column.py", EXAMPLES / "python/trips.csv", target]
            done = subprocess.run(
                [*command, "fuel", "{distance} / 38 mpg * $3.89/gal"],
                env={**os.environ, "LC_ALL": "en_US.UTF-8"},
                capture_output=True,
                text=True,
                check=True,
            )
            with open(target, newline="") as file:
                rows = list(csv.DictReader(file))
        self.assertEqual([row["fuel"] for row in rows][0], "$21.70")
        self.assertEqual(len(rows), 3)
        self.assertIn("trips.csv:4: ", done.stderr)


if __name__ == "__main__":
    unittest.main()

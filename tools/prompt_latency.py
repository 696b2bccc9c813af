#!/usr/bin/env python3
"""Measures how long the prompt takes from a key to its answer on the terminal.

    tools/prompt_latency.py build/release/vemo [LINES [KEYS]]

Opens the prompt on a pseudo-terminal with a document of so many lines (1000), types digits (200), and waits after each
until the answer that it makes has come. Prints the median, the ninth decile and the longest, in milliseconds.
"""
import os
import pty
import select
import statistics
import sys
import tempfile
import time

command = os.path.abspath(sys.argv[1])
lines = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
keys = int(sys.argv[3]) if len(sys.argv) > 3 else 200


def main():
    with tempfile.TemporaryDirectory() as folder:
        with open(folder + "/document.vemo", "w") as document:
            for i in range(lines):
                document.write(f"item {i} = ${i % 90 + 3} * 2 + 5%\n" if i % 2 else f"{i + 1} km in miles\n")
        process, terminal = pty.fork()
        if process == 0:
            os.environ.update(HOME=folder, XDG_CONFIG_HOME=folder, XDG_STATE_HOME=folder, TERM="xterm", LC_ALL="C.UTF-8")
            os.execv(command, [command, "--locale", "en_US", "--language", "en", "-i", folder + "/document.vemo"])

        def until(text):
            seen = b""
            while text not in seen:
                if not select.select([terminal], [], [], 20)[0]:
                    sys.exit(f"no {text!r} in {seen!r}")
                seen += os.read(terminal, 65536)

        until(b"> ")
        os.write(terminal, b"3 * ")
        time.sleep(0.5)
        times = []
        number = 0
        for i in range(keys):
            if i % 9 == 0:
                os.write(terminal, b"\x15" + b"3 * ")
                time.sleep(0.1)
                while select.select([terminal], [], [], 0)[0]:
                    os.read(terminal, 65536)
                number = 0
            number = number * 10 + 3
            start = time.perf_counter()
            os.write(terminal, b"3")
            until(f"= {3 * number:,}".encode())
            times.append((time.perf_counter() - start) * 1000)
            time.sleep(0.02)
        os.write(terminal, b"\x03\x04")
        times.sort()
        print(f"{lines} lines, {keys} keys: median {statistics.median(times):.2f} ms, "
              f"nine in ten within {times[len(times) * 9 // 10]:.2f} ms, longest {times[-1]:.2f} ms")


main()

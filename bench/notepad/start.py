#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""How long programs take from their start until their window is drawn, one after the other in one run.

    bench/notepad/start.py [-n RUNS] NAME=COMMAND...

A display is needed: run it under xvfb-run. A window is drawn when it is mapped and its right half shows something
beside its ground: in the notepad, answers. Needs libX11 alone.
"""
import ctypes
import os
import shlex
import signal
import statistics
import subprocess
import sys
import time

x = ctypes.CDLL("libX11.so.6")
x.XOpenDisplay.restype = ctypes.c_void_p
x.XDefaultRootWindow.restype = ctypes.c_ulong
x.XGetImage.restype = ctypes.c_void_p
x.XGetPixel.restype = ctypes.c_ulong
x.XGetPixel.argtypes = [ctypes.c_void_p, ctypes.c_int, ctypes.c_int]
x.XDestroyImage.argtypes = [ctypes.c_void_p]


class Attributes(ctypes.Structure):
    _fields_ = [("x", ctypes.c_int), ("y", ctypes.c_int), ("width", ctypes.c_int), ("height", ctypes.c_int),
                ("rest", ctypes.c_byte * 120)]


ERRORS = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)(lambda display, error: 0)
x.XSetErrorHandler(ERRORS)  # a window may go while it is looked at
display = ctypes.c_void_p(x.XOpenDisplay(None))
if not display:
    sys.exit("no display: run this under xvfb-run")
root = x.XDefaultRootWindow(display)
MAP_STATE = 92 - 16  # of XWindowAttributes, after its four first numbers
VIEWABLE = 2


def children(window):
    found, count = ctypes.POINTER(ctypes.c_ulong)(), ctypes.c_uint()
    a, b = ctypes.c_ulong(), ctypes.c_ulong()
    if not x.XQueryTree(display, ctypes.c_ulong(window), ctypes.byref(a), ctypes.byref(b), ctypes.byref(found),
                        ctypes.byref(count)):
        return []
    result = [found[i] for i in range(count.value)]
    if count.value:
        x.XFree(found)
    return result


def drawn(window):
    """True where the right half of a visible window of some size has several colours."""
    attributes = Attributes()
    if not x.XGetWindowAttributes(display, ctypes.c_ulong(window), ctypes.byref(attributes)):
        return False
    state = ctypes.c_int.from_buffer(attributes, 16 + MAP_STATE).value
    width, height = attributes.width, attributes.height
    if state != VIEWABLE or width < 150 or height < 100:
        return False
    top, bottom = height // 5, height * 9 // 10
    image = x.XGetImage(display, ctypes.c_ulong(window), width // 2 + 20, top, width // 2 - 40, bottom - top,
                        ctypes.c_ulong(0xFFFFFFFF), 2)
    if not image:
        return False
    colours = {x.XGetPixel(image, column, row) for row in range(0, bottom - top, 2)
               for column in range(0, width // 2 - 40, 2)}
    x.XDestroyImage(image)
    return len(colours) > 8


def start(command):
    """Milliseconds until its window is drawn."""
    before = set(children(root))
    begin = time.perf_counter()
    process = subprocess.Popen(shlex.split(command), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               start_new_session=True)
    try:
        while time.perf_counter() - begin < 20:
            looked = time.perf_counter()
            if any(drawn(window) for window in set(children(root)) - before):
                return (looked - begin) * 1000
            time.sleep(0.001)
        sys.exit(f"no window of {command}")
    finally:
        os.killpg(process.pid, signal.SIGTERM)
        process.wait()
        time.sleep(0.3)


def main():
    arguments = sys.argv[1:]
    runs = 11
    if arguments[:1] == ["-n"]:
        runs, arguments = int(arguments[1]), arguments[2:]
    programs = [argument.partition("=") for argument in arguments]
    if not programs or any(not command for _, _, command in programs):
        sys.exit(__doc__)
    times = {name: [] for name, _, _ in programs}
    for run in range(runs + 1):
        for name, _, command in programs:
            taken = start(command)
            if run > 0:  # the first one fills the caches
                times[name].append(taken)
    for name, taken in times.items():
        print(f"{name:16} median {statistics.median(taken):6.0f} ms   least {min(taken):6.0f}   most {max(taken):6.0f}")


main()

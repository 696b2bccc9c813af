#!/bin/sh
# Installs a build into a temporary prefix and uses it from outside: run.sh BUILD_FOLDER
set -eu
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$1" --prefix "$work/prefix" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
cmake -G Ninja -S "$here" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
cmake --build "$work/build" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
[ "$("$work/build/consumer")" = "12.7 cm" ]
[ "$("$work/build/c_consumer")" = "1024" ]
[ "$("$work/prefix/bin/vemo" -e '2 + 3')" = "2 + 3  5" ]

# The example of an application, twice: the second time it shows first what the first one stored.
cmake -G Ninja -S "$here/../../examples/embed" -B "$work/embed" -DCMAKE_PREFIX_PATH="$work/prefix" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
cmake --build "$work/embed" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
export LC_ALL=C.UTF-8
expected='ready
width = 5 inch in cm  =>  12.7 cm
total  =>  12.7 cm
completions: inch inch in cm inch2 inch3 inches'
output=$(echo 'width = 5 inch in cm' | "$work/embed/embed" "$work/result" inch)
[ "$output" = "$expected" ] || { echo "$output"; exit 1; }
output=$(echo 'width = 5 inch in cm' | "$work/embed/embed" "$work/result" inch)
[ "$output" = "from the last time:
width = 5 inch in cm  =>  12.7 cm
$expected" ] || { echo "$output"; exit 1; }

config=$(find "$work/prefix" -name vemo.pc)
export PKG_CONFIG_PATH=$(dirname "$config")
c++ -std=c++20 "$here/main.cpp" -o "$work/program" $(pkg-config --define-prefix --static --cflags --libs vemo)
[ "$("$work/program")" = "12.7 cm" ]
test -f "$work/prefix/share/man/man1/vemo.1"

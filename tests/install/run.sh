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
mkdir "$work/data"
[ "$("$work/build/everything" "$work/data")" = "everything" ]

# Each header alone, with every compiler there is.
for compiler in g++ clang++; do
    command -v $compiler >/dev/null || continue
    for header in "$work"/prefix/include/vemo/*.h; do
        printf '#include <vemo/%s>\n' "${header##*/}" | $compiler -x c++ -std=c++20 -fsyntax-only -Wall -Wextra \
            -Werror -I"$work/prefix/include" - || { echo "${header##*/} does not compile alone with $compiler"; exit 1; }
    done
done
for header in vemo mx_decimal; do
    printf '#include <vemo/%s.h>\n' $header | cc -x c -std=c11 -fsyntax-only -Wall -Wextra -Wpedantic -Werror \
        -I"$work/prefix/include" -
done
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
c++ -std=c++20 "$here/main.cpp" -o "$work/program" $(pkg-config --define-prefix --cflags --libs vemo-cpp)
[ "$("$work/program")" = "12.7 cm" ]
# C needs the shared library alone.
cc -std=c11 -Wall -Wextra -Werror "$here/../../examples/c/lines.c" -o "$work/lines" \
    $(pkg-config --define-prefix --cflags --libs vemo)
lines=$(printf 'rent = 1200\nrent * 12\n1 / 0\n' | LD_LIBRARY_PATH=$(dirname "$config")/.. "$work/lines")
[ "$lines" = "1,200
14,400
! division by zero
total 15,600" ] || { echo "$lines"; exit 1; }
test -f "$work/prefix/share/man/man1/vemo.1"
grep -q '^\.SH "Percentages"' "$work/prefix/share/man/man7/vemo.7"

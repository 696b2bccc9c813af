#!/bin/sh
# The symbols of the shared library are those of the list, none more and none less: symbols.sh LIBRARY
# A symbol that goes, or changes what it means, breaks programs: that takes a new number of the library's name.
set -eu
list=$(dirname "$0")/symbols.txt
found=$(nm -D --defined-only "$1" | awk '{ sub(/@@?.*/, "", $3); if ($2 != "A") print $3 }' | LC_ALL=C sort)
printf '%s\n' "$found" | diff "$list" -

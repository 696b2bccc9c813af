#!/bin/sh
# For a launcher that runs a program for what is typed and shows its output: the answer, or why there is none. Nothing,
# and a failure, where the text is no calculation.
answer=$(vemo -r -q -e "$1" 2>/dev/null) && [ -n "$answer" ] && echo "$answer" && exit
reason=$(vemo -r -e "$1" 2>&1 >/dev/null | head -n 1)
[ -n "$reason" ] || exit 1
echo "${reason#vemo:1:1: }"

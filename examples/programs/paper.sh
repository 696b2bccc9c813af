#!/bin/sh
# Takes results into a script: a line for people, and a number to go on with. A calculation that has no result ends the
# script, since the command then fails. Call it with a length, such as paper.sh '8.5 in'.
set -eu
width=$(vemo -r "$1 in cm")
dots=$(vemo -r -q --plain --precision 0 "($1 in inch) * 300")
echo "$width, or ${dots% *} dots of a printer"

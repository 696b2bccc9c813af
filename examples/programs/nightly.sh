#!/bin/sh
# A job for cron: calculates a document and keeps the table of its results, as in
#   0 3 * * *  nightly.sh ~/budget.vemo ~/budget.csv
# The table is replaced as a whole, and stays as it was when something fails.
set -eu
document=$1 table=$2
new=$(mktemp "$table.XXXXXX")
trap 'rm -f "$new"' EXIT
vemo --format csv "$document" >"$new"
mv "$new" "$table"

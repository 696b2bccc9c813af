#!/usr/bin/env bash
# What somebody does on an evening, with keyboard and visible labels only: writes the budget of the README into the
# notepad, names a source of rates, exports the page as PDF, loses the process, starts it again and finds everything
# there. tools/notepad_errand.sh [PROGRAM]
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/build.sh"
install_packages "$root/packages-notepad.txt" "$root/tools/notepad_packages.txt"
program=${1:-$root/build/notepad/apps/notepad/vemo-notepad}
[ -x "$program" ] || build notepad vemo-notepad -DCMAKE_BUILD_TYPE=Release -DVEMO_BUILD_NOTEPAD=ON
failure=${VEMO_ERRAND_PICTURE:-/dev/null}
. "$root/tools/notepad_screen.sh"
screen 1280 960

# A source of rates on this machine.
mkdir "$work/rates"
cp "$root/examples/rates.json" "$work/rates/latest.json"
python3 -u -m http.server --bind 127.0.0.1 --directory "$work/rates" 0 >"$work/server.log" 2>&1 &
processes+=($!)
wait_for grep -q 'port [0-9]' "$work/server.log"
port=$(sed -n 's/.*port \([0-9]*\).*/\1/p' "$work/server.log" | head -1)

# says FILE TEXT…: the PDF has it all, whatever the blanks between
says() {
    local file=$1 text
    shift
    pdftotext -layout "$file" "$work/said.txt" || return 1
    for text in "$@"; do
        tr -s ' ' <"$work/said.txt" | grep -qF -- "$text" || { echo "not in the PDF: $text" >&2; return 1; }
    done
}

export_pdf() { # NAME
    press alt+f e p
    await_dialog Export
    press ctrl+a
    type_text "$work/$1"
    press Return
    wait_for test -s "$work/$1"
    sleep 0.3
    xdotool windowfocus --sync "$window"
}

open_notepad
press ctrl+a BackSpace
type_text "$(cat "$root/examples/budget.vemo")"
press Escape Return
type_text 'salary in EUR'
press Escape
sleep 1

# Edit > Settings, the tab of rates by its letter, the field by its letter.
press alt+e s
await_dialog Settings
press alt+t alt+r
type_text "http://127.0.0.1:$port/latest.json"
press Return
wait_for grep -q latest.json "$work/server.log"
wait_for grep -q "127.0.0.1:$port" "$XDG_CONFIG_HOME/vemo/config.toml"
sleep 1
xdotool windowfocus --sync "$window"

export_pdf first.pdf
says "$work/first.pdf" 'rent: $1,200 $1,200' 'groceries: $92.50 * 4 $370' 'tax = 21% of salary $714' \
    '20% of prev $208.20' 'salary in EUR €' 'Page 1 of 1' || fail "the PDF lacks something"

# A second later, the process is gone.
type_text ' // kept'
press Escape
sleep 1
close_notepad
open_notepad
sleep 1
export_pdf second.pdf
says "$work/second.pdf" 'rent: $1,200 $1,200' 'salary in EUR // kept €' || fail "something was lost"
# Undone and saved under a name from the window, the page is what the command reads.
press ctrl+s
await_dialog 'Save As'
press ctrl+a
type_text "$work/budget"
press Return
wait_for test -s "$work/budget.vemo"
diff <(cat "$root/examples/budget.vemo"; echo 'salary in EUR // kept') <(sed -e '$a\' "$work/budget.vemo") ||
    fail "the page is another one"
echo "The budget was written, exported, lost and found."

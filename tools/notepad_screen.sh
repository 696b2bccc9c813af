# Shared by the scripts that use the notepad as a person at a screen would: a screen of its own with a window manager, a
# home that nobody else uses, a keyboard, and pictures. To be sourced, with `root` set.

work=$(mktemp -d)
processes=()
trap 'for process in "${processes[@]}"; do kill -9 "$process"; wait "$process"; done 2>/dev/null; rm -rf "$work"' EXIT
# A folder of its own for everything that is kept.
export HOME=$work/home XDG_CONFIG_HOME=$work/config XDG_STATE_HOME=$work/state XDG_CACHE_HOME=$work/cache \
    XDG_RUNTIME_DIR=$work/runtime LANG=en_US.UTF-8 LC_ALL=C.UTF-8 TZ=UTC QT_QPA_PLATFORM=xcb QT_ENABLE_HIGHDPI_SCALING=1
mkdir -p "$HOME" "$XDG_CONFIG_HOME/vemo" "$XDG_STATE_HOME" "$XDG_CACHE_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
unset XDG_ACTIVATION_TOKEN DESKTOP_STARTUP_ID QT_SCALE_FACTOR QT_STYLE_OVERRIDE WAYLAND_DISPLAY

fail() {
    echo "$*" >&2
    [ -z "${DISPLAY:-}" ] || import -window root "${failure:-/dev/null}" 2>/dev/null
    exit 1
}

# wait_for COMMAND…: until it succeeds, at most 15 seconds
wait_for() {
    local tries
    for tries in $(seq 300); do
        "$@" >/dev/null 2>&1 && return
        sleep 0.05
    done
    fail "waited in vain for: $*"
}

# screen WIDTH HEIGHT
screen() {
    Xvfb -displayfd 3 -screen 0 "$1x$2x24" -dpi 96 -nolisten tcp 3>"$work/display" >"$work/screen.log" 2>&1 &
    processes+=($!)
    disown
    wait_for test -s "$work/display"
    DISPLAY=:$(cat "$work/display")
    export DISPLAY
    wait_for xdpyinfo
    openbox >"$work/windows.log" 2>&1 &
    processes+=($!)
    disown
    wait_for sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'
}

# open_notepad [ARGUMENTS…]: sets `notepad`, the process, and `window`
open_notepad() {
    "$program" "$@" 2>>"$work/notepad.log" &
    notepad=$!
    processes+=("$notepad")
    wait_for xdotool search --onlyvisible --pid "$notepad" --name Vemo
    window=$(xdotool search --onlyvisible --pid "$notepad" --name Vemo | head -1)
    xdotool windowfocus --sync "$window"
}

close_notepad() {
    kill -9 "$notepad" 2>/dev/null
    wait "$notepad" 2>/dev/null
    return 0
}

# A key of its own for every character that the keyboard lacks: one that is made while it is pressed comes too late.
keys_for() { # TEXT
    xmodmap -pke >"$work/keyboard"
    printf '%s' "$1" | python3 -c '
import re, sys
rows = re.findall(r"keycode +(\d+) =(.*)", open(sys.argv[1]).read())
known = " ".join(keys for _, keys in rows)
free = iter([code for code, keys in rows if not keys.strip() or "XF86" in keys])
for c in sorted(set(sys.stdin.read())):
    name = "U%04X" % ord(c)
    if ord(c) > 126 and name not in known:
        print("keycode", next(free), "=", name, name)
' "$work/keyboard" >"$work/keys"
    [ ! -s "$work/keys" ] || xmodmap "$work/keys"
}

# As fast as somebody in a hurry.
type_text() {
    local line first=1
    while IFS= read -r line || [ -n "$line" ]; do
        [ -n "$first" ] || press Return
        first=""
        [ -z "$line" ] || xdotool type --delay 12 -- "$line"
    done <<<"$1"
}
press() { xdotool key --delay 40 --clearmodifiers "$@"; }

# dialog TITLE: waits for it, and sets `dialog`
await_dialog() {
    wait_for xdotool search --onlyvisible --name "^$1"
    dialog=$(xdotool search --onlyvisible --name "^$1" | tail -1)
    xdotool windowfocus --sync "$dialog"
    sleep 0.2
}

# picture WINDOW FILE
picture() {
    sleep 0.4
    import -window "$1" "$2"
}

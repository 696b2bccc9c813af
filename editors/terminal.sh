# Shared by the scripts that look at an editor: a folder for its files, $work, and a terminal of 72 columns and 12 rows.
set -eu
folder=$(cd "${1:?the folder of the command vemo}" && pwd)
work=$(mktemp -d)
session="vemo-editor-$$"
trap 'terminal kill-server 2>/dev/null || true; rm -rf "$work"' EXIT
export HOME=$work PATH=$folder:$PATH LC_ALL=C.UTF-8

terminal() { tmux -L "$session" "$@"; }
start() { terminal -f /dev/null new-session -d -x 72 -y 12 "$1"; }
screen() { terminal capture-pane -p | sed 's/ *$//'; }
# Waits for a row that the pattern matches.
awaited() {
    for _ in $(seq 100); do
        screen | grep -qE "$1" && return
        sleep 0.2
    done
    echo "“$1” is not seen:" >&2
    screen >&2
    exit 1
}

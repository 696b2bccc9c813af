#!/usr/bin/env bash
# Types a line into Emacs with Eglot and looks for its result: editors/emacs/check.sh FOLDER-OF-VEMO. Needs tmux and Emacs,
# and before version 29 Debian's elpa-eglot.
set -eu
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
folder=$(cd "${1:?the folder of the command vemo}" && pwd)
work=$(mktemp -d)
session="vemo-check-$$"
trap 'tmux -L "$session" kill-server 2>/dev/null || true; rm -rf "$work"' EXIT
printf 'width = 6 ft\nwidth in cm\n' > "$work/notes.vemo"
cat > "$work/init.el" << LISP
(when (< emacs-major-version 29) (package-initialize))
(add-to-list 'load-path "$root/editors/emacs")
(setq inhibit-startup-screen t make-backup-files nil)
(require 'vemo-mode)
(add-hook 'vemo-mode-hook #'eglot-ensure)
LISP
export HOME=$work PATH=$folder:$PATH LC_ALL=C.UTF-8
tmux -L "$session" -f /dev/null new-session -d -x 72 -y 12 "emacs -nw -q -l $work/init.el $work/notes.vemo"
awaited() {
    for _ in $(seq 100); do
        tmux -L "$session" capture-pane -p | grep -qE "$1" && return
        sleep 0.2
    done
    echo "“$1” is not seen:" >&2
    tmux -L "$session" capture-pane -p >&2
    exit 1
}
awaited 'width in cm +182\.88 cm'
tmux -L "$session" send-keys 'M->'
tmux -L "$session" send-keys -l '10 / 4'
awaited '10 / 4 +2\.5'
tmux -L "$session" capture-pane -p | sed 's/ *$//; /^$/d'

#!/usr/bin/env bash
# Types a line into Emacs with Eglot and looks for its result: editors/emacs/check.sh FOLDER-OF-VEMO. Needs tmux and Emacs,
# and before version 29 Debian's elpa-eglot.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
. "$root/editors/terminal.sh"
printf 'width = 6 ft\nwidth in cm\n' > "$work/notes.vemo"
cat > "$work/init.el" << LISP
(when (< emacs-major-version 29) (package-initialize))
(add-to-list 'load-path "$root/editors/emacs")
(setq inhibit-startup-screen t make-backup-files nil)
(require 'vemo-mode)
(add-hook 'vemo-mode-hook #'eglot-ensure)
LISP
start "emacs -nw -q -l $work/init.el $work/notes.vemo"
awaited 'width in cm +182\.88 cm'
terminal send-keys 'M->'
terminal send-keys -l '10 / 4'
awaited '10 / 4 +2\.5'
screen | sed '/^$/d'

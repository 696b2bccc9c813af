#!/usr/bin/env bash
# Types a line into Vim with YouCompleteMe and looks for its result: editors/vim/check.sh FOLDER-OF-VEMO. Needs tmux and
# Debian's vim-nox and vim-youcompleteme.
set -eu
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
folder=$(cd "${1:?the folder of the command vemo}" && pwd)
work=$(mktemp -d)
session="vemo-check-$$"
trap 'tmux -L "$session" kill-server 2>/dev/null || true; rm -rf "$work"' EXIT
printf 'width = 6 ft\nwidth in cm\n' > "$work/notes.vemo"
cat > "$work/vimrc" << VIM
set nocompatible noswapfile
set runtimepath^=$root/editors/neovim
set runtimepath+=/usr/share/vim-youcompleteme
filetype plugin on
let g:ycm_server_python_interpreter = '/usr/bin/python3'
let g:ycm_language_server = [{
  \ 'name': 'vemo', 'cmdline': ['$folder/vemo', 'lsp', '--locale', 'en_US'], 'filetypes': ['vemo'] }]
let g:ycm_enable_inlay_hints = 1
VIM
export HOME=$work LC_ALL=C.UTF-8
tmux -L "$session" -f /dev/null new-session -d -x 72 -y 12 "vim.nox -u $work/vimrc $work/notes.vemo"
awaited() {
    for _ in $(seq 100); do
        tmux -L "$session" capture-pane -p | grep -qF "$1" && return
        sleep 0.2
    done
    echo "“$1” is not seen:" >&2
    tmux -L "$session" capture-pane -p >&2
    exit 1
}
awaited 'width in cm 182.88 cm'
tmux -L "$session" send-keys Go
tmux -L "$session" send-keys -l '10 / 4'
tmux -L "$session" send-keys Escape
awaited '10 / 4 2.5'
tmux -L "$session" capture-pane -p | sed 's/ *$//; /^~/d; /^$/d'

#!/usr/bin/env bash
# Types a line into Vim with YouCompleteMe and looks for its result: editors/vim/check.sh FOLDER-OF-VEMO. Needs tmux and
# Debian's vim-nox and vim-youcompleteme.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
. "$root/editors/terminal.sh"
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
start "vim.nox -u $work/vimrc $work/notes.vemo"
awaited 'width in cm 182\.88 cm'
terminal send-keys Go
terminal send-keys -l '10 / 4'
terminal send-keys Escape
awaited '10 / 4 2\.5'
screen | sed '/^~/d; /^$/d'

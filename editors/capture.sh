#!/usr/bin/env bash
# What Neovim shows while a document is typed, as text: editors/capture.sh FOLDER-OF-VEMO. Needs nvim and tmux.
set -eu
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
folder=$(cd "${1:?the folder of the command vemo}" && pwd)
work=$(mktemp -d)
session="vemo-capture-$$"
trap 'tmux -L "$session" kill-server 2>/dev/null || true; rm -rf "$work"' EXIT
printf '# Weekend\n' > "$work/weekend.vemo"
export HOME=$work XDG_CONFIG_HOME=$work PATH=$folder:$PATH LC_ALL=C.UTF-8
tmux -L "$session" -f /dev/null new-session -d -x 72 -y 12 "nvim --clean \
    --cmd 'set runtimepath^=$root/editors/neovim number laststatus=0 noshowmode noruler shortmess+=F' \
    --cmd \"lua require('vemo').setup({command = {'vemo', 'lsp', '--locale', 'en_US', '--timezone', 'UTC', '--now', '2026-11-24T13:00:00Z'}})\" \
    $work/weekend.vemo"
keys() { tmux -L "$session" send-keys "$@"; sleep 0.2; }
sleep 1
keys o
while IFS= read -r line; do
    keys -l "$line"
    keys Enter
done << 'LINES'
distance = 212 mi
distance in km
fuel: distance / 38 mpg * $3.89/gal
hotel = $129 * 2
12% of hotel
time in Tokyo
LINES
keys Escape
sleep 1
tmux -L "$session" capture-pane -p | sed 's/ *$//' | sed '/^~/d'

#!/usr/bin/env bash
# What Neovim shows while a document is typed, as text: editors/capture.sh FOLDER-OF-VEMO. Needs nvim and tmux.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/editors/terminal.sh"
printf '# Weekend\n' > "$work/weekend.vemo"
export XDG_CONFIG_HOME=$work
start "nvim --clean \
    --cmd 'set runtimepath^=$root/editors/neovim number laststatus=0 noshowmode noruler shortmess+=F' \
    --cmd \"lua require('vemo').setup({command = {'vemo', 'lsp', '--locale', 'en_US', '--timezone', 'UTC', '--now', '2026-11-24T13:00:00Z'}})\" \
    $work/weekend.vemo"
keys() { terminal send-keys "$@"; sleep 0.2; }
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
screen | sed '/^~/d'

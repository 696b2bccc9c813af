#!/usr/bin/env bash
# Writes a page into the notepad as a person would, on a screen of its own, and takes pictures: at 100 % and 200 %, light
# and dark, in English, German and Japanese, then dialogs and bars. tools/notepad_tour.sh FOLDER [PROGRAM]
# The picture of the README is light-en-100.png: with --readme it is taken alone, and written to docs/notepad.png.
set -u
root=$(cd "$(dirname "$0")/.." && pwd)
. "$root/scripts/build.sh"
install_packages "$root/packages-notepad.txt" "$root/tools/notepad_packages.txt"
folder=$(mkdir -p "${1:?a folder for the pictures}" && cd "$1" && pwd)
program=${2:-$root/build/notepad/apps/notepad/vemo-notepad}
[ -x "$program" ] || build notepad vemo-notepad -DCMAKE_BUILD_TYPE=Release -DVEMO_BUILD_NOTEPAD=ON
failure=$folder/failure.png
. "$root/tools/notepad_screen.sh"
screen 1640 1160

text_en='# Weekend in the mountains
distance = 212 mi
distance in km
6'\''2" in cm
time: distance / 55 mph

# What it costs
fuel: distance / 38 mpg * $3.89/gal
hotel = 95 EUR * 2
dinner: $64 + 18%   // with the tip
lift tickets = 4 * $42
20% off $180'
text_de='# Wochenende in den Bergen
Strecke = 340 km
Strecke in Meilen
6 Fuß 2 Zoll in cm

# Was es kostet
Benzin: Strecke * 6,2 l/100 km * 1,79 €/l
Hotel = 129 € * 2
12 % von Hotel   // Frühbucher
Essen: 64 € + 10 %
Skipass = 4 * 42 €'
text_ja='# 10月の家計
家賃: 85,000円
食費: 6,200円 * 4
電話 = 3,500円
合計

# 週末
距離 = 340 km
距離をマイルで
60平方メートルは何坪
ホテル = 12,800円 * 2
ホテルの10%'

# configure LOCALE THEME
configure() {
    rm -rf "$XDG_STATE_HOME"/vemo
    printf 'locale = "%s"\nlanguage = "%s"\nrates = "%s"\n\n[notepad]\ntheme = "%s"\n' "$1" "${1%_*}" \
        "$root/examples/rates.json" "$2" >"$XDG_CONFIG_HOME/vemo/config.toml"
}

# An empty page in place of the welcome.
empty_page() {
    press ctrl+a BackSpace
}

# size SCALE: of the window
size() {
    xdotool windowsize --sync "$window" $((760 * $1)) $((430 * $1))
    xdotool windowmove "$window" 40 60
}

write_page() { # LOCALE THEME SCALE
    local text=text_${1%_*}
    configure "$1" "$2"
    [ "$3" = 1 ] && unset QT_SCALE_FACTOR || export QT_SCALE_FACTOR=$3
    open_notepad
    size "$3"
    empty_page
    keys_for "${!text}"
    type_text "${!text}"
    press Escape
    sleep 1
}

if [ "$folder" = "$root/docs" ]; then
    write_page en_US light 1
    picture "$window" "$folder/notepad.png"
    close_notepad
    exit
fi

for theme in light dark; do
    for locale in en_US de_DE ja_JP; do
        for scale in 1 2; do
            write_page $locale $theme $scale
            picture "$window" "$folder/$theme-${locale%_*}-${scale}00.png"
            close_notepad
        done
    done
done
unset QT_SCALE_FACTOR

# Dialogs and bars, light and dark.
for theme in light dark; do
    write_page en_US $theme 1
    press Return
    type_text 'Rent * 12
5 kg + 3 m
dist'
    sleep 0.5
    picture root "$folder/$theme-completion.png"
    press Escape ctrl+f
    type_text 'dist'
    picture "$window" "$folder/$theme-find.png"
    press Escape ctrl+l ctrl+a
    picture "$window" "$folder/$theme-selection.png"
    press Escape Up ctrl+comma
    await_dialog Settings
    for tab in 1 2 3 4; do
        picture "$dialog" "$folder/$theme-settings-$tab.png"
        press ctrl+Tab
    done
    press Escape
    sleep 0.3
    printf '1 + 1\n' >"$work/theirs.vemo"
    "$program" "$work/theirs.vemo"
    sleep 0.5
    type_text '9'
    printf '1 + 2\n' >"$work/theirs.vemo"
    sleep 0.8
    picture "$window" "$folder/$theme-notice.png"
    press alt+f
    picture root "$folder/$theme-menu.png"
    press Escape Escape ctrl+w
    sleep 0.5
    picture root "$folder/$theme-question.png"
    close_notepad
done
echo "pictures are in $folder"

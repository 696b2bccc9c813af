#!/bin/sh
# In a bare Debian: installs the packages of /packages, uses each, and removes them.
set -eu
[ "$0" = /use.sh ] && [ -d /packages ] || { echo "packaging/check.sh runs this in a system of its own" >&2; exit 2; }
same() { [ "$1" = "$2" ] || { echo "'$1' is not '$2'"; exit 1; }; }
find / -xdev -not -path '/proc/*' -not -path '/var/*' -not -path '/etc/*' | sort >/var/before
apt-get update -qq
apt-get install -y -qq --no-install-recommends /packages/*.deb gcc libc6-dev pkg-config >/var/log/install 2>&1 ||
    { cat /var/log/install; exit 1; }
dpkg -V vemo libvemo0 libvemo-dev python3-vemo | grep -v ' /usr/share/\(doc\|man\)/' && exit 1

# The command, and what belongs to it.
same "$(vemo -r -e '5 inch in cm')" "12.7 cm"
for file in man/man1/vemo.1.gz man/man7/vemo.7.gz bash-completion/completions/vemo zsh/vendor-completions/_vemo \
    fish/vendor_completions.d/vemo.fish org.kde.syntax-highlighting/syntax/vemo.xml nvim/site/ftplugin/vemo.vim \
    emacs/site-lisp/vemo-mode.el vemo/editors/README.md; do
    [ -e "/usr/share/$file" ] || echo "$file" >>/var/missing # a minimal system leaves manual pages out
done
grep -v '^man/' /var/missing 2>/dev/null && exit 1

# A program in C, with what pkg-config says.
cc -std=c11 -Wall -Wextra -Werror /examples/c/lines.c -o /tmp/lines $(pkg-config --cflags --libs vemo)
same "$(printf 'rent = 1200\nrent * 12\n' | /tmp/lines | tail -n 1)" "total 15,600"

# Python, its tests and its example.
same "$(/usr/bin/python3 -c 'import vemo; print(vemo.Engine(language="en").calculate("5 inch in cm")[0].number)')" 12.7
/usr/bin/python3 -B -m unittest discover -s /tests/python 2>/var/log/python || { cat /var/log/python; exit 1; }
/usr/bin/python3 /examples/python/add_column.py /examples/python/trips.csv /tmp/out.csv miles '{distance} in mi' 2>/dev/null
same "$(sed -n 3p /tmp/out.csv | tr -d '\r')" "Coast,540 km,335.54 mi"

# The notepad, where it was built.
[ ! -e /packages/vemo-notepad_* ] || QT_QPA_PLATFORM=offscreen vemo-notepad --version

# All of it goes.
rm /tmp/lines /tmp/out.csv
apt-get purge -y -qq vemo libvemo0 libvemo-dev python3-vemo $(dpkg-query -W -f='${Package} ' 'vemo-notepad' 2>/dev/null) \
    >/var/log/purge 2>&1 || { cat /var/log/purge; exit 1; }
if command -v vemo; then exit 1; fi
left=$(find / -xdev -not -path '/proc/*' -not -path '/var/*' -not -path '/etc/*' | sort | comm -13 /var/before - |
    grep -i vemo || true)
same "$left" ""

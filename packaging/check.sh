#!/usr/bin/env bash
# Makes the packages, and on a bare Debian installs them from their files, uses them, and removes them. As root; needs
# debootstrap, lintian, and a mirror of Debian, which DEBIAN_MIRROR may name: packaging/check.sh [CMAKE OPTIONS…], such as
# -DVEMO_BUILD_NOTEPAD=ON.
set -eu
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
mirror=${DEBIAN_MIRROR:-http://deb.debian.org/debian}
"$here/build.sh" "$@"
packages=$here/../build/package/packages
lintian --allow-root --fail-on error "$packages"/*.deb

# The archive of sources builds outside a repository.
work=$(mktemp -d)
bare=$work/bare
trap 'umount "$bare/proc" 2>/dev/null || true; rm -rf --one-file-system "$work"' EXIT
tar -C "$work" -xf "$packages"/*.tar.xz
cmake -G Ninja -S "$work"/vemo-* -B "$work/build" -DCMAKE_BUILD_TYPE=Release >"$work/log"
ninja -C "$work/build" vemo-cli >"$work/log" || { tail -n 30 "$work/log"; exit 1; }
[ "$("$work/build/vemo" -r -e '5 inch in cm')" = "12.7 cm" ]

debootstrap --variant=minbase bookworm "$bare" "$mirror" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
mkdir "$bare/packages"
cp "$packages"/*.deb "$bare/packages"
cp -r "$here/../examples" "$bare/examples"
mkdir "$bare/tests"
cp -r "$here/../tests/python" "$bare/tests/python"
cp "$here/use.sh" "$bare/use.sh"
cp /etc/resolv.conf "$bare/etc/" 2>/dev/null || true
mount -t proc proc "$bare/proc" 2>/dev/null || true
chroot "$bare" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive /use.sh
echo "the packages of $(basename "$packages"/*.tar.xz .tar.xz) can be installed, used and removed"

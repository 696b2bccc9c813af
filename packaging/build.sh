#!/usr/bin/env bash
# Makes the Debian packages and the archive of sources: packaging/build.sh [CMAKE OPTIONS…], such as
# -DVEMO_BUILD_NOTEPAD=ON. They are in build/package/packages in the end.
set -eu
. "$(dirname "${BASH_SOURCE[0]}")/../scripts/build.sh"
build package all -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr "$@"
cd "$root/build/package"
rm -rf packages
{ cpack && cpack --config CPackSourceConfig.cmake; } >cpack.log 2>&1 || { cat cpack.log >&2; exit 1; }
ls "$root"/build/package/packages/*.*

# Shared by ./run and ./test: installs what is missing, configures and builds. Chatter goes to standard error.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# install_packages FILE…, each with names of Debian packages
install_packages() {
    local wanted missing=() name
    wanted=$(sed 's/#.*//' "$@")
    for name in $wanted; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return
    if [ "$(id -u)" -ne 0 ]; then
        echo "These Debian packages are missing: ${missing[*]}" >&2
        exit 1
    fi
    {
        apt-get update -qq
        DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
    } >&2
}

# build FOLDER TARGET [CMAKE OPTIONS…]
build() {
    local folder=$root/build/$1 target=$2 log
    shift 2
    install_packages "$root/packages.txt"
    log=$(cmake -G Ninja -S "$root" -B "$folder" "$@" 2>&1) || { echo "$log" >&2; exit 1; }
    log=$(ninja -C "$folder" -n "$target" 2>&1) || true
    case $log in *"no work to do"*) return ;; esac
    ninja -C "$folder" "$target" >&2 || exit 1
}

# shellcheck shell=bash
# What the scripts share; sourced, never run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

die() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "needs root or sudo to run: $*"
    fi
}

# Installs those of the packages that are missing; does nothing, and needs no rights, when none is.
install_packages() {
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    command -v apt-get >/dev/null || die "needs these Debian packages: ${missing[*]}"
    echo "Installing ${missing[*]}"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq update
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq install -y --no-install-recommends "${missing[@]}" >/dev/null
}

# Configures a preset and builds the targets named after it, or all; quiet unless it fails.
build_preset() {
    local preset=$1 log=$root/build/$1.log
    shift
    mkdir -p "$root/build"
    echo "Building preset $preset (log: build/$preset.log)"
    if ! { cd "$root" && cmake --preset "$preset" &&
        cmake --build --preset "$preset" ${1+--target "$@"}; } >"$log" 2>&1; then
        tail -n 60 "$log" >&2
        die "preset $preset does not build; the whole output is in build/$preset.log"
    fi
}

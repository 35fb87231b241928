# Shared by the scripts beside it: says what is done, installs what is missing, configures, builds.
# shellcheck shell=bash

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

preset="${TAVIX_PRESET:-release}"
build_dir="build/$preset"

say() { printf '== %s\n' "$*"; }

die() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

trap 'printf "error: \"%s\" failed (line %s of %s)\n" "$BASH_COMMAND" "$LINENO" "$0" >&2' ERR

# What building and testing needs, as Debian 12 names it.
packages=(
    g++ cmake ninja-build ccache pkg-config
    libopencv-core-dev libopencv-imgproc-dev libopencv-imgcodecs-dev
    libhwy-dev libtinyxml-dev libzip-dev qt6-base-dev libgtest-dev libbenchmark-dev
)

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Abbrev}' "$1" 2>/dev/null)" = "ii " ]
}

# install_missing PACKAGE...: installs those that are not there, as root or through sudo.
install_missing() {
    if ! command -v dpkg-query >/dev/null; then
        say "this is not Debian: install by hand what is missing of: $*"
        return
    fi
    local missing=() package
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            die "these packages are missing and there is neither root nor sudo: ${missing[*]}"
        as_root=(sudo)
    fi
    say "installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq || die "apt-get update failed"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
        die "could not install: ${missing[*]}"
}

# build [TARGET...]: configures the preset where that was not done yet, and builds.
build() {
    local targets=()
    [ $# -eq 0 ] || targets=(--target "$@")
    if [ ! -f "$build_dir/build.ninja" ]; then
        say "configuring $build_dir"
        mkdir -p build
        cmake --preset "$preset" >"$build_dir.log" 2>&1 || {
            cat "$build_dir.log" >&2
            die "configuring failed"
        }
    fi
    say "building $build_dir"
    cmake --build "$build_dir" "${targets[@]}" || die "building failed"
}

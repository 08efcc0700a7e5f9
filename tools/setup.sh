# SPDX-License-Identifier: MIT
# Sourced by ./run, ./test and .ci/run: installs Debian packages that are missing, and builds.

build_packages=(g++ cmake ninja-build qtbase5-dev libqt5serialport5-dev libqt5svg5-dev fonts-dejavu-core)
test_packages=(ser2net libhamlib-utils)
display_packages=(xvfb openbox xdotool imagemagick)
check_packages=(ccache clang-format clang-tidy)
qt6_packages=(qt6-base-dev qt6-serialport-dev qt6-svg-dev)

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Abbrev}' "$1" 2>/dev/null | cut -c1-2)" = ii ]
}

# install_missing PACKAGE...: quick and silent when everything is there.
install_missing() {
    local missing=() package as_root=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "Run this as root once, or install: ${missing[*]}" >&2
            return 1
        }
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q </dev/null >/dev/null
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${missing[@]}" </dev/null
}

# build PRESET [TARGET...]
build() {
    local preset=$1 log=build/configure-$1.log
    shift
    mkdir -p build
    cmake --preset "$preset" >"$log" 2>&1 || {
        cat "$log"
        return 1
    }
    cmake --build --preset "$preset" ${1:+--target "$@"}
}

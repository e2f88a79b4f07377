# Shared by the scripts in this folder; sourced, not run.
# The lists of packages are found by their names.
# shellcheck shell=bash disable=SC2034

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$*" >&2; }
die() { say "error: $*"; exit 1; }

# For what drives the application on a virtual display, or needs tools that only Linux has.
require_linux() { [ "$(uname)" = Linux ] || die "${0##*/} runs on Linux only"; }

has() { command -v "$1" > /dev/null 2>&1; }

jobs() { nproc 2> /dev/null || sysctl -n hw.ncpu; }

# Debian and Ubuntu package names, by what they are needed for.
debian_build="ca-certificates ccache cmake g++ git libgl-dev libsimdjson-dev ninja-build patchelf
    pkg-config qcoro-qt6-dev qt6-base-dev qt6-base-dev-tools qt6-translations-l10n"
debian_run="libqt6svg6 procps python3 qt6-qpa-plugins qt6-wayland tar zsh"
# What a release archive brings besides.
debian_package="dpkg-dev fcitx5-frontend-qt6 file qt6-xdgdesktopportal-platformtheme"
# A virtual display, something to drive it and look at it with, and fonts for three languages.
debian_display="at-spi2-core dbus fonts-dejavu-core fonts-inter fonts-liberation fonts-noto-cjk
    python3-dbus python3-gi python3-xlib xvfb"
debian_test="appstream desktop-file-utils gpg gpg-agent lintian mandoc mold openssl python3-yaml
    weston xz-utils"
debian_lint="clang clang-format clang-tidy clazy shellcheck"
debian_bench="libbenchmark-dev"
debian_fuzz="clang libclang-rt-dev llvm"

# The header package of Qt SVG is called differently from release to release.
qt_svg_package() {
    local name
    for name in qt6-svg-dev libqt6svg6-dev; do
        if apt-cache show "$name" > /dev/null 2>&1; then
            printf '%s' "$name"
            return
        fi
    done
    printf 'qt6-svg-dev'
}

homebrew_build="ccache cmake ninja pkgconf qcoro6 qtbase qtsvg qttranslations simdjson"

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif has sudo; then
        sudo "$@"
    else
        die "installing packages needs root: run this as root, or install sudo: $*"
    fi
}

is_installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2> /dev/null)" = installed ]; }

install_debian() {
    local missing=() name
    for name in "$@"; do
        is_installed "$name" || missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "Installing ${missing[*]} …"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    local i
    for i in "${!missing[@]}"; do
        [ "${missing[$i]}" != QT_SVG ] || missing[i]=$(qt_svg_package)
    done
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" > /dev/null
}

# install_packages GROUP...   (groups: build run package display test lint bench fuzz)
install_packages() {
    local group
    if has apt-get; then
        local names=""
        for group in "$@"; do
            local variable="debian_$group"
            names="$names ${!variable}"
            # Which of the two names is right is known only once the package lists are there.
            if [ "$group" = build ] && ! is_installed qt6-svg-dev && ! is_installed libqt6svg6-dev; then
                names="$names QT_SVG"
            fi
        done
        # shellcheck disable=SC2086
        install_debian $names
    elif has brew; then
        local formula
        for formula in $homebrew_build; do
            brew list --formula "$formula" > /dev/null 2>&1 || brew install "$formula"
        done
    else
        say "Neither apt-get nor brew is here: the packages named in docs/building.md have to be installed already."
    fi
}

# What build() tells CMake beyond the preset.
configure_options=()

# build PRESET [TARGET...]
build() {
    local preset=$1 target arguments=()
    shift
    for target in "$@"; do arguments+=(--target "$target"); done
    (
        cd "$root"
        cmake --preset "$preset" ${configure_options[@]+"${configure_options[@]}"} \
            > "$root/.configure.log" 2>&1 ||
            { cat "$root/.configure.log" >&2; rm -f "$root/.configure.log"; exit 1; }
        rm -f "$root/.configure.log"
        cmake --build --preset "$preset" --parallel "$(jobs)" ${arguments[@]+"${arguments[@]}"}
    )
}

# The executable inside the bundle that a preset builds.
built_app() {
    local bundle="$root/build/$1/Lumora.app/Contents"
    if [ -x "$bundle/MacOS/Lumora" ]; then
        printf '%s' "$bundle/MacOS/Lumora"
    else
        printf '%s' "$bundle/bin/Lumora"
    fi
}

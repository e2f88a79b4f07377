# How a Debian package is made; sourced by scripts/package.
# shellcheck shell=bash disable=SC2154

# make_deb BUILD_DIR OUTPUT EPOCH: of what is built in BUILD_DIR, or, if that is empty, anew
make_deb() {
    local build_dir=$1 output=$2 stage package
    # Folders in the package are as everywhere.
    umask 022
    if [ -z "$build_dir" ]; then
        install_packages build run package
        build package >&2
        build_dir="$root/build/package"
    fi
    [ -d "$build_dir/icons" ] || die "there is no whole build in $build_dir"
    has dpkg-shlibdeps || die "dpkg-shlibdeps is missing: apt-get install dpkg-dev file"
    name_unset_addresses "$build_dir"
    stage=$(mktemp -d)
    # shellcheck disable=SC2064
    trap "rm -rf '$stage'" EXIT
    SOURCE_DATE_EPOCH=$3 cpack --config "$build_dir/CPackConfig.cmake" -G DEB -B "$stage" >&2
    package=$(find "$stage" -maxdepth 1 -name '*.deb')
    mkdir -p "$output"
    mv "$package" "$output"
    printf '%s\n' "$output/${package##*/}"
}

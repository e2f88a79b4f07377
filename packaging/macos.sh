# How a bundle becomes complete on macOS; sourced by scripts/package.
# shellcheck shell=bash

complete_bundle() {
    local contents="$1/Contents" icons size
    icons=$(mktemp -d)/Lumora.iconset
    mkdir -p "$icons"
    for size in 16 32 128 256; do
        # shellcheck disable=SC2154
        sips -z "$size" "$size" "$root/assets/Lumora.png" \
            --out "$icons/icon_${size}x${size}.png" > /dev/null
    done
    iconutil -c icns -o "$contents/Resources/Lumora.icns" "$icons"
    rm -rf "${icons%/*}"

    macdeployqt "$1" -always-overwrite -executable="$contents/MacOS/lumora-askpass" >&2
    # Without an identity: it only keeps the system from taking the bundle for a damaged one.
    codesign --force --deep --sign - "$1" >&2
}

# pack FOLDER EPOCH
pack() {
    (
        cd "$1" || exit
        find Lumora.app -exec touch -h -t "$(date -r "$2" +%Y%m%d%H%M.%S)" {} +
        find Lumora.app | LC_ALL=C sort |
            COPYFILE_DISABLE=1 tar --no-recursion --uid 0 --gid 0 --no-xattrs -cf - -T -
    )
}

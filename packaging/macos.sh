# How a bundle becomes complete on macOS; sourced by scripts/package. Of the environment:
#
#   LUMORA_SIGNING_IDENTITY   a Developer ID; without one the bundle is signed for nobody in
#                             particular, which only keeps the system from taking it for damaged
#   LUMORA_NOTARY_PROFILE     what "xcrun notarytool store-credentials" keeps under this name,
#   LUMORA_NOTARY_KEYCHAIN    in this keychain (the user's own without it): asks for the notary's
#                             ticket, and puts it into the bundle
# shellcheck shell=bash

sign() {
    local identity=${LUMORA_SIGNING_IDENTITY:--} options=(--force)
    # The notary wants both of what is signed by somebody.
    [ "$identity" = - ] || options+=(--timestamp --options runtime)
    codesign "${options[@]}" --sign "$identity" "$@" >&2
}

complete_bundle() {
    local contents="$1/Contents" name
    macdeployqt "$1" -always-overwrite -executable="$contents/MacOS/lumora-askpass" \
        -executable="$contents/MacOS/lumora-fetch" >&2

    # From the inside out: a signature holds those of what is in it.
    find "$contents" -name '*.dylib' -type f | while IFS= read -r name; do sign "$name"; done
    for name in "$contents"/Frameworks/*.framework; do
        [ ! -e "$name" ] || sign "$name"
    done
    for name in lumora-askpass lumora-fetch; do sign "$contents/MacOS/$name"; done
}

# seal_bundle FOLDER: what comes after the last change of a file in it
seal_bundle() {
    local upload keychain=()
    sign "$1"
    codesign --verify --deep --strict "$1" >&2
    [ -n "${LUMORA_NOTARY_PROFILE:-}" ] || return 0

    [ -z "${LUMORA_NOTARY_KEYCHAIN:-}" ] || keychain=(--keychain "$LUMORA_NOTARY_KEYCHAIN")
    upload="${1%.app}.zip"
    ditto -c -k --keepParent "$1" "$upload"
    xcrun notarytool submit "$upload" --wait --keychain-profile "$LUMORA_NOTARY_PROFILE" \
        ${keychain[@]+"${keychain[@]}"} >&2
    rm "$upload"
    xcrun stapler staple "$1" >&2
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

# The checksum of a file, as `shasum --check` reads it.
sha256() { shasum -a 256 "$1"; }

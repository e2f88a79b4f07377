# How a bundle becomes complete on Linux; sourced by scripts/package.
# shellcheck shell=bash

# Qt's plugins that are needed, and why; the last ones where they are packaged.
plugins=(
    platforms/libqxcb.so                # X11
    platforms/libqwayland-generic.so    # Wayland: the window,
    wayland-shell-integration/libxdg-shell.so # its place on the desktop,
    wayland-decoration-client/libbradient.so # its title bar where the desktop draws none
    wayland-graphics-integration-client/libqt-plugin-wayland-egl.so # without it there is none
    platforms/libqoffscreen.so          # without a display, for scripts
    platforminputcontexts/libcomposeplatforminputcontextplugin.so
    platforminputcontexts/libibusplatforminputcontextplugin.so # Korean and Japanese
    tls/libqopensslbackend.so           # the self-updater's https
)
plugins_where_packaged=(
    platforminputcontexts/libfcitx5platforminputcontextplugin.so # Korean and Japanese, too
    platformthemes/libqxdgdesktopportal.so # the desktop's wishes by its portal
)

# Names, without the comments and reasons.
# shellcheck disable=SC2154
mapfile -t system_libraries < <(
    sed -n 's/^\([^# ][^ ]*\) .*/\1/p' "$root/packaging/system-libraries.txt"
)

is_system_library() {
    local pattern
    for pattern in "${system_libraries[@]}"; do
        # shellcheck disable=SC2053
        [[ $1 != $pattern ]] || return 0
    done
    return 1
}

# Where the loader finds what these files need, directly or not: lines of a name and a path.
found_libraries() {
    ldd "$@" 2> /dev/null | sed -n 's/^\t\([^ ]*\) => \(\/[^ ]*\) .*/\1 \2/p' | LC_ALL=C sort -u
}

# The names of what these files need themselves.
needed_names() {
    local file
    for file in "$@"; do patchelf --print-needed "$file"; done | LC_ALL=C sort -u
}

# The package that each of these files is from.
packages_of() {
    local file line paths=()
    local -A owners
    for file in "$@"; do
        file=$(readlink -f "$file")
        paths+=("${file#/usr}")
    done
    # The database may know a file by its path before or after /lib became a link to /usr/lib.
    while IFS= read -r line; do
        file=${line##*: }
        owners[${file#/usr}]=${line%%[:,]*}
    done < <(dpkg-query -S "${paths[@]}" "${paths[@]/#//usr}" 2> /dev/null)
    for file in "${paths[@]}"; do
        [ -n "${owners[$file]:-}" ] || die "$file belongs to no package: its licence is not known"
        printf '%s\n' "${owners[$file]}"
    done
}

# gather_licences FOLDER FILE...: the conditions under which FILEs may be passed on. Prints name and
# version of the source packages they are made of.
gather_licences() {
    local folder=$1 packages package text
    shift
    has dpkg-query || die "without dpkg nobody knows the licences of the bundled libraries"
    packages=$(packages_of "$@" | LC_ALL=C sort -u)
    for package in $packages; do
        text="/usr/share/doc/$package/copyright"
        [ -e "$text" ] || die "$package has no licence at $text"
        cp "$text" "$folder/$package.txt"
    done
    # shellcheck disable=SC2016,SC2086
    dpkg-query -W -f '${source:Package} ${source:Version}\n' $packages | LC_ALL=C sort -u
}

# offer_sources SOURCES: what their licences want to be said; SOURCES are lines of name and version
offer_sources() {
    local system
    system=$(sed -n 's/^PRETTY_NAME="\(.*\)"$/\1/p' /etc/os-release)
    cat <<EOT
Lumora's own source is at $(setting LUMORA_REPOSITORY_URL);
LICENSE, beside this folder, has its terms.

The folders lib and plugins, and Qt's texts in the programs, come from packages of
$system. But for the libraries' run paths, which were taken out, they are as
they were there. This folder has a file of terms for each package, named after it. Any of the
libraries may be replaced by a changed one with the same interface: the programs take what they
find in lib.

These are the source packages, with everything needed to build them, by name and version. The
system's own archive has them, and its archive of snapshots keeps them. Besides, for three years
from the day this archive was published, whoever has published it gives them to anybody who asks
for them at $(setting LUMORA_CONTACT_ADDRESS), for no more than sending them costs.

$1
EOT
}

# Licences that the packages only refer to.
copy_common_licences() {
    local folder=$1 name
    { grep -ohE '/usr/share/common-licenses/[A-Za-z0-9.+-]*[A-Za-z0-9]' "$folder"/*.txt || true; } |
        LC_ALL=C sort -u |
        while IFS= read -r name; do
            [ ! -f "$name" ] || cp -L "$name" "$folder/${name##*/}"
        done
}

complete_bundle() {
    local contents="$1/Contents" source_plugins plugin name path sources
    local programs=("$contents"/bin/{Lumora,lumora-askpass,lumora-fetch})
    local libraries="$contents/lib" licences="$contents/Resources/licences"
    mkdir -p "$libraries" "$licences"
    strip "${programs[@]}"

    source_plugins=$(qtpaths6 --query QT_INSTALL_PLUGINS 2> /dev/null ||
        qmake6 -query QT_INSTALL_PLUGINS)
    for plugin in "${plugins[@]}"; do
        [ -e "$source_plugins/$plugin" ] || die "Qt's plugin $plugin is not in $source_plugins"
    done
    local files=("${programs[@]}") brought=()
    for plugin in "${plugins[@]}" "${plugins_where_packaged[@]}"; do
        [ -e "$source_plugins/$plugin" ] || continue
        mkdir -p "$contents/plugins/${plugin%/*}"
        cp -L "$source_plugins/$plugin" "$contents/plugins/$plugin"
        brought+=("$source_plugins/$plugin")
        files+=("$contents/plugins/$plugin")
    done

    local -A places
    while read -r name path; do places[$name]=$path; done < <(found_libraries "${files[@]}")
    # What a library of the system's needs is the system's as well, so ldd's list is too long.
    local needing=("${files[@]}") found
    while [ ${#needing[@]} -gt 0 ]; do
        found=()
        while read -r name; do
            if is_system_library "$name" || [ -e "$libraries/$name" ]; then continue; fi
            path=${places[$name]:-}
            [ -n "$path" ] || die "$name is needed, and the loader doesn't find it"
            cp -L "$path" "$libraries/$name"
            brought+=("$path")
            found+=("$libraries/$name")
        done < <(needed_names "${needing[@]}")
        needing=(${found[@]+"${found[@]}"})
    done
    # Built into the programs.
    brought+=("$(setting LUMORA_QT_TRANSLATIONS)/qtbase_ko.qm")
    sources=$(gather_licences "$licences" "${brought[@]}")
    copy_common_licences "$licences"
    offer_sources "$sources" > "$licences/SOURCES"

    # A run path of a library's own, such as libproxy's, would keep the executable's from it.
    patchelf --remove-rpath "$libraries"/* "${files[@]:${#programs[@]}}"

    printf '[Paths]\nPrefix = ..\nLibraries = lib\nPlugins = plugins\n' > "$contents/bin/qt.conf"
}

# pack FOLDER EPOCH
pack() {
    tar --sort=name --format=gnu --owner=0 --group=0 --numeric-owner --mtime="@$2" \
        --mode=u=rwX,go=rX -C "$1" -cf - Lumora.app
}

# The checksum of a file, as `sha256sum --check` reads it.
sha256() { sha256sum "$1"; }

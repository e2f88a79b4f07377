# How a bundle becomes complete on Linux; sourced by scripts/package.
# shellcheck shell=bash

# Libraries that every desktop system has, and that have to be the system's own. Everything
# else that Lumora or a plugin needs comes along.
system_libraries=(
    # The C and C++ run-time: newer systems run what older ones have built, but the system's
    # graphics drivers don't run on an older C++ run-time.
    ld-linux*.so.* libc.so.6 libm.so.6 libdl.so.2 libpthread.so.0 librt.so.1 libresolv.so.2
    libstdc++.so.6 libgcc_s.so.1
    # OpenGL, as far as it belongs to the drivers. (libOpenGL is a thin front that many
    # desktops lack.)
    libGL.so.1 libEGL.so.1 libGLX.so.0 libGLdispatch.so.0 libgbm.so.1 libdrm.so.2
    # The X client libraries that the drivers use in the same process.
    libX11.so.6 libX11-xcb.so.1 libxcb.so.1 libXau.so.6 libXdmcp.so.6 libXext.so.6 libbsd.so.0
    libmd.so.0
    # The drivers use Wayland's in the same process, too.
    libwayland-client.so.0 libwayland-egl.so.1
    # Fonts: they read the system's configuration and cache, whose format is theirs; the rest
    # of these come with them.
    libfontconfig.so.1 libfreetype.so.6 libexpat.so.1 libpng16.so.16 libbrotlidec.so.1
    libbrotlicommon.so.1 libbz2.so.1.0 libz.so.1
    # Part of every desktop session, and loading modules of the system's.
    libglib-2.0.so.0 libgobject-2.0.so.0 libgio-2.0.so.0 libgmodule-2.0.so.0 libgthread-2.0.so.0
    libffi.so.*
    # The session's bus, and what the system has built it on.
    libdbus-1.so.3 libsystemd.so.0 libcap.so.2 libgcrypt.so.20 libgpg-error.so.0 liblz4.so.1
    liblzma.so.5
    # In every installation: dpkg, the file systems and the security modules need them.
    libzstd.so.1 libcom_err.so.2 libuuid.so.1 libblkid.so.1 libmount.so.1 libselinux.so.1
    libpcre2-8.so.0
    # Encryption gets its security updates from the system.
    libssl.so.3 libcrypto.so.3
)

# Plugins that are needed, where this Qt has them, and why.
plugins=(
    platforms/libqxcb.so                # X11
    platforms/libqwayland-generic.so    # Wayland, and what it loads itself
    platforms/libqwayland-egl.so
    wayland-shell-integration/libxdg-shell.so
    wayland-decoration-client/libbradient.so
    wayland-graphics-integration-client/libqt-plugin-wayland-egl.so
    platforms/libqoffscreen.so          # without a display, for scripts
    xcbglintegrations/libqxcb-egl-integration.so
    xcbglintegrations/libqxcb-glx-integration.so
    platforminputcontexts/libcomposeplatforminputcontextplugin.so
    platforminputcontexts/libibusplatforminputcontextplugin.so # Korean and Japanese
    tls/libqopensslbackend.so           # the self-updater's https
)

is_system_library() {
    local pattern
    for pattern in "${system_libraries[@]}"; do
        # shellcheck disable=SC2053
        [[ $1 != $pattern ]] || return 0
    done
    return 1
}

# Where the needed libraries of these files are: lines of a name and a path.
needed_libraries() {
    ldd "$@" 2> /dev/null | sed -n 's/^\t\([^ ]*\) => \(\/[^ ]*\) .*/\1 \2/p' | LC_ALL=C sort -u
}

# The package that a library belongs to. The database may know it by its path before or
# after /lib became a link to /usr/lib.
package_of() {
    local path candidate
    path=$(readlink -f "$1")
    for candidate in "$path" "${path#/usr}"; do
        if dpkg-query -S "$candidate" 2> /dev/null | sed -n '1s/[:,].*//p'; then
            return
        fi
    done
}

# copy_licence FILE FOLDER: the conditions under which FILE may be passed on
copy_licence() {
    local package text
    has dpkg-query || die "without dpkg nobody knows the licences of the bundled libraries"
    package=$(package_of "$1")
    [ -n "$package" ] || die "$1 belongs to no package: its licence is not known"
    text="/usr/share/doc/$package/copyright"
    [ -e "$text" ] || die "$package has no licence at $text"
    [ -e "$2/$package.txt" ] || cp "$text" "$2/$package.txt"
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
    local contents="$1/Contents" translations=$2 source_plugins plugin name path
    local programs=("$contents/bin/Lumora" "$contents/bin/lumora-askpass")
    local libraries="$contents/lib" licences="$contents/Resources/licences"
    mkdir -p "$libraries" "$licences"
    strip "${programs[@]}"

    source_plugins=$(qtpaths6 --query QT_INSTALL_PLUGINS 2> /dev/null ||
        qmake6 -query QT_INSTALL_PLUGINS)
    local files=("${programs[@]}")
    for plugin in "${plugins[@]}"; do
        [ -e "$source_plugins/$plugin" ] || continue
        mkdir -p "$contents/plugins/${plugin%/*}"
        cp -L "$source_plugins/$plugin" "$contents/plugins/$plugin"
        copy_licence "$source_plugins/$plugin" "$licences"
        files+=("$contents/plugins/$plugin")
    done
    [ -e "$contents/plugins/platforms/libqxcb.so" ] ||
        die "Qt's plugin for X11 is not in $source_plugins"

    while read -r name path; do
        is_system_library "$name" && continue
        cp -L "$path" "$libraries/$name"
        copy_licence "$path" "$licences"
    done < <(needed_libraries "${files[@]}")
    # Built into the programs.
    copy_licence "$translations/qtbase_ko.qm" "$licences"
    copy_common_licences "$licences"

    # A run path of a library's own, such as libproxy's, would keep the executable's from it.
    patchelf --remove-rpath "$libraries"/* "${files[@]:${#programs[@]}}"

    printf '[Paths]\nPrefix = ..\nLibraries = lib\nPlugins = plugins\n' > "$contents/bin/qt.conf"
}

# pack FOLDER EPOCH
pack() {
    tar --sort=name --format=gnu --owner=0 --group=0 --numeric-owner --mtime="@$2" \
        --mode=u=rwX,go=rX -C "$1" -cf - Lumora.app
}

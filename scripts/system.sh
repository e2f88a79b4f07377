# A bare Debian system to try things in; sourced after lib.sh, with the name of the folder below
# build/ for what was printed. Of the caller's: suite, cache (a folder or nothing) and keep (yes
# or no).
# shellcheck shell=bash disable=SC2154

[ "$(id -u)" -eq 0 ] || die "making a system needs root"
has debootstrap || die "debootstrap is missing: apt-get install debootstrap"

logs="$root/build/$1"
rm -rf "$logs"
mkdir -p "$logs"
if [ -n "$cache" ]; then
    mkdir -p "$cache"
    cache=$(cd "$cache" && pwd)
    mkdir -p "$cache/archives-$suite/partial"
    mkdir -p "$cache/ccache-$suite"
    chmod 1777 "$cache/ccache-$suite"
fi

# The log of what has to succeed before anything can be tried.
preparing=
prepare_by() {
    preparing="$logs/prepare.log"
    "$@" >> "$preparing" 2>&1
    preparing=
}

place=$(mktemp -d /var/tmp/lumora-try.XXXXXX)
system="$place/$suite"
leave() {
    if [ -n "$preparing" ]; then
        tail -n 20 "$preparing" >&2
        say "error: making the system failed, see $preparing"
    fi
    # Whatever was mounted in it went with the namespace it was mounted in.
    if [ "$keep" = yes ]; then
        say "The system is in $system."
    else
        rm -rf --one-file-system "$place"
    fi
}
trap leave EXIT

# Where this machine has its Debian packages from; nothing where it isn't a Debian.
mirror() {
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' 2> /dev/null |
        grep -m 1 -E '/debian/?$' || true
}

bootstrap() {
    local from
    from=$(mirror)
    debootstrap --variant=minbase "$suite" "$1" ${from:+"$from"}
}

# inside COMMAND...: runs it as root in the system. What it starts and what is mounted for it
# ends with it. The root is a real one, since nobody may have a namespace in a chroot.
inside() {
    # shellcheck disable=SC2016
    unshare --mount --pid --fork --kill-child --propagation private bash -euc '
        system=$1 cache=$2 recorded=$3
        shift 3
        mount --bind "$system" "$system"
        cd "$system"
        mkdir -p mnt/host mnt/ccache mnt/recorded
        mount --rbind /dev dev
        mount -t devpts -o newinstance,ptmxmode=0666,mode=0620,gid=5 devpts dev/pts
        mount -t tmpfs -o mode=1777 shm dev/shm
        mount -t proc proc proc
        if [ -n "$cache" ]; then
            mount --bind "$cache/archives-${system##*/}" var/cache/apt/archives
            mount --bind "$cache/ccache-${system##*/}" mnt/ccache
        fi
        [ -z "$recorded" ] || mount --bind -o ro "$recorded" mnt/recorded
        pivot_root . mnt/host
        cd /
        umount -l /mnt/host
        # The shell stays, as the first process: somebody has to wait for orphans.
        exec env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive \
            sh -c "\"\$@\"; exit \$?" sh "$@"
    ' try-on "$system" "$cache" "${LUMORA_RECORDED:-}" "$@"
}

install_inside() { inside apt-get install -y -qq --no-install-recommends "$@"; }

# Makes the system, ready for packages.
make_bare_system() {
    if [ -z "$cache" ]; then
        bootstrap "$system"
    else
        if [ ! -d "$cache/$suite" ]; then
            rm -rf "$cache/$suite.part"
            bootstrap "$cache/$suite.part"
            mv "$cache/$suite.part" "$cache/$suite"
        fi
        cp -a "$cache/$suite" "$system"
        # Kept for the next try, too.
        echo 'Binary::apt::APT::Keep-Downloaded-Packages "true";' \
            > "$system/etc/apt/apt.conf.d/80keep"
    fi
    cp /etc/resolv.conf "$system/etc/resolv.conf"
    echo "127.0.0.1 localhost $(hostname)" > "$system/etc/hosts"
    apt-config dump | grep -iE '^Acquire::https?::(.*::)?Proxy ' \
        > "$system/etc/apt/apt.conf.d/80proxy" || true

    inside apt-get update -qq
}

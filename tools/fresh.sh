#!/usr/bin/env bash
# fresh.sh: tries the committed state as a newcomer would, on a machine that holds nothing yet.
#
# A minimal root of a Debian release is made, a user who may become root clones the project into it and runs the two
# commands of the README; then the program is built with that release's clang as well. Mounts and processes live in
# namespaces of their own, so that the kernel ends them with the run, however that ends.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

readonly releases=(bookworm trixie forky)
readonly mirror=${DEBIAN_MIRROR:-http://deb.debian.org/debian}
readonly folder=$PWD/build/fresh
readonly home=/home/newcomer

usage() {
    cat <<'HELP'
usage: tools/fresh.sh [--bench] [bookworm|trixie|forky]...
Makes a minimal root of each release (all three if none is named) below build/fresh, clones the last commit into it,
and runs ./dev run and ./dev test there; then builds everything with the release's clang. --bench runs ./dev bench as
well. Downloaded packages and what the compilers made are kept in build/fresh for the next time (remove build/fresh/ccache to
see how long a first build takes), and the root of the last run for a look.
DEBIAN_MIRROR says where packages come from.
HELP
}

say() { printf '\033[1m%s\033[0m\n' "$*" >&2; }
fail() { printf 'fresh: %s\n' "$*" >&2; exit 1; }

# make_root RELEASE: an empty machine with git, sudo, and a bundle of the last commit.
make_root() {
    local release=$1 root=$folder/$1/root packages=$folder/packages/$1 script=()
    # A release newer than this machine's debootstrap is made as the development release is.
    [[ -e /usr/share/debootstrap/scripts/$release ]] || script=(/usr/share/debootstrap/scripts/sid)
    rm -rf --one-file-system "$root"
    mkdir -p "$root" "$packages"
    debootstrap --variant=minbase --include=ca-certificates,git,sudo --cache-dir="$packages" \
        "$release" "$root" "$mirror" ${script[@]+"${script[@]}"} >"$folder/$release/debootstrap.log" 2>&1 ||
        fail "no root of $release could be made: $(grep -m1 '^E:' "$folder/$release/debootstrap.log" || tail -n1 "$folder/$release/debootstrap.log")"
    cp /etc/resolv.conf "$root/etc/resolv.conf"
    # Only apt keeps quiet about the age of what a mirror serves; a machine whose clock is off still gets packages.
    printf 'Acquire::Check-Valid-Until "false";\nAcquire::Check-Date "false";\n' >"$root/etc/apt/apt.conf.d/99fresh"
    printf 'LANG=C.UTF-8\n' >"$root/etc/default/locale"
    chroot "$root" useradd --create-home --shell /bin/bash newcomer
    printf 'newcomer ALL=(ALL) NOPASSWD: ALL\n' >"$root/etc/sudoers.d/newcomer"
    git bundle create --quiet "$root$home/amperly.bundle" HEAD
    mkdir -p "$root$home/.cache/ccache" "$folder/ccache/$release"
    chroot "$root" chown -R newcomer: "$home"
    chown "$(stat -c %u:%g "$root$home")" "$folder/ccache/$release"
}

# as_newcomer ROOT COMMANDS: what a login shell runs, with its environment and nothing of ours.
as_newcomer() {
    chroot "$1" /usr/bin/env -i /usr/bin/su --login newcomer --command "$2" </dev/null
}

# timed NAME COMMAND...: tells how long it took, or what it said last.
timed() {
    local name=$1 log=$folder/$release/$1.log start=$SECONDS
    shift
    if "$@" >"$log" 2>&1; then
        say "$release: $name passes, $(((SECONDS - start) / 60)) min $(((SECONDS - start) % 60)) s"
    else
        tail -n 40 "$log" >&2
        fail "$release: $name failed; all it said is in $log"
    fi
}

# try_release RELEASE BENCH: runs as the first process of namespaces of its own.
try_release() {
    release=$1
    local root=$folder/$1/root
    say "$release: making a root"
    make_root "$release"
    mount --types proc proc "$root/proc"
    mount --rbind --make-rslave /sys "$root/sys"
    mount --types devpts -o newinstance,ptmxmode=0666,mode=0620,gid=5 devpts "$root/dev/pts"
    mount --types tmpfs -o mode=1777 shm "$root/dev/shm"
    mount --types tmpfs -o mode=0755 run "$root/run"
    mkdir -p "$root/run/lock"
    mount --bind "$folder/packages/$release" "$root/var/cache/apt/archives"
    mount --bind "$folder/ccache/$release" "$root$home/.cache/ccache"
    timed clone as_newcomer "$root" "git clone --quiet amperly.bundle amperly"
    timed run as_newcomer "$root" "cd amperly && ./dev run"
    timed test as_newcomer "$root" "cd amperly && ./dev test"
    timed clang as_newcomer "$root" "cd amperly && ./dev packages build test lint && cmake --preset clang && cmake --build --preset clang && ctest --preset clang -LE desktop -j$(nproc)"
    if [[ $2 == bench ]]; then timed bench as_newcomer "$root" "cd amperly && ./dev bench"; fi
    say "$release: $(chroot "$root" dpkg-query -W -f '${Package} ${Version}\n' g++ clang qt6-base-dev libicu-dev python3 | paste -sd, | sed 's/,/, /g')"
    grep -c -h 'warning:' "$folder/$release"/{run,test,clang}.log | paste -sd' ' |
        { read -r run test clang; say "$release: warnings of the compilers: g++ $((run + test)), clang $clang"; }
}

bench=no
chosen=()
for argument in "$@"; do
    case $argument in
        -h | --help) usage; exit 0 ;;
        --bench) bench=bench ;;
        --inside) [[ $$ == 1 ]] || fail "--inside is for this script's own use"; try_release "$2" "$3"; exit 0 ;;
        bookworm | trixie | forky) chosen+=("$argument") ;;
        *) usage >&2; fail "there is no release '$argument' here" ;;
    esac
done
((${#chosen[@]})) || chosen=("${releases[@]}")

if ((EUID != 0)); then
    command -v sudo >/dev/null || fail "making a root needs root, and sudo is not here"
    exec sudo --preserve-env=DEBIAN_MIRROR "$0" "$@"
fi
command -v debootstrap >/dev/null || fail "debootstrap is not installed; ./dev fresh installs it"
[[ -z $(git -c safe.directory="$PWD" status --porcelain) ]] || say "What is not committed is left out."
for release in "${chosen[@]}"; do
    unshare --mount --propagation private --pid --fork --kill-child "$0" --inside "$release" "$bench"
done

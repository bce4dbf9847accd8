#!/usr/bin/env bash
# Runs a command inside the i386 root that scripts/get-i386-root.sh makes, in the same folder and
# with the same files: in-i386-root.sh <folder> <command...>
# <folder> is visible inside besides /tmp and the repository. The mounts live in a mount namespace
# of this command only, and are gone with it.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

[ $# -ge 2 ] || { echo "usage: ${0##*/} <folder> <command...>" >&2; exit 2; }
extra=$1
shift

namespace=(unshare --mount --propagation slave)
[ "$(id -u)" -eq 0 ] || namespace=(unshare --mount --map-root-user --propagation slave)

# shellcheck disable=SC2016  # The inner shell expands its own variables.
exec "${namespace[@]}" bash -c '
    set -e
    root=$1 folder=$2
    shift 2
    while [ "$1" != -- ]; do
        [ -d "$root$1" ] || mkdir -p "$root$1"
        mount --rbind "$1" "$root$1"
        shift
    done
    shift
    exec chroot "$root" bash -c '\''cd "$0" && exec "$@"'\'' "$folder" "$@"
' bash "$i386_root" "$PWD" /proc /dev /tmp "$top" "$extra" -- "$@"

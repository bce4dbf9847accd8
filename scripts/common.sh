# Read by the other scripts: where things are, and how they speak.
# shellcheck shell=bash
# shellcheck disable=SC2034  # The variables are for the readers.

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cache=${XDG_CACHE_HOME:-$HOME/.cache}/corvane-to-3cx
i386_root=$cache/i386-root

say() { printf '== %s\n' "$*" >&2; }
fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# as_root <command...>: the command with the rights that installing packages takes.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        fail "neither root nor sudo: cannot run $*"
    fi
}

# try_thrice <command...>: networks fail now and then.
try_thrice() {
    local attempt
    for attempt in 1 2 3; do
        "$@" && return 0
        [ "$attempt" -eq 3 ] || sleep $((attempt * 5))
    done
    return 1
}

# wait_until <what> <command...>: polls, and gives up after as many seconds as patience says, or 30.
wait_until() {
    local what=$1 deadline=$((SECONDS + ${patience:-30}))
    shift
    until "$@"; do
        [ "$SECONDS" -lt "$deadline" ] || fail "waited in vain until $what"
        sleep 0.1
    done
}

# program_version: as the top-level CMakeLists.txt has it.
program_version() { sed -n 's/^project(CorvaneTo3CX VERSION \([0-9.]*\) .*/\1/p' "$top/CMakeLists.txt"; }

# release_time: what the files of a release bear, in seconds; that of the last commit when none is set,
# and of the changelog where there are no commits.
release_time() {
    echo "${SOURCE_DATE_EPOCH:-$(git -C "$top" log -1 --format=%ct 2>/dev/null ||
        stat -c %Y "$top/CHANGELOG.md")}"
}

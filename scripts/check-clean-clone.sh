#!/usr/bin/env bash
# Clones what is committed into a temporary folder and runs ./test.sh there, with its arguments.
# Shows whether anything that the build or the tests need was left uncommitted.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
git clone --quiet "$top" "$work/clone"
say "testing $(git -C "$work/clone" log -1 --format='%h %s') in a fresh clone"
"$work/clone/test.sh" "$@"
if [ -n "$(git -C "$work/clone" status --porcelain)" ]; then
    git -C "$work/clone" status --short
    fail "building and testing left files that git does not know"
fi

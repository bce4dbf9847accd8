#!/usr/bin/env bash
# Runs a Windows x86 program under Wine: wine-x86.sh <program.exe> [arguments...]
# Standard streams, arguments and exit code pass through. Outside of a desktop session
# (scripts/with-desktop.sh) it makes one for this program alone; a caller who sets both DISPLAY and
# CORVANE_WINEPREFIX looks after the desktop himself.
set -euo pipefail
# shellcheck source=scripts/wine-common.sh
. "$(dirname "$0")/wine-common.sh"

if [ "${CORVANE_DESKTOP:-}" != x86 ] && [ -z "${CORVANE_WINEPREFIX:+${DISPLAY:-}}" ]; then
    exec "$top/scripts/with-desktop.sh" x86 "$0" "$@"
fi
use_wine x86
run_program "$@"

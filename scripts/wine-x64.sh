#!/usr/bin/env bash
# Runs a Windows x64 program under Wine: wine-x64.sh <program.exe> [arguments...]
# Standard streams, arguments and exit code pass through. Outside of a desktop session
# (scripts/with-desktop.sh) it makes one for this program alone; a caller who sets both DISPLAY and
# CORVANE_WINEPREFIX looks after the desktop himself.
set -euo pipefail
# shellcheck source=scripts/wine-common.sh
. "$(dirname "$0")/wine-common.sh"

if [ "${CORVANE_DESKTOP:-}" != x64 ] && [ -z "${CORVANE_WINEPREFIX:+${DISPLAY:-}}" ]; then
    exec "$top/scripts/with-desktop.sh" x64 "$0" "$@"
fi
use_wine x64
run_program "$@"

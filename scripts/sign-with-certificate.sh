#!/usr/bin/env bash
# Signs Windows programs in their places, one command to give to the release as CORVANE_SIGN:
# sign-with-certificate.sh <program...>
#   CORVANE_CERTIFICATE   the certificate with its key, as a PKCS #12 file
#   CORVANE_PASSWORD      a file that holds its password
#   CORVANE_TIMESTAMP     address of a time stamp service; without one, a signature ends with its
#                         certificate, and is the same each time
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

[ $# -ge 1 ] || { echo "usage: ${0##*/} <program...>" >&2; exit 2; }
: "${CORVANE_CERTIFICATE:?names no certificate}" "${CORVANE_PASSWORD:?names no file with its password}"
options=(-pkcs12 "$CORVANE_CERTIFICATE" -readpass "$CORVANE_PASSWORD" -h sha256 -n "Halvorn Corvane to 3CX")
if [ -n "${CORVANE_TIMESTAMP:-}" ]; then
    options+=(-ts "$CORVANE_TIMESTAMP")
else
    options+=(-time "$(release_time)")
fi
for program in "$@"; do
    osslsigncode sign "${options[@]}" -in "$program" -out "$program.signed" >/dev/null ||
        fail "could not sign $program"
    mv -f "$program.signed" "$program"
done

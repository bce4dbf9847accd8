#!/usr/bin/env bash
# What scripts/package.sh makes of the x86 build: the same bytes under other circumstances, nothing
# that tells of the machine, and signatures where a command for them is named.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd -P)
# shellcheck source=scripts/common.sh
. "$here/../../scripts/common.sh"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed() { echo "FAILED: $*" >&2; exit 1; }
export SOURCE_DATE_EPOCH=1700000000
name=CorvaneTo3CX-$(program_version)

# package <folder>, quietly.
package() { "$top/scripts/package.sh" "$work/$1" >"$work/log" 2>&1 || failed "$(cat "$work/log")"; }
(umask 027 && TZ=Asia/Tokyo LC_ALL=C package first)
sleep 2 # the coarsest time that any of the formats keeps
package second
diff -r "$work/first" "$work/second" || failed "the same sources gave other bytes"
(cd "$work/first" && sha256sum --check --quiet SHA256SUMS) || failed "the checksums are wrong"
[ "$(wc -l <"$work/first/SHA256SUMS")" -eq "$(find "$work/first" -type f ! -name SHA256SUMS | wc -l)" ] ||
    failed "not every file has its checksum"
grep -q "^- " "$work/first/$name-release-notes.md" || failed "the release notes say nothing"
! grep -rq '@[A-Z0-9]*@' "$work/first/winget" || failed "the winget manifest has places left open"
grep -qi "Sha256: $(sha256sum "$work/first/$name-setup.exe" | cut -d' ' -f1)" "$work/first/winget/"*.installer.yaml ||
    failed "winget is told of another set-up"

# unpacked <folder>: every program that is given out, in one folder.
unpacked() {
    unzip -q "$work/$1/$name-practice-kit.zip" -d "$work/$1/programs"
    cp "$work/$1/$name-setup.exe" "$work/$1/programs/"
}
unpacked first
for program in "$work"/first/programs/*.exe; do
    ! grep -qaF "$top" "$program" || failed "$program names the folder of its sources"
    header=$(od -An -tu4 -j60 -N4 "$program")
    stamp=$(od -An -tu4 -j$((header + 8)) -N4 "$program")
    # The set-up's own is the one of NSIS.
    [ "$stamp" -eq 0 ] || [[ $program == *-setup.exe ]] || failed "$program bears the time of its making"
done

openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=throw-away -addext extendedKeyUsage=codeSigning \
    -keyout "$work/key.pem" -out "$work/certificate.pem" 2>/dev/null
echo secret >"$work/password"
openssl pkcs12 -export -inkey "$work/key.pem" -in "$work/certificate.pem" -out "$work/certificate.p12" \
    -passout "file:$work/password"
export CORVANE_CERTIFICATE=$work/certificate.p12 CORVANE_PASSWORD=$work/password
SOURCE_DATE_EPOCH=$(date +%s) CORVANE_SIGN=$top/scripts/sign-with-certificate.sh package signed
unpacked signed
for program in "$work"/signed/programs/*.exe; do
    osslsigncode verify -CAfile "$work/certificate.pem" -in "$program" >"$work/log" 2>&1 ||
        failed "$program is not signed: $(cat "$work/log")"
done
! osslsigncode verify -CAfile "$work/certificate.pem" -in "$work/first/programs/gmw.exe" >/dev/null 2>&1 ||
    failed "the verification lets everything pass"

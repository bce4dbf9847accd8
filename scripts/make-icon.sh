#!/usr/bin/env bash
# Draws src/resources/CorvaneTo3CX.ico anew from the SVG beside it; run it after changing the SVG.
# Needs the Debian packages librsvg2-bin and imagemagick.
set -euo pipefail
cd "$(dirname "$0")/../src/resources"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for size in 16 20 24 32 48 64 256; do
    rsvg-convert --width "$size" --height "$size" --output "$work/$(printf %03d "$size").png" \
        CorvaneTo3CX.svg
done
# ImageMagick stores the 256 pixel picture as PNG, which Windows reads and which keeps the file small.
convert "$work"/*.png -strip CorvaneTo3CX.ico

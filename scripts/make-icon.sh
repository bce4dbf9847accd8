#!/usr/bin/env bash
# Draws src/resources/CorvaneTo3CX.ico anew from the SVG beside it. Run it after changing the SVG.
set -euo pipefail
cd "$(dirname "$0")/../src/resources"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# Each size is drawn large and scaled down, which keeps the edges of the small ones clear.
for size in 16 20 24 32 48 64 256; do
    convert -background none -density 768 CorvaneTo3CX.svg -resize "${size}x$size" -depth 8 \
        -strip "PNG32:$work/$(printf %03d "$size").png"
done
# The large picture goes in as PNG (Windows Vista and later read it), which keeps the file small.
convert "$work"/*.png CorvaneTo3CX.ico

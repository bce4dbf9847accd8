#!/usr/bin/env bash
# Fails when a C++ file is not laid out as .clang-format says.
set -euo pipefail
cd "$(dirname "$0")/.."
folders=()
for folder in src standin tests; do
    [ ! -d "$folder" ] || folders+=("$folder")
done
find "${folders[@]}" \( -name '*.cpp' -o -name '*.h' \) -print0 |
    xargs -0 --no-run-if-empty clang-format --dry-run -Werror

#!/usr/bin/env bash
# Makes pages for a browser out of Markdown: render-pages.sh <output folder> <page.md...>
# Links among the pages lead to each other; links to what is not among them become plain text.
set -euo pipefail
# shellcheck source=scripts/common.sh
. "$(dirname "$0")/common.sh"

[ $# -ge 2 ] || { echo "usage: ${0##*/} <output folder> <page.md...>" >&2; exit 2; }
output=$1
shift
mkdir -p "$output"
pages=$(printf '%s\n' "$@" | sed 's|.*/||')
for page in "$@"; do
    name=$(basename "$page" .md)
    {
        printf '<!DOCTYPE html>\n<html lang="en">\n<meta charset="utf-8">\n<title>%s</title>\n' \
            "$(sed -n '1s/^# //p' "$page")"
        cat "$top/packaging/documentation/style.html"
        cmark-gfm --extension table "$page" | PAGES=$pages perl -0pe '
            BEGIN { $is_page{$_} = 1 for split /\n/, $ENV{PAGES} }
            # As a public host names them.
            sub anchor { my $id = lc shift; $id =~ s/<[^>]*>|&\w+;//g; $id =~ s/[^\w\- ]//g; $id =~ tr/ /-/; $id }
            s{<h([1-6])>(.*?)</h\1>}{"<h$1 id=\"" . anchor($2) . "\">$2</h$1>"}gse;
            s{<a href="(?!https?:|#)([^"#]*)(#[^"]*)?">(.*?)</a>}{
                my ($to, $at, $text) = ($1, $2 // "", $3);
                $is_page{$to} ? "<a href=\"" . $to =~ s/\.md$/.html/r . "$at\">$text</a>" : $text}gse;'
        echo '</html>'
    } >"$output/$name.html"
done

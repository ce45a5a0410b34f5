#!/bin/sh
# Copies the chosen Breeze icons (sources.txt) into svg/ and renders them to the PNG files that the
# console compiles in: Qt's SVG support is not part of the build, so the pictures travel as PNG.
# Needs breeze-icon-theme and librsvg2-bin (rsvg-convert).
set -e
cd "$(dirname "$0")"
theme=/usr/share/icons/breeze
grep -v '^#' sources.txt | while read -r key file; do
    [ -n "$key" ] || continue
    cp "$theme/$file" "svg/$key.svg"
    size=64
    [ "$key" = Hand ] && size=32
    rsvg-convert -w $size -h $size "svg/$key.svg" -o "$key.png"
done

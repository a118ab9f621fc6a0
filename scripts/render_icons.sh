#!/usr/bin/env bash
# Draws the PNG icons of the plug-in, at single and at double size, from their SVG sources.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh icons
cd resources/images
for svg in *.svg; do
    name=${svg%.svg}
    rsvg-convert -w 32 -h 32 -o "$name.png" "$svg"
    rsvg-convert -w 64 -h 64 -o "$name@2x.png" "$svg"
done

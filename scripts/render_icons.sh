#!/usr/bin/env bash
# Draws the PNG icons from their SVG sources: those of the plug-in at single and at double size, those of the
# desktop in the sizes of the theme hicolor.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh icons
cd resources/images
for svg in *.svg; do
    name=${svg%.svg}
    rsvg-convert -w 32 -h 32 -o "$name.png" "$svg"
    rsvg-convert -w 64 -h 64 -o "$name@2x.png" "$svg"
done

cd ../..
for size in 16 22 24 32 48 64 128 256; do
    folder=app/desktop/hicolor/${size}x$size
    mkdir -p "$folder/apps" "$folder/mimetypes"
    rsvg-convert -w $size -h $size -o "$folder/apps/korvane.png" app/window/icons/korvane.svg
    name=mimetypes/application-x-korvane-project
    rsvg-convert -w $size -h $size -o "$folder/$name.png" "app/desktop/hicolor/scalable/$name.svg"
done

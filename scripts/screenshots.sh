#!/usr/bin/env bash
# Takes the pictures of the manual (docs/images) anew, on a display that nobody sees.
#
# usage: screenshots.sh [FOLDER [all]]     "all" takes more states of the main window than the manual shows;
#                                          QT_SCALE_FACTOR=2 in the environment takes them at double size
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install_dependencies.sh screenshots
cmake --preset dev >/dev/null
cmake --build --preset dev --target screenshots
folder=${1:-docs/images}
mkdir -p "$folder"
LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 3200x2400x24" \
    build/dev/bin/screenshots "$folder" ${2:+"$2"}

# The page of an entity, where what opens it in a browser is there: ctest --preset dev -L browser installs it.
driver=build/dev/tests/browser/driver
if command -v chromium >/dev/null && [ -f "$driver/installed.json" ]; then
    site=$(mktemp -d)
    build/dev/bin/korvane document build/dev/share/korvane/samples/festival.korv -o "$site"
    for colours in light dark; do
        node tests/browser/site_check.mjs "$PWD/$driver" "$(command -v chromium)" "$site" \
            picture entity-14.html "$folder/document_$colours.png" 1100 900 "$colours"
    done
    rm -r "$site"
fi

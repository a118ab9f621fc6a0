#!/usr/bin/env bash
# Takes the pictures of the manual (docs/images) anew, on a display that nobody sees.
# Needs the Debian packages xvfb, xauth and fonts-dejavu-core.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --preset dev >/dev/null
cmake --build --preset dev --target screenshots
mkdir -p docs/images
LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1600x1200x24" build/dev/bin/screenshots docs/images

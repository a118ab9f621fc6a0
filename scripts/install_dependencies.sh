#!/usr/bin/env bash
# Installs the Debian 12 packages that are missing: what the build needs, with "test" what the tests need, with "check"
# what scripts/check.sh needs besides, with "fuzz" what the preset of that name needs, with "screenshots" and
# "icons" what scripts/screenshots.sh and scripts/render_icons.sh need.
set -euo pipefail

build=(build-essential cmake ninja-build ccache mold qt6-base-dev qt6-declarative-dev qt6-svg-dev
    qt6-base-private-dev qt6-declarative-private-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
    libqt6sql6-sqlite libboost-serialization-dev libcli11-dev libkainjow-mustache-dev nlohmann-json3-dev libsqlite3-dev zlib1g-dev
    cmark-gfm graphviz qt6-translations-l10n)
tests=(appstream bash-completion chromium clang-format desktop-file-utils doxygen eatmydata fish git libqt6sql6-mysql
    libqt6sql6-psql man-db mariadb-server postgresql-15 python3-jsonschema python3-yaml shared-mime-info sqlfluff sqlite3
    zsh)
checks=(clang-tidy-19 clang-tools-19 clazy cmake-format codespell cppcheck gcovr python3-yaml shellcheck similarity-tester)
fuzzers=(clang-19 libclang-rt-19-dev)
packagers=(lintian mmdebstrap)
pictures=(fonts-dejavu-core xauth xvfb)
icons=(librsvg2-bin)

packages=("${build[@]}")
if [ "${1:-}" = test ]; then
    packages+=("${tests[@]}")
    # A Node.js from elsewhere serves as well.
    command -v node >/dev/null || packages+=(nodejs)
    command -v npm >/dev/null || packages+=(npm)
fi
if [ "${1:-}" = check ]; then
    packages+=("${checks[@]}")
fi
if [ "${1:-}" = package ]; then
    packages+=("${packagers[@]}")
fi
if [ "${1:-}" = fuzz ]; then
    packages+=("${fuzzers[@]}")
fi
if [ "${1:-}" = screenshots ]; then
    packages+=("${pictures[@]}")
fi
if [ "${1:-}" = icons ]; then
    packages=("${icons[@]}")
fi
missing=()
for package in "${packages[@]}"; do
    state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    if [ "$state" != installed ]; then
        missing+=("$package")
    fi
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi
echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
    as_root=(sudo)
fi
"${as_root[@]}" apt-get update -qq
# No server is to be started by its package: the tests start private ones.
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null

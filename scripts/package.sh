#!/usr/bin/env bash
# Builds the packages for Debian, and the archive of the sources, into a folder. The same sources make the same bytes.
#
# usage: package.sh [FOLDER]     (default: build/packages)
set -euo pipefail
cd "$(dirname "$0")/.."
target=$(realpath -m "${1:-build/packages}")
scripts/install_dependencies.sh package
# Everything that has a time has that of the version.
SOURCE_DATE_EPOCH=$(date --utc --date="$(sed -n 's/^set(KORVANE_RELEASE_DATE \(.*\))/\1/p' CMakeLists.txt)" +%s)
export SOURCE_DATE_EPOCH QT_RCC_SOURCE_DATE_OVERRIDE=$SOURCE_DATE_EPOCH
# What was compiled in one folder is the same in another one.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
cmake --preset package >/dev/null
cmake --build --preset package
mkdir -p "$target"
umask 022
(cd build/package && cpack -G DEB -B "$target" && cpack --config CPackSourceConfig.cmake -G TGZ -B "$target")
rm -rf "$target/_CPack_Packages"
ls -l "$target"

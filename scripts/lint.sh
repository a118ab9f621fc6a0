#!/usr/bin/env bash
# Runs clang-tidy on the sources of program, library and plug-in; needs a configured "dev" build.
# usage: lint.sh [FILE…]
set -euo pipefail
cd "$(dirname "$0")/.."
files=("$@")
if [ ${#files[@]} -eq 0 ]; then
    mapfile -t files < <(find app host plugin view -name '*.cpp' | sort)
fi
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" "${CLANG_TIDY:-clang-tidy-19}" --quiet -p build/dev

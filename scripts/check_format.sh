#!/usr/bin/env bash
# Fails when a C++ file is not formatted as .clang-format says; "--fix" formats instead.
set -euo pipefail
cd "$(dirname "$0")/.."
# Not only what git tracks: a file that was just written counts as well.
mapfile -t files < <(find app benchmarks check database docs host plugin tests view -name '*.h' -o -name '*.cpp' -o -name '*.c' | sort)
if [ "${1:-}" = --fix ]; then
    clang-format -i "${files[@]}"
else
    clang-format --dry-run --Werror "${files[@]}"
fi

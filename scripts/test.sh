#!/usr/bin/env bash
# Builds everything and runs all tests.
#
# usage: test.sh [PRESET]     PRESET: dev (default), release or sanitize
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-dev}
scripts/install_dependencies.sh test
scripts/check_format.sh
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"
ctest --preset "$preset"

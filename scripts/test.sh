#!/usr/bin/env bash
# Builds everything and runs all tests.
#
# usage: test.sh [PRESET]     PRESET: coverage (default), dev, release or sanitize
#
# The default is what is built in the least time; scripts/check_coverage.py tells which branches its tests took.
set -euo pipefail
cd "$(dirname "$0")/.."
preset=${1:-coverage}
scripts/install_dependencies.sh test
scripts/check_format.sh
cmake --preset "$preset" >/dev/null
rm -f "build/$preset/tested"
touch "build/$preset/begun"
cmake --build --preset "$preset"
if [ "$preset" = coverage ]; then
    # Counts of an earlier run would be added to.
    find build/coverage -name '*.gcda' -delete
    # Some tests run the program as somebody else, who counts as well.
    umask 000
    chmod -R a+rwX build/coverage
fi
ctest --preset "$preset"
# What has changed since the beginning was not tested.
mv "build/$preset/begun" "build/$preset/tested"

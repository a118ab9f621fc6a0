#!/usr/bin/env bash
# Looks at the sources as a reviewer would; each part can be asked for alone.
#
# usage: check.sh [PART…]     all parts, in this order, when none is named:
#   format      C++ is formatted as .clang-format says
#   spelling    no known misspelling (codespell; .codespellrc)
#   shell       shellcheck finds nothing in a script
#   cmake       cmake-lint finds nothing (.cmake-format.yaml)
#   includes    no include points up (scripts/checks/layers.toml)
#   duplicates  no code stands twice (scripts/checks/duplicates.toml)
#   unused      no function is called by nothing (scripts/checks/unused.toml)
#   floors      scripts/checks/coverage.toml asks for no less than it ever did
#   checks      the checks above and that of the coverage find what they are for
#   clazy       clazy finds nothing, level 1, and each source can be compiled by itself
#   lint        clang-tidy finds nothing (.clang-tidy)
#   threads     the tests of threads and processes pass under the thread sanitizer
#   sanitize    the tests pass under the address and undefined-behaviour sanitizers
#   coverage    no folder's tests take fewer branches than scripts/checks/coverage.toml says
#   packages    the packages for Debian are made, and tried in a fresh one
#
# Every part is run whatever came of those before it; what failed is listed at the end, with the time of each.
set -euo pipefail
cd "$(dirname "$0")/.."

all_parts=(format spelling shell cmake includes duplicates unused floors checks clazy lint threads sanitize coverage packages)

# What git tracks or would track, of the given patterns, as far as it is there.
sources() {
    local name
    git ls-files --cached --others --exclude-standard -- "$@" | while IFS= read -r name; do
        if [ -f "$name" ]; then
            printf '%s\n' "$name"
        fi
    done
}

check_format() {
    scripts/check_format.sh
}

check_spelling() {
    sources | xargs -d '\n' codespell --quiet-level 3
}

check_shell() {
    sources '*.sh' .ci/run | xargs -d '\n' shellcheck
}

check_cmake() {
    sources '*CMakeLists.txt' '*.cmake' |
        xargs -d '\n' cmake-lint --suppress-decorations -c .cmake-format.yaml --
}

check_includes() {
    scripts/check_includes.py
}

check_duplicates() {
    scripts/check_duplicates.py
}

check_unused() {
    scripts/check_unused.py
}

check_floors() {
    scripts/check_floors.py
}

check_checks() {
    scripts/checks/test_checks.py
}

build() {
    cmake --preset "$1" >/dev/null
    cmake --build --preset "$1"
}

# The analysers need compile commands, and what moc and uic write.
analyse() {
    cmake --preset dev >/dev/null
    cmake --build --preset dev --target autogen >/dev/null
    scripts/analyse.py "$1"
}

check_clazy() {
    analyse clazy
}

check_threads() {
    build threads
    ctest --preset threads
}

check_lint() {
    analyse clang-tidy
}

check_sanitize() {
    build sanitize
    ctest --preset sanitize
}

# Whether all tests passed in the build of preset $1, and nothing was changed since.
is_tested() {
    local name
    [ -e "build/$1/tested" ] || return
    while IFS= read -r name; do
        if [ "$name" -nt "build/$1/tested" ]; then
            return 1
        fi
    done < <(sources)
}

check_coverage() {
    if ! is_tested coverage; then
        scripts/test.sh coverage
    fi
    scripts/check_coverage.py
}

check_packages() {
    scripts/package.sh
    scripts/test_packages.sh
}

parts=("$@")
if [ ${#parts[@]} -eq 0 ]; then
    parts=("${all_parts[@]}")
fi
for part in "${parts[@]}"; do
    if ! declare -F "check_$part" >/dev/null; then
        echo "check.sh: there is no part '$part'; the parts are: ${all_parts[*]}" >&2
        exit 2
    fi
done
scripts/install_dependencies.sh test
scripts/install_dependencies.sh check

clock=$(mktemp)
trap 'rm -f "$clock"' EXIT
# Sets `taken` to the seconds that the processors have worked for the parts so far: what counts on a busy machine.
count_work() {
    times >"$clock"
    taken=$(awk 'NR == 2 { for (i = 1; i <= 2; ++i) { split($i, part, /[ms]/); sum += part[1] * 60 + part[2] } print int(sum) }' "$clock")
}

failed=()
lines=()
for part in "${parts[@]}"; do
    echo "== $part"
    begin=$SECONDS
    count_work
    before=$taken
    # Not as a condition: nothing in one heeds "set -e".
    set +e
    (
        set -e
        "check_$part"
    )
    status=$?
    set -e
    if [ "$status" -ne 0 ]; then
        failed+=("$part")
    fi
    count_work
    lines+=("$(printf '%-11s %3d:%02d %7d:%02d' "$part" $(((SECONDS - begin) / 60)) $(((SECONDS - begin) % 60)) \
        $(((taken - before) / 60)) $(((taken - before) % 60)))")
done
echo "== minutes  clock  processors"
printf '%s\n' "${lines[@]}"
if [ ${#failed[@]} -ne 0 ]; then
    echo "check.sh: failed: ${failed[*]}" >&2
    exit 1
fi
echo "check.sh: all passed: ${parts[*]}"

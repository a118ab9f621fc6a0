#!/usr/bin/env python3
"""Prints which part of the branches the tests of the preset "coverage" took, folder by folder.

usage: check_coverage.py [--raise]

Fails when a folder is below what scripts/checks/coverage.toml says of it. That file only goes up: --raise writes into it what was
reached, where that is more.
"""

import json
import re
import subprocess
import sys
import tomllib

from source_folders import FOLDERS, ROOT

FLOORS = ROOT / "scripts/checks/coverage.toml"
# Branches that only an exception takes are the compiler's, one at nearly every call.
GCOVR = ("gcovr", "--root", str(ROOT), "--object-directory", "build/coverage",
         "--gcov-executable", str(ROOT / "scripts/gcov_without_exceptions.py"), "--exclude-throw-branches",
         "--exclude-unreachable-branches", "--json-summary", "-")


def counted():
    filters = [word for folder in FOLDERS for word in ("--filter", f"{ROOT}/{folder}/")]
    # Not the objects of the tests: they would be read for nothing but the headers that they include.
    objects = [f"build/coverage/{folder}" for folder in FOLDERS]
    told = subprocess.run([*GCOVR, *filters, *objects], cwd=ROOT, check=True, capture_output=True, text=True).stdout
    return json.loads(told)["files"]


def folder_of(file, folders):
    """The deepest of `folders` that holds `file`."""
    return max((folder for folder in folders if file.startswith(folder + "/")), key=len, default=None)


def main():
    with open(FLOORS, "rb") as file:
        floors = tomllib.load(file)["branches"]
    taken = {folder: 0 for folder in floors}
    total = {folder: 0 for folder in floors}
    seen = set()
    problems = []
    for file in counted():
        folder = folder_of(file["filename"], floors)
        if folder is None:
            problems.append(f"{file['filename']}: no folder of coverage.toml has this file")
            continue
        seen.add(folder)
        taken[folder] += file["branch_covered"]
        total[folder] += file["branch_total"]
    reached = {}
    print(f"{'folder':20} {'branches':>9} {'taken':>7} {'floor':>7}")
    for folder, floor in floors.items():
        if folder not in seen:
            problems.append(f"{folder}: nothing was counted")
            continue
        # Cut off, not rounded: what was reached once can be reached again.
        reached[folder] = taken[folder] * 1000 // total[folder] / 10 if total[folder] else 100.0
        print(f"{folder:20} {total[folder]:9} {reached[folder]:6.1f}% {floor:6.1f}%")
        if reached[folder] < floor:
            problems.append(f"{folder}: the tests take {reached[folder]:.1f} % of the branches, {floor:.1f} % are wanted")
    if "--raise" in sys.argv[1:]:
        text = FLOORS.read_text(encoding="utf-8")
        for folder, share in reached.items():
            text = re.sub(rf'^("{re.escape(folder)}" = )[\d.]+', rf"\g<1>{max(share, floors[folder]):.1f}", text, flags=re.MULTILINE)
        FLOORS.write_text(text, encoding="utf-8")
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Fails when scripts/checks/coverage.toml asks for less than it did in any commit before: it is only ever raised."""

import subprocess
import sys
import tomllib

from source_folders import ROOT

FLOORS = "scripts/checks/coverage.toml"


def git(*arguments):
    return subprocess.run(["git", *arguments], cwd=ROOT, check=True, capture_output=True, text=True).stdout


def highest():
    """What was asked of each folder at most, and the commit that did."""
    result = {}
    for commit in git("log", "--format=%h", "--diff-filter=AM", "--", FLOORS).split():
        for folder, floor in tomllib.loads(git("show", f"{commit}:{FLOORS}"))["branches"].items():
            if floor > result.get(folder, (-1, ""))[0]:
                result[folder] = (floor, commit)
    return result


def main():
    floors = tomllib.loads((ROOT / FLOORS).read_text(encoding="utf-8"))["branches"]
    problems = []
    for folder, (floor, commit) in highest().items():
        if folder in floors and floors[folder] < floor:
            problems.append(f"coverage.toml: {floors[folder]:.1f} % are asked of {folder}, but {commit} asked for {floor:.1f} %")
        if folder not in floors and (ROOT / folder).is_dir():
            problems.append(f"coverage.toml: nothing is asked of {folder}, but {commit} asked for {floor:.1f} %")
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())

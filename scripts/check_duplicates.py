#!/usr/bin/env python3
"""Fails when code stands twice.

Looks for the same lines in the same order, in all sources; and, in those of program, library and plug-in, for the same sequence of
tokens with other names (sim_c++ of the Debian package similarity-tester). What may stand twice is in
scripts/checks/duplicates.toml, with the reason; an entry that nothing needs fails.
"""

import collections
import fnmatch
import re
import subprocess
import sys
import tomllib

from source_folders import FOLDERS, ROOT

PRODUCT = tuple(f"{folder}/" for folder in FOLDERS)
SOURCES = (*PRODUCT, "tests/", "benchmarks/", "docs/tools/", "scripts/")
SUFFIXES = (".h", ".cpp", ".c", ".py", ".sh")
SAME_LINES = 8
SAME_TOKENS = 100
# Lines that say nothing by themselves: includes, brackets, comments, what begins or ends a namespace or a class.
THIN = re.compile(r"^(#.*|//.*|/\*.*|\*.*|[\W_]*|(namespace|using|import|from) .*|(public|private|protected).*:|(public|private) slots:"
                  r"|Q_OBJECT|(break|return|continue|else)?\W*|\w*\W{0,3})$")
SIMILAR = re.compile(r"^(\S+): line (\d+)-(\d+)\s*\|(\S+): line (\d+)-(\d+)\s*\[(\d+)\]")


def tracked():
    listed = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard"], cwd=ROOT, check=True,
                            capture_output=True, text=True).stdout.split("\n")
    return [name for name in listed
            if name.startswith(SOURCES) and name.endswith(SUFFIXES) and (ROOT / name).is_file()]


def thick_lines(name):
    """The lines that count, without their blanks, each with its number."""
    lines = (ROOT / name).read_text(encoding="utf-8").split("\n")
    return [(number, " ".join(line.split())) for number, line in enumerate(lines, 1) if not THIN.match(line.strip())]


def same_lines(names):
    """(file, first line, file, first line, number of lines) of each longest run that stands twice."""
    texts = {name: thick_lines(name) for name in names}
    places = collections.defaultdict(list)
    for name, lines in texts.items():
        for i in range(len(lines) - SAME_LINES + 1):
            places[tuple(line for _, line in lines[i:i + SAME_LINES])].append((name, i))
    pairs = {(a, b) for found in places.values() for i, a in enumerate(found) for b in found[i + 1:]}
    for a, b in sorted(pairs):
        if ((a[0], a[1] - 1), (b[0], b[1] - 1)) in pairs:
            continue  # goes on from one that was told
        if a[0] == b[0] and b[1] - a[1] < SAME_LINES:
            continue  # lines that are all alike
        length = SAME_LINES
        while ((a[0], a[1] + length - SAME_LINES + 1), (b[0], b[1] + length - SAME_LINES + 1)) in pairs:
            length += 1
        yield a[0], texts[a[0]][a[1]][0], b[0], texts[b[0]][b[1]][0], f"{length} lines"


def same_tokens(names):
    product = [name for name in names if name.startswith(PRODUCT) and not name.endswith((".py", ".sh"))]
    told = subprocess.run(["sim_c++", "-r", str(SAME_TOKENS), "-n", "-s", *product], cwd=ROOT, check=True,
                          capture_output=True, text=True).stdout
    inside = subprocess.run(["sim_c++", "-r", str(SAME_TOKENS), "-n", *product], cwd=ROOT, check=True,
                            capture_output=True, text=True).stdout
    for line in dict.fromkeys((told + inside).split("\n")):
        if match := SIMILAR.match(line):
            a, first, _, b, second, _, tokens = match.groups()
            if a != b or abs(int(first) - int(second)) > 30:
                yield a, int(first), b, int(second), f"{tokens} tokens"


def is_allowed(a, b, patterns):
    return all(any(fnmatch.fnmatch(name, pattern) for pattern in patterns) for name in (a, b))


def main():
    with open(ROOT / "scripts/checks/duplicates.toml", "rb") as file:
        allowed = {tuple(one["files"]): 0 for one in tomllib.load(file)["allowed"]}
    names = tracked()
    problems = []
    for a, first, b, second, size in [*same_lines(names), *same_tokens(names)]:
        entry = next((patterns for patterns in allowed if is_allowed(a, b, patterns)), None)
        if entry:
            allowed[entry] += 1
        else:
            problems.append(f"{a}:{first} and {b}:{second} are alike ({size})")
    problems += [f"duplicates.toml: nothing is alike in {' and '.join(patterns)} any more; take it out"
                 for patterns, count in allowed.items() if count == 0]
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())

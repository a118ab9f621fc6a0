#!/usr/bin/env python3
"""Fails when a function of program, library or plug-in is called by nothing there; tests do not count.

cppcheck looks for them, by name. What overrides a function of Qt or of another library is called from there. What else is needed
stands in scripts/checks/unused.toml, with the reason; an entry that nothing needs fails.
"""

import re
import subprocess
import sys
import tomllib

from source_folders import FOLDERS, ROOT

CPPCHECK = ("cppcheck", "--enable=unusedFunction", "--quiet", "--language=c++", "--std=c++20", "--library=qt", "-I", ".",
            "-I", "host", "-DQ_OBJECT=", "-DQ_SLOTS=", "-DQ_SIGNALS=public", "-DQ_EMIT=", "--template={file}:{line}|{id}|{message}")
FOUND = re.compile(r"^(\S+)\|unusedFunction\|The function '(\w+)' is never used\.$", re.MULTILINE)


def declared(word):
    """The names of functions whose declaration has `word`, of all sources."""
    after = re.compile(r"\b(\w+)\s*\([^;{}]*\)[\w\s]*\b" + word + r"\b")
    before = re.compile(r"\b" + word + r"\b[^;{}()]*?\b(\w+)\s*\(")
    names = set()
    for folder in FOLDERS:
        for path in (ROOT / folder).rglob("*"):
            if path.suffix in (".h", ".cpp"):
                names.update((after if word == "override" else before).findall(path.read_text(encoding="utf-8")))
    return names


def main():
    with open(ROOT / "scripts/checks/unused.toml", "rb") as file:
        needed = {name for entry in tomllib.load(file)["needed"] for name in entry["functions"]}
    told = subprocess.run([*CPPCHECK, *FOLDERS], cwd=ROOT, check=True, capture_output=True, text=True).stderr
    # Without any the format of what cppcheck tells has changed: those of Qt's classes are always among them.
    found = FOUND.findall(told)
    if not found:
        sys.exit("cppcheck told of no function at all, not even of those that Qt calls")
    called_from_outside = declared("override") - declared("virtual")
    problems = [f"{place}: nothing calls {name}()" for place, name in found
                if name not in needed and name not in called_from_outside]
    problems += [f"unused.toml: {name}() is called, or is gone; take it out" for name in sorted(needed - {name for _, name in found})]
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())

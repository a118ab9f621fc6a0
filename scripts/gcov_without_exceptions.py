#!/usr/bin/env python3
"""gcov, as gcovr calls it, without the branches that lie in what only an exception reaches.

At the end of each statement the compiler asks, for an exception alone, which of its temporaries are there to be destroyed. gcovr's
--exclude-throw-branches takes away the way there, but not these questions, which no test can answer both ways. gcov knows the blocks.
"""

import pathlib
import re
import subprocess
import sys

BLOCK = re.compile(r"^ *(\S+): *\d+-block +\d+$")
SOURCE = re.compile(r"^ *\S+: *\d+:")
CREATED = re.compile(r"^Creating '(.+)'$", re.MULTILINE)
# How gcov marks a block that was not executed and that nothing but an exception leads to.
EXCEPTIONAL = "$$$$$"


def without_exceptional(lines):
    exceptional = False
    for line in lines:
        block = BLOCK.match(line)
        if block:
            exceptional = block[1] == EXCEPTIONAL
        elif SOURCE.match(line):
            exceptional = False
            yield line
        elif not exceptional:
            yield line


def main():
    wanted = "--branch-counts" in sys.argv
    done = subprocess.run(["gcov", *sys.argv[1:], *(["--all-blocks"] if wanted else [])], stdout=subprocess.PIPE, text=True)
    sys.stdout.write(done.stdout)
    if wanted:
        for path in map(pathlib.Path, CREATED.findall(done.stdout)):
            lines = path.read_text(encoding="utf-8", errors="surrogateescape").split("\n")
            if ":Source:/usr/" in lines[0]:  # a library's header, of which gcovr makes nothing
                continue
            path.write_text("\n".join(without_exceptional(lines)), encoding="utf-8", errors="surrogateescape")
    return done.returncode


if __name__ == "__main__":
    sys.exit(main())

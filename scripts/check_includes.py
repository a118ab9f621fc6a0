#!/usr/bin/env python3
"""Fails when a source file includes what lies above it, or when folders include each other in a circle.

Which room lies below which stands in scripts/checks/layers.toml. Names that no file of the repository has (Qt's, generated ones)
are not looked at.
"""

import fnmatch
import re
import sys
import tomllib

from source_folders import FOLDERS, ROOT

INCLUDE = re.compile(r'^\s*#\s*include\s+["<]([^">]+)[">]', re.MULTILINE)
# Where a quoted name is looked for, beside the folder of the file itself.
SEARCHED = (ROOT, ROOT / "host")


class Rooms:
    def __init__(self, table):
        self.patterns = [(pattern, room["name"]) for room in table["room"] for pattern in room["files"]]
        # A file by name comes before a folder, a deeper folder before the one around it.
        self.patterns.sort(key=lambda pair: (pair[0].count("/"), not pair[0].endswith("/*")), reverse=True)
        direct = {room["name"]: room["sees"] for room in table["room"]}
        self.order = {}
        for name in direct:
            self.order[name] = self._below(name, direct, [])

    def _below(self, name, direct, way):
        if name in way:
            sys.exit(f"layers.toml: the rooms see each other in a circle: {' -> '.join(way + [name])}")
        seen = set()
        for lower in direct[name]:
            seen |= {lower} | self._below(lower, direct, way + [name])
        return seen

    def of(self, file):
        for pattern, name in self.patterns:
            # "folder/*" is the folder without what lies deeper.
            if fnmatch.fnmatch(file, pattern) and file.count("/") == pattern.count("/"):
                return name
        return None

    def may(self, room, other):
        return room == other or other in self.order[room]


def sources():
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                yield path


def included_files(path):
    for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
        for folder in (path.parent, *SEARCHED):
            if (folder / name).is_file():
                yield (folder / name).resolve().relative_to(ROOT).as_posix()
                break


def main():
    with open(ROOT / "scripts/checks/layers.toml", "rb") as file:
        table = tomllib.load(file)
    rooms = Rooms(table)
    tolerated = {(one["from"], one["to"]) for one in table.get("tolerated", [])}
    problems, met = [], set()
    for path in sources():
        file = path.relative_to(ROOT).as_posix()
        room = rooms.of(file)
        if room is None:
            problems.append(f"{file}: no room of layers.toml has this file")
            continue
        for other in included_files(path):
            target = rooms.of(other)
            if target is not None and rooms.may(room, target):
                continue
            if (file, other) in tolerated:
                met.add((file, other))
            else:
                problems.append(f"{file}: includes {other}, but {room} does not lie above {target or 'a file of no room'}")
    problems += [f"{a}: does not include {b} any more; take it out of layers.toml" for a, b in sorted(tolerated - met)]
    for problem in problems:
        print(problem, file=sys.stderr)
    if met:
        print(f"tolerated includes that point up: {len(met)}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())

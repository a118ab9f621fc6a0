#!/usr/bin/env python3
"""Runs a static analyser on the sources of program, library and plug-in; any finding is a failure.

usage: analyse.py clang-tidy|clazy [FILE…]     needs a "dev" build, whose compile commands and generated files it uses

A file in which nothing was found is not looked at again before it, something that it includes, its compile command or the analyser
changes: what was seen is kept in a folder of the user's cache, which can be deleted at any time.
"""

import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import subprocess
import sys

from source_folders import FOLDERS, ROOT

BUILD = ROOT / "build/dev"
CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "korvane-analyse"

TOOLS = {
    "clang-tidy": {
        "command": [os.environ.get("CLANG_TIDY", "clang-tidy-19"), "--quiet", "-p", str(BUILD)],
        "settings": [".clang-tidy"],
        "environment": {},
    },
    "clazy": {
        # Constants of QString are how this tree names its words; what takes a part of a text without a copy is not in Qt 6.
        "command": [os.environ.get("CLAZY", "clazy-standalone"), "-p", str(BUILD),
                    "--checks=level1,no-non-pod-global-static,no-qstring-ref"],
        "settings": [],
        "environment": {"CLAZY_IGNORE_DIRS": "/usr/.*|.*/build/.*|.*_autogen.*"},
    },
}
FINDING = re.compile(r"^[^\s:]+:\d+:\d+: (warning|error): ", re.MULTILINE)


def sources_of(commands, given):
    """The compile command of each source that is to be looked at."""
    chosen = {}
    for entry in commands:
        name = os.path.relpath(entry["file"], ROOT)
        wanted = name in given if given else name.split("/")[0] in FOLDERS
        if wanted and name not in chosen:
            chosen[name] = entry
    if missing := sorted(set(given) - set(chosen)):
        sys.exit(f"not compiled by the build in {BUILD}: {', '.join(missing)}")
    return chosen


def dependencies():
    """What each object was made of, as ninja noted it when it built them."""
    told = subprocess.run(["ninja", "-C", str(BUILD), "-t", "deps"], check=True, capture_output=True, text=True).stdout
    result, name = {}, None
    for line in told.split("\n"):
        if line.startswith(" "):
            result[name].append(line.strip())
        elif ": #deps" in line:
            name = line.split(":")[0]
            result[name] = []
    return result


class Seen:
    """Knows which files had no finding as they are."""

    def __init__(self, tool, settings):
        version = subprocess.run([tool["command"][0], "--version"], check=True, capture_output=True, text=True).stdout
        self.base = json.dumps([version, tool["command"][1:], settings, sorted(tool["environment"].items())]).replace(str(ROOT), "")
        self.dependencies = dependencies()
        self.digests = {}

    def _digest(self, path):
        if path not in self.digests:
            full = pathlib.Path(os.path.normpath(BUILD / path))
            if not full.is_file():
                text = "missing"
            elif full.is_relative_to(ROOT):
                text = hashlib.sha256(full.read_bytes()).hexdigest()
            else:  # of a package, which gives it another time with another version
                text = f"{full.stat().st_size} {full.stat().st_mtime_ns}"
            self.digests[path] = text
        return self.digests[path]

    def mark(self, entry):
        """The file that is there when nothing was found; none when it cannot be told what the source was made of."""
        words = entry["command"].split()
        made = words[words.index("-o") + 1]
        if made not in self.dependencies:
            return None
        text = [self.base, entry["command"].replace(str(ROOT), "")]
        for path in sorted(self.dependencies[made]):
            text.append(f"{path.replace(str(ROOT), '')} {self._digest(path)}")
        return CACHE / hashlib.sha256("\n".join(text).encode()).hexdigest()


def analyse(tool, name):
    done = subprocess.run([*tool["command"], name], cwd=ROOT, capture_output=True, text=True,
                          env={**os.environ, **tool["environment"]})
    told = done.stdout + done.stderr
    return done.returncode == 0 and not FINDING.search(told), told


def main():
    if len(sys.argv) < 2 or sys.argv[1] not in TOOLS:
        sys.exit(f"usage: analyse.py {'|'.join(TOOLS)} [FILE…]")
    tool = TOOLS[sys.argv[1]]
    with open(BUILD / "compile_commands.json", encoding="utf-8") as file:
        chosen = sources_of(json.load(file), sys.argv[2:])
    seen = Seen(tool, [(ROOT / name).read_text(encoding="utf-8") for name in tool["settings"]])
    marks = {name: seen.mark(entry) for name, entry in chosen.items()}
    due = sorted(name for name, mark in marks.items() if mark is None or not mark.exists())
    print(f"{sys.argv[1]}: {len(due)} of {len(chosen)} files to look at", flush=True)
    CACHE.mkdir(parents=True, exist_ok=True)
    bad = []
    with concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count()) as pool:
        for name, (ok, told) in zip(due, pool.map(lambda name: analyse(tool, name), due)):
            if not ok:
                bad.append(name)
                print(told.strip(), flush=True)
            elif marks[name]:
                marks[name].touch()
    if bad:
        print(f"{sys.argv[1]} found something in: {' '.join(bad)}", file=sys.stderr)
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Runs a static analyser on the sources of program, library and plug-in; any finding is a failure.

usage: analyse.py clang-tidy|clazy [FILE…]     after cmake --preset dev && cmake --build --preset dev --target autogen, which
writes the compile commands and what sources include of generated files; nothing has to be compiled

A file in which nothing was found is not looked at again before it, something that it includes, its compile command or the analyser
changes: what was seen is kept in a folder of the user's cache, which can be deleted at any time.

For clang-tidy sources are put together and read as one, which takes a fraction of the time. Where something is found, the halves are
looked at, down to each source by itself, so that only what is found in a source alone counts. Clazy reads each source by itself, and so
finds includes that are missing, which a build that compiles sources together does not.
"""

import concurrent.futures
import hashlib
import inspect
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

import joined_sources
from source_folders import FOLDERS, ROOT

BUILD = ROOT / "build/dev"
CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "korvane-analyse"

TOOLS = {
    "clang-tidy": {
        "command": [os.environ.get("CLANG_TIDY", "clang-tidy-19"), "--quiet",
                    f"--config-file={ROOT}/.clang-tidy"],
        # The states that a function is followed over, 225,000 when it is not said: nothing was found beyond these, in several times the time.
        # What the compiler only warns of is not looked for here.
        "flags": ["-Wno-error", "-Xclang", "-analyzer-config", "-Xclang", "max-nodes=20000"],
        # Few enough that both processors have something to do to the end.
        "at most": 30,
        # Says nothing but what the compiler does, in a tenth of the time.
        "compile only": ["--checks=-*,readability-duplicate-include"],
        "settings": [".clang-tidy"],
        "environment": {},
    },
    "clazy": {
        # Constants of QString are how this tree names its words; what takes a part of a text without a copy is not in Qt 6.
        "command": [os.environ.get("CLAZY", "clazy-standalone"),
                    "--checks=level1,no-non-pod-global-static,no-qstring-ref"],
        "flags": [],
        "at most": 1,
        "compile only": None,
        "settings": [],
        "environment": {"CLAZY_IGNORE_DIRS": "/usr/.*|.*/build/.*|.*_autogen.*"},
    },
}
SCANNER = os.environ.get("CLANG_SCAN_DEPS", "clang-scan-deps-19")
FINDING = re.compile(r"^([^\s:]+):\d+:\d+: (warning|error): (.*)", re.MULTILINE)


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


def object_of(entry):
    words = shlex.split(entry["command"])
    return words[words.index("-o") + 1]


def dependencies(entries):
    """What each object of `entries` is made of. One that includes what is not there is left out."""
    commands = [{**entry, "command": entry["command"].removeprefix("ccache ")} for entry in entries]
    with tempfile.NamedTemporaryFile("w", suffix=".json", encoding="utf-8") as file:
        json.dump(commands, file)
        file.flush()
        told = subprocess.run([SCANNER, "-compilation-database", file.name, "-format", "make"], capture_output=True, text=True).stdout
    lines = (line.split(": ", 1) for line in told.replace("\\\n", " ").split("\n") if ": " in line)
    return {name: re.split(r"(?<!\\)\s+", files.strip()) for name, files in lines}


class Seen:
    """Knows which files had no finding as they are."""

    def __init__(self, tool, settings, entries):
        version = subprocess.run([tool["command"][0], "--version"], check=True, capture_output=True, text=True).stdout
        manner = [version, tool["command"][1:], tool["flags"], settings, inspect.getsource(joined_sources),
                  sorted(tool["environment"].items())]
        self.base = json.dumps(manner).replace(str(ROOT), "")
        self.dependencies = dependencies(entries)
        self.digests = {}

    def _digest(self, path):
        """The name of a dependency and what tells its content: the same wherever the tree lies."""
        if path not in self.digests:
            full = pathlib.Path(os.path.normpath(BUILD / path))
            name = full.relative_to(ROOT) if full.is_relative_to(ROOT) else full
            if not full.is_file():
                text = "missing"
            elif full.is_relative_to(ROOT):
                text = hashlib.sha256(full.read_bytes()).hexdigest()
            else:  # of a package, which gives it another time with another version
                text = f"{full.stat().st_size} {full.stat().st_mtime_ns}"
            self.digests[path] = f"{name} {text}"
        return self.digests[path]

    def mark(self, entry):
        """The file that is there when nothing was found; none when it cannot be told what the source was made of."""
        made = object_of(entry)
        if made not in self.dependencies:
            return None
        text = [self.base, entry["command"].replace(str(ROOT), ""), *sorted(map(self._digest, self.dependencies[made]))]
        return CACHE / hashlib.sha256("\n".join(text).encode()).hexdigest()


class Analysis:
    def __init__(self, tool, folder):
        self.tool = tool
        self.folder = pathlib.Path(folder)
        self.pool = concurrent.futures.ThreadPoolExecutor(max_workers=os.cpu_count())

    def _told(self, group, path, *options):
        """What the analyser says of the source at `path`, nothing when it has no finding."""
        command = [*self.tool["command"], *options, path, "--", *group.flags, *self.tool["flags"]]
        done = subprocess.run(command, cwd=group.directory, capture_output=True, text=True,
                              env={**os.environ, **self.tool["environment"]})
        told = done.stdout + done.stderr
        return told if done.returncode != 0 or FINDING.search(told) else None

    def _look(self, group):
        """What the analyser says of `group`, nothing when it has no finding; and whether that says something of its files."""
        if len(group.files) == 1:
            return self._told(group, group.files[0]), True
        with tempfile.NamedTemporaryFile(suffix=".cpp", dir=self.folder, delete=False) as file:
            file.write(group.text().encode())
        if self.tool["compile only"] and self._told(group, file.name, *self.tool["compile only"]):
            return None, False
        told = self._told(group, file.name)
        # What is found in headers only would be found with each of the files, unless it is an error of the compiler.
        found = FINDING.findall(told or "")
        is_same = bool(found) and all(place != file.name and (kind == "warning" or self.tool["compile only"])
                                      for place, kind, _ in found)
        return told, told is None or is_same

    def run(self, entries):
        """Yields files and what was found in them, or nothing."""
        due = joined_sources.join(entries, self.tool["at most"])
        while due:
            due.sort(key=lambda group: -len(group.files))
            parts = []
            for group, (told, is_certain) in zip(due, self.pool.map(self._look, due)):
                if is_certain:
                    yield group.files, told
                else:
                    parts += group.halves()
            due = parts


def places_of(told, files):
    """The files of this tree in which findings are; `files` when none is told."""
    found = {place for place, _, _ in FINDING.findall(told) if pathlib.Path(place).is_relative_to(ROOT)}
    return {os.path.relpath(file, ROOT) for file in found or files}


def main():
    if len(sys.argv) < 2 or sys.argv[1] not in TOOLS:
        sys.exit(f"usage: analyse.py {'|'.join(TOOLS)} [FILE…]")
    tool = TOOLS[sys.argv[1]]
    with open(BUILD / "compile_commands.json", encoding="utf-8") as file:
        chosen = sources_of(json.load(file), sys.argv[2:])
    seen = Seen(tool, [(ROOT / name).read_text(encoding="utf-8") for name in tool["settings"]], list(chosen.values()))
    marks = {entry["file"]: seen.mark(entry) for entry in chosen.values()}
    due = [chosen[name] for name in sorted(chosen) if not (marks[chosen[name]["file"]] or BUILD / "none").exists()]
    print(f"{sys.argv[1]}: {len(due)} of {len(chosen)} files to look at", flush=True)
    CACHE.mkdir(parents=True, exist_ok=True)
    bad = set()
    with tempfile.TemporaryDirectory() as folder:
        for files, told in Analysis(tool, folder).run(due):
            if told is not None:
                bad |= places_of(told, files)
                print(told.strip(), flush=True)
                continue
            for mark in filter(None, (marks[file] for file in files)):
                mark.touch()
    if bad:
        print(f"{sys.argv[1]} found something in: {' '.join(sorted(bad))}", file=sys.stderr)
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
"""Puts small faults into the sources, one at a time, and tells which of them no test notices.

usage: scripts/mutate.py [--list] [--build FOLDER] [--again FILE] [--sample N] [--jobs N] [--report FILE]
                         [--journal FILE] [PATH...]

PATH is a source file or a folder of them; by default plugin and host/storage. Every function is compiled with all
of its faulty versions beside the right one, so the whole set costs one build; KORVANE_FAULT=N in the environment
chooses the version that runs. A first run without a fault records which functions of the tests reach which function
of the sources. Then each fault is tried against those that reach it, quickest first, until one fails. What does not compile is no fault.

Exit status: 0 when every fault was noticed or is explained in tests/MUTANTS.md, 3 when some was not, 1 when it could not
be tried.
"""

import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from mutation_faults import Fault, faulty_source  # noqa: E402

ROOT = pathlib.Path(__file__).resolve().parent.parent
DEFAULT_PATHS = ["plugin", "host/storage"]
EXPLAINED = ROOT / "tests" / "MUTANTS.md"
# These take long and reach nothing that the others do not.
LEFT_OUT = re.compile(r"tst_(script_syntax|scripts_on_|faults|kills|program_end|interrupted_save|manual|translations|project_window|window_|diagram_|document_pages|message_panel|"
                      r"script_panel|project_tree|sql_highlighter|script_debugger)")
SHORTEST_LIMIT = 20.0  # seconds; a fault may make a test run for ever

FAULT_HEADER = r"""#pragma once
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <unistd.h>

/// The number of the fault that is to happen if it is one from `first` to `last`, else 0. Without a chosen one the
/// function that asks leaves an empty file in the folder KORVANE_FAULT_TRACE: that works under a full disk as well.
inline int korvane_fault(int first, int last)
{
    static const int chosen = [] {
        const char * const text = std::getenv("KORVANE_FAULT");
        return text ? std::atoi(text) : 0;
    }();
    static const char * const trace = std::getenv("KORVANE_FAULT_TRACE");
    static bool seen[1 << 16] = {};
    if (trace && !seen[first]) {
        seen[first] = true;
        const std::string name = std::string(trace) + "/" + std::to_string(first);
        ::close(::open(name.c_str(), O_WRONLY | O_CREAT, 0600));
    }
    return first <= chosen && chosen <= last ? chosen : 0;
}
"""


class CannotTry(Exception):
    """The faults could not be tried at all; the text says why."""


def source_files(paths):
    files = []
    for name in paths or DEFAULT_PATHS:
        path = ROOT / name
        found = sorted(path.rglob("*.cpp")) if path.is_dir() else [path]
        if not found or not all(f.is_file() for f in found):
            raise CannotTry(f"{name}: there is no source file; give a path below {ROOT.name}/")
        files += [f.relative_to(ROOT) for f in found]
    return files


def collect_faults(files):
    """All faults of `files`, numbered from 1 in the order of the text; the numbers change with the sources."""
    faults = []
    for file in files:
        faults += faulty_source(ROOT / file, str(file), len(faults) + 1).faults
    return faults


class Tree:
    """A copy of the sources with the faults in it, and its build."""

    def __init__(self, folder, files):
        self.folder = folder
        self.source = folder / "source"
        self.build = folder / "build"
        self.files = files
        self.bad_list = folder / "uncompilable.json"
        known = {tuple(f) for f in json.loads(self.bad_list.read_text())} if self.bad_list.exists() else set()
        self.dropped = {f.number for f in collect_faults(files) if (f.file, f.before, f.after) in known}
        self.generated = {}

    def copy_sources(self):
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT, check=True,
                                capture_output=True, text=True).stdout.splitlines()
        for name in listed:
            target = self.source / name
            origin = ROOT / name
            if pathlib.PurePath(name) in set(self.files) or not origin.is_file():
                continue
            target.parent.mkdir(parents=True, exist_ok=True)
            if not target.exists() or target.read_bytes() != origin.read_bytes():
                shutil.copyfile(origin, target)
                shutil.copymode(origin, target)
        (self.source / "korvane_fault.h").write_text(FAULT_HEADER)

    def write_faulty_sources(self):
        number = 1
        for file in self.files:
            made = faulty_source(ROOT / file, str(file), number, self.dropped)
            number += len(made.faults)
            self.generated[file] = made
            target = self.source / file
            target.parent.mkdir(parents=True, exist_ok=True)
            text = f'#include "{self.source}/korvane_fault.h"\n' + made.text
            if not target.exists() or target.read_text() != text:
                target.write_text(text)

    def configure(self):
        run_or_fail(["cmake", "-G", "Ninja", "-S", self.source, "-B", self.build, "-DCMAKE_BUILD_TYPE=Debug",
                     "-DCMAKE_CXX_FLAGS=-w", "-DCMAKE_CXX_FLAGS_DEBUG=-O0", "-DKORVANE_BENCHMARKS=OFF",
                     "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache",
                     "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=mold", "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=mold",
                     "-DCMAKE_MODULE_LINKER_FLAGS=-fuse-ld=mold"], "configure")

    def compile(self, targets):
        """Builds `targets`; what does not compile is dropped and the rest built anew."""
        while True:
            self.write_faulty_sources()
            built = subprocess.run(["ninja", "-k", "0", "-C", self.build, *targets], capture_output=True, text=True)
            if built.returncode == 0:
                return
            bad = self.faults_in_errors(built.stdout)
            if not bad - self.dropped:
                raise CannotTry("The build failed, and not for a fault:\n" + built.stdout[-3000:] + built.stderr)
            self.dropped |= bad
            self.remember_dropped()

    def remember_dropped(self):
        """Spares the next run the builds that fail."""
        known = json.loads(self.bad_list.read_text()) if self.bad_list.exists() else []
        known += [[f.file, f.before, f.after] for made in self.generated.values() for f in made.faults
                  if f.number in self.dropped and [f.file, f.before, f.after] not in known]
        self.bad_list.write_text(json.dumps(known))

    def faults_in_errors(self, output):
        bad = set()
        for file, made in self.generated.items():
            place = re.escape(f"source/{file}") + r":(\d+):\d+:\s+(?:error|required from)"
            for line in re.findall(place, output):
                bad |= made.faults_at(int(line) - 1)  # the include stands before the text
        return bad


def run_or_fail(command, what):
    done = subprocess.run([str(part) for part in command], capture_output=True, text=True)
    if done.returncode != 0:
        raise CannotTry(f"{what} failed:\n{done.stdout[-1500:]}{done.stderr[-1500:]}")


# One function of a test program.
Test = collections.namedtuple("Test", "name command environment")


def programs_of(build):
    """The test programs that may notice a fault; their commands are known once they are built."""
    shown = json.loads(subprocess.run(["ctest", "--show-only=json-v1"], cwd=build, check=True, capture_output=True,
                                      text=True).stdout)
    programs = []
    for test in shown["tests"]:
        properties = {p["name"]: p["value"] for p in test.get("properties", [])}
        if test["name"].startswith("tst_") and not LEFT_OUT.match(test["name"]):
            environment = dict(entry.split("=", 1) for entry in properties.get("ENVIRONMENT", []))
            programs.append(Test(test["name"], test.get("command"), environment))
    return programs


def functions_of(program):
    """The functions of a program of Qt Test, each a test of its own."""
    listed = subprocess.run([*program.command, "-functions"], env={**os.environ, **program.environment}, check=True,
                            capture_output=True, text=True).stdout
    return [Test(f"{program.name}::{name}", [*program.command, name], program.environment)
            for name in (line.strip().removesuffix("()") for line in listed.splitlines()) if name]


def run_test(test, extra, limit):
    """Whether `test` passes within `limit` seconds; in a folder and a group of processes of its own."""
    with tempfile.TemporaryDirectory(prefix="korvane-mutate-") as folder:
        os.chmod(folder, 0o1777)  # some tests start programs as a user with fewer rights
        environment = {**os.environ, **test.environment, "QTEST_DISABLE_STACK_DUMP": "1", "TMPDIR": folder, **extra}
        process = subprocess.Popen(test.command, env=environment, cwd=folder, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        try:
            return process.wait(limit) == 0
        except subprocess.TimeoutExpired:
            return False
        finally:
            try:
                os.killpg(process.pid, 9)
            except ProcessLookupError:
                pass
            process.wait()


def measure(tests, folder, jobs):
    """Runs every test without a fault: how long it takes, and which functions of the sources it reaches."""
    folder.mkdir(exist_ok=True)

    def measured(test):
        trace = folder / test.name.replace("::", ".")
        shutil.rmtree(trace, ignore_errors=True)
        trace.mkdir()
        trace.chmod(0o777)
        begin = time.monotonic()
        if not run_test(test, {"KORVANE_FAULT_TRACE": str(trace)}, 600):
            print(f"left out, fails without a fault in this build: {test.name}", flush=True)
            return 0, set()
        return time.monotonic() - begin, {int(name) for name in os.listdir(trace)}

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        results = dict(zip((t.name for t in tests), pool.map(measured, tests)))
    return {n: r[0] for n, r in results.items()}, {n: r[1] for n, r in results.items()}


def notice(fault, tests, seconds, reached, noticed):
    """The name of the test that notices `fault`, or None. Those that noticed one nearby are asked first."""
    def order(test):
        return (-noticed[fault.function, test.name], -noticed[fault.file, test.name], seconds[test.name])

    for test in sorted((t for t in tests if fault.function in reached[t.name]), key=order):
        limit = max(SHORTEST_LIMIT, 6 * seconds[test.name])
        if not run_test(test, {"KORVANE_FAULT": str(fault.number)}, limit):
            noticed[fault.function, test.name] += 1
            noticed[fault.file, test.name] += 1
            return test.name
    return None


def explained_faults():
    """The rows of the table in MUTANTS.md, as patterns of (file, line before, line after); "…" stands for any text."""
    def pattern(cell):
        parts = cell.strip("`").replace("\\|", "|").split("…")
        return re.compile(".*".join(re.escape(part) for part in parts) + r"\Z")

    rows = []
    if EXPLAINED.exists():
        for line in EXPLAINED.read_text().splitlines():
            cells = [c.strip() for c in re.split(r"(?<!\\)\|", line)]
            if len(cells) >= 6 and cells[1].startswith("`"):
                rows.append(tuple(pattern(cell) for cell in cells[1:4]))
    return rows


def is_explained(fault, rows):
    return any(file.match(fault.file) and before.match(fault.before) and after.match(fault.after)
               for file, before, after in rows)


class Journal:
    """What became of each fault so far, a line each in a file, so that a run that was ended can go on."""

    def __init__(self, name):
        self.path = pathlib.Path(name) if name else None
        self.outcomes = {}
        if self.path and self.path.exists():
            for line in self.path.read_text().splitlines():
                outcome, key = line.split("\t", 1)
                self.outcomes[key] = outcome == "noticed"

    @staticmethod
    def key(fault):
        """The fault without its number, which changes with the sources."""
        return str(fault).split("\t", 1)[1]

    def is_noticed(self, fault):
        """None when the fault has not been tried."""
        return self.outcomes.get(self.key(fault))

    def add(self, fault, is_noticed):
        if self.path:
            with self.path.open("a") as out:
                out.write(f"{'noticed' if is_noticed else 'not noticed'}\t{self.key(fault)}\n")


def try_all(faults, tests, seconds, reached, jobs, journal):
    survivors = [f for f in faults if journal.is_noticed(f) is False]
    faults = [f for f in faults if journal.is_noticed(f) is None]
    noticed = collections.Counter()
    begin = time.monotonic()
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        tried = {pool.submit(notice, fault, tests, seconds, reached, noticed): fault for fault in faults}
        for count, future in enumerate(concurrent.futures.as_completed(tried), 1):
            fault = tried[future]
            journal.add(fault, future.result() is not None)
            if future.result() is None:
                survivors.append(fault)
                print(f"not noticed: {fault}", flush=True)
            if count % 50 == 0:
                print(f"{count} of {len(faults)} tried, {len(survivors)} not noticed, "
                      f"{time.monotonic() - begin:.0f} s", flush=True)
    return sorted(survivors, key=lambda f: f.number)


def chosen_faults(faults, arguments):
    if arguments.again:
        rows = [line.split("\t") for line in pathlib.Path(arguments.again).read_text().splitlines()]
        wanted = {(place.rpartition(":")[0], before, after) for _, place, before, _, after in rows}
        return [f for f in faults if (f.file, f.before, f.after) in wanted]
    if arguments.sample and arguments.sample < len(faults):
        return random.Random(arguments.seed).sample(faults, arguments.sample)
    return faults


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("paths", nargs="*", metavar="PATH")
    parser.add_argument("--list", action="store_true", help="print the faults and try none")
    parser.add_argument("--build", default=str(ROOT / "build" / "mutate"), help="folder for the faulty tree")
    parser.add_argument("--again", metavar="FILE", help="try only the faults of an earlier report")
    parser.add_argument("--sample", type=int, help="try as many faults, drawn by chance")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--slowest", type=float, default=8, help="seconds that a function of a test may take")
    parser.add_argument("--journal", help="file in which what was tried is noted, and not tried again")
    parser.add_argument("--report", help="file for the faults that were not noticed, a line each")
    arguments = parser.parse_args()
    files = source_files(arguments.paths)
    if arguments.list:
        for fault in collect_faults(files):
            print(fault)
        return 0
    tree = Tree(pathlib.Path(arguments.build).resolve(), files)
    tree.copy_sources()
    tree.write_faulty_sources()
    tree.configure()
    tree.compile([program.name for program in programs_of(tree.build)])
    tests = [test for program in programs_of(tree.build) for test in functions_of(program)]
    faults = [f for made in tree.generated.values() for f in made.faults if f.number not in tree.dropped]
    seconds, reached = measure(tests, tree.folder / "traces", arguments.jobs)
    slow = [t.name for t in tests if reached[t.name] and seconds[t.name] > arguments.slowest]
    if slow:
        print("left out, too slow:", *slow)
    tests = [t for t in tests if reached[t.name] and t.name not in slow]
    chosen = chosen_faults(faults, arguments)
    print(f"{len(chosen)} of {len(faults)} faults, {len(tests)} tests", flush=True)
    survivors = try_all(chosen, tests, seconds, reached, arguments.jobs, Journal(arguments.journal))
    rows = explained_faults()
    unknown = [f for f in survivors if not is_explained(f, rows)]
    if arguments.report:
        pathlib.Path(arguments.report).write_text("".join(f"{f}\n" for f in survivors))
    noticed = len(chosen) - len(survivors)
    print(f"{noticed} of {len(chosen)} noticed ({100 * noticed / max(1, len(chosen)):.1f} %), "
          f"{len(survivors) - len(unknown)} explained, {len(unknown)} neither")
    return 3 if unknown else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except CannotTry as problem:
        print(problem, file=sys.stderr)
        sys.exit(1)

#!/usr/bin/env python3
"""Measures whole processes: import, export and dump of generated models beside the floor, an evolution, and start-up.

usage: run.py [BUILD_FOLDER...] [--runs N] [--sizes 100,1000,10000] [--instructions] [--check] [--tags 100] [--tag-entities 1000]

Times are seconds of wall clock (median of N runs), memory is the largest resident set. The floor reads the same
rows from the same file and writes as many bytes. Everything is run in turns, so that a busy machine slows all alike;
with several build folders, those of before and after a change, say, each gets a row. What stays the same on any
machine are the instructions, which callgrind counts; that takes a minute for each 10,000 entities.
"""
import argparse
import functools
import os
import re
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

OPTION = "--KorvGenericDDLExport_"
COLUMNS = [
    ("build", "{}"), ("entities", "{}"), ("import s", "{:.3f}"), ("import / floor", "{:.1f}"), ("export s", "{:.3f}"),
    ("export / floor", "{:.1f}"), ("µs an entity", "{:.0f}"), ("floor s", "{:.4f}"), ("import MB", "{:.0f}"),
    ("export MB", "{:.0f}"), ("dump MB", "{:.0f}"), ("import G instr.", "{}"), ("export G instr.", "{}"),
    ("floor G instr.", "{}"),
]


def run(command, stdout=subprocess.DEVNULL):
    """Wall-clock seconds, CPU seconds and peak memory in MB of one process that has to succeed."""
    begin = time.perf_counter()
    process = subprocess.Popen(command, stdout=stdout, stderr=subprocess.PIPE)
    error = process.stderr.read()
    _, status, usage = os.wait4(process.pid, 0)
    wall = time.perf_counter() - begin
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))}: status {process.returncode}: {error.decode()}")
    return wall, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def instructions(command):
    """How many instructions the process executes, in units of 10^9."""
    result = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command],
                            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=True, text=True)
    return int(re.search(r"refs:\s*([\d,]+)", result.stderr)[1].replace(",", "")) / 1e9


def median(rows, column):
    return statistics.median(row[column] for row in rows)


def write_model(build, folder, entities, step=0):
    model = folder / f"model_{entities}_{step}.json"
    with open(model, "wb") as out:
        run([build / "benchmarks/make_model", str(entities), str(step)], out)
    return model


@functools.cache
def without_check(build):
    """The option that leaves the findings out of an export. Builds from before there were any do not know it."""
    told = subprocess.run([build / "bin/korvane", "export", "--help"], capture_output=True, text=True, check=True).stdout
    return ["--no-check"] if "--no-check" in told else []


def export_command(build, project, out):
    return [build / "bin/korvane", "export", project, *without_check(build), f"{OPTION}path={out}", f"{OPTION}db_type=3",
            f"{OPTION}relation_as_fk=1"]


class Measured:
    """One build at one size: the commands, and what each run of them took."""

    def __init__(self, build, folder, model):
        self.build = build
        self.folder = folder
        self.folder.mkdir()
        self.model = model
        self.project = folder / "bench_0.korv"
        self.out = folder / "sql"
        self.out.mkdir()
        self.imports, self.exports, self.dumps = [], [], []

    def import_command(self, number):
        return [self.build / "bin/korvane", "import", self.model, self.folder / f"bench_{number}.korv"]

    def run_import(self, number):
        self.imports.append(run(self.import_command(number)))

    def run_export(self):
        self.exports.append(run(export_command(self.build, self.project, self.out)))

    def run_dump(self):
        self.dumps.append(run([self.build / "bin/korvane", "dump", self.project]))


def measure_size(builds, folder, entities, arguments):
    model = write_model(builds[0], folder, entities)
    measured = [Measured(build, folder / f"{entities}_{n}", model) for n, build in enumerate(builds)]
    for number in range(min(arguments.runs, 3)):
        for m in measured:
            m.run_import(number)
            m.run_dump()
    for m in measured:
        m.run_export()
        m.exports.clear()
    size = sum(f.stat().st_size for f in measured[0].out.iterdir())
    floor = [builds[0] / "benchmarks/bench_floor", measured[0].project, str(size), folder / "floor.out"]
    run(floor)
    floors = []
    for _ in range(arguments.runs):
        for m in measured:
            m.run_export()
            floors.append(run(floor))
    counted = [""] * 3
    for m in measured:
        if arguments.instructions:
            counted = [f"{instructions(c):.2f}" for c in (m.import_command("counted"),
                                                          export_command(m.build, m.project, m.out), floor)]
        least = median(floors, 0)
        values = [m.build.name if len(builds) == 1 else m.build, entities, median(m.imports, 0),
                  median(m.imports, 0) / least, median(m.exports, 0), median(m.exports, 0) / least,
                  median(m.exports, 0) / entities * 1e6, least, max(r[2] for r in m.imports),
                  max(r[2] for r in m.exports), max(r[2] for r in m.dumps), *counted]
        print("| " + " | ".join(form.format(v) for (_, form), v in zip(COLUMNS, values)) + " |", flush=True)


def measure_evolution(build, folder, tags, entities):
    korvane = build / "bin/korvane"
    folder = folder / f"evolution_{tags}"
    folder.mkdir()
    project = folder / "bench.korv"
    for step in range(tags):
        run([korvane, "import", write_model(build, folder, entities, step), project])
        run([korvane, "tag", project])
    out = folder / "sql"
    out.mkdir()
    wall, _, memory = run([*export_command(build, project, out), f"{OPTION}schema_type=1"])
    # A script is written when its version is done: the distance of two is the time of one version.
    done = sorted(f.stat().st_mtime_ns for f in out.iterdir())
    steps = [(b - a) / 1e9 for a, b in zip(done, done[1:])]
    return {"tags": tags, "wall": wall, "memory": memory, "first": statistics.mean(steps[:10]),
            "last": statistics.mean(steps[-10:])}


CHECK_COLUMNS = ["entities", "export s", "check, full script s", "times", "export of a step s", "check of it s", "more, in exports",
                 "export CPU s", "full CPU s", "step CPU s", "full MB", "step MB"]


def measure_check(build, folder, entities, runs):
    """Foretelling beside the export of the same scripts: the full script, and the step from a version to 1 % changes."""
    korvane = build / "bin/korvane"
    folder = folder / f"check_{entities}"
    folder.mkdir()
    project, out = folder / "bench.korv", folder / "sql"
    out.mkdir()
    run([korvane, "import", write_model(build, folder, entities), project])
    check = [korvane, "check", project, "--db", "postgresql", "--relationships", "yes", "--fail-on", "never", "-o", folder / "told"]
    export, full, history, step = [], [], [], []
    for _ in range(runs):
        export.append(run(export_command(build, project, out)))
        full.append(run(check))
    run([korvane, "tag", project])
    run([korvane, "import", write_model(build, folder, entities, 1), project])
    for _ in range(runs):
        history.append(run([*export_command(build, project, out), f"{OPTION}schema_type=1"]))
        step.append(run([*check, "--from", "v1"]))
    least, whole, made, judged = (median(rows, 0) for rows in (export, full, history, step))
    values = [str(entities), *(f"{value:.2f}" for value in (least, whole, whole / least, made, judged, (judged - made) / least)),
              *(f"{median(rows, 1):.2f}" for rows in (export, full, step)), *(f"{max(r[2] for r in rows):.0f}" for rows in (full, step))]
    print("| " + " | ".join(values) + " |", flush=True)


def measure_start(builds, runs):
    """Milliseconds of `korvane --version`, and of the loader's part in it, before main() begins."""
    print("\n| build | --version ms | of that libraries ms | libraries |")
    print("| --- | --- | --- | --- |")
    for build in builds:
        korvane = build / "bin/korvane"
        wall = median([run([korvane, "--version"]) for _ in range(10 * runs)], 0) * 1e3
        environment = {**os.environ, "LD_TRACE_LOADED_OBJECTS": "1"}
        libraries = subprocess.run([korvane], env=environment, stdout=subprocess.PIPE, check=True).stdout.count(b"=>")
        print(f"| {build} | {wall:.1f} | {loader_share(korvane) * wall:.1f} | {libraries} |")


def loader_share(korvane):
    """Which part of the process's instructions the dynamic loader executes."""
    with tempfile.NamedTemporaryFile() as out:
        subprocess.run(["valgrind", "--tool=callgrind", f"--callgrind-out-file={out.name}", korvane, "--version"],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        text = subprocess.run(["callgrind_annotate", "--inclusive=yes", out.name], stdout=subprocess.PIPE, text=True,
                              check=True).stdout
    counts = [int(line.split()[0].replace(",", "")) for line in text.splitlines()
              if "PROGRAM TOTALS" in line or "libc_start_main" in line]
    return 1 - counts[1] / counts[0]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("builds", nargs="*", default=[Path("build/release")], type=Path, metavar="BUILD_FOLDER")
    parser.add_argument("--runs", type=int, default=7)
    parser.add_argument("--sizes", default="100,1000,10000")
    parser.add_argument("--instructions", action="store_true", help="count them as well; needs valgrind")
    parser.add_argument("--check", action="store_true", help="measure what foretelling takes as well")
    parser.add_argument("--tags", type=int, default=100, help="0 leaves the evolution out")
    parser.add_argument("--tag-entities", type=int, default=1000)
    arguments = parser.parse_args()
    builds = [build.resolve() for build in arguments.builds]
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        print("| " + " | ".join(title for title, _ in COLUMNS) + " |")
        print("| " + " | ".join("---" for _ in COLUMNS) + " |")
        for entities in map(int, arguments.sizes.split(",")):
            measure_size(builds, folder, entities, arguments)
        if arguments.check:
            print("\n| " + " | ".join(CHECK_COLUMNS) + " |")
            print("| " + " | ".join("---" for _ in CHECK_COLUMNS) + " |")
            for entities in map(int, arguments.sizes.split(",")):
                measure_check(builds[-1], folder, entities, arguments.runs)
        if arguments.instructions:
            measure_start(builds, arguments.runs)
        if arguments.tags:
            print("\n| tags | evolution s | s a tag, first ten | s a tag, last ten | last / first | peak MB |")
            print("| --- | --- | --- | --- | --- | --- |")
            for tags in sorted({max(11, arguments.tags // 5), arguments.tags}):
                r = measure_evolution(builds[-1], folder, tags, arguments.tag_entities)
                print(f"| {r['tags']} | {r['wall']:.2f} | {r['first']:.4f} | {r['last']:.4f} | "
                      f"{r['last'] / r['first']:.2f} | {r['memory']:.0f} |", flush=True)


if __name__ == "__main__":
    main()

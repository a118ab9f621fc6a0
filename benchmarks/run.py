#!/usr/bin/env python3
"""Measures whole processes: import and export of generated models, beside the floor, and an evolution.

usage: run.py [BUILD_FOLDER] [--runs N] [--sizes 100,1000,10000] [--tags 100] [--tag-entities 1000]

Times are seconds of wall clock (median of N runs), memory is the largest resident set. The floor reads the same
rows from the same file and writes as many bytes; it is run in turns with the export, so that a busy machine
slows both.
"""
import argparse
import os
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

OPTION = "--KorvGenericDDLExport_"


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


def median(rows, column):
    return statistics.median(row[column] for row in rows)


def write_model(build, folder, entities, step=0):
    model = folder / f"model_{entities}_{step}.json"
    with open(model, "wb") as out:
        run([build / "benchmarks/make_model", str(entities), str(step)], out)
    return model


def measure_size(build, folder, entities, runs):
    korvane = build / "bin/korvane"
    model = write_model(build, folder, entities)
    imports = []
    for number in range(max(1, min(runs, 3))):
        project = folder / f"bench_{entities}_{number}.korv"
        imports.append(run([korvane, "import", model, project]))
    out = folder / f"sql_{entities}"
    out.mkdir()
    export = [korvane, "export", project, f"{OPTION}path={out}", f"{OPTION}db_type=3", f"{OPTION}relation_as_fk=1"]
    run(export)
    size = sum(f.stat().st_size for f in out.iterdir())
    floor = [build / "benchmarks/bench_floor", project, str(size), folder / "floor.out"]
    run(floor)
    exports, floors = [], []
    for _ in range(runs):
        exports.append(run(export))
        floors.append(run(floor))
    return {
        "entities": entities, "import": median(imports, 0), "export": median(exports, 0),
        "cpu": median(exports, 1), "floor": median(floors, 0), "memory": max(row[2] for row in exports),
        "import memory": max(row[2] for row in imports), "bytes": size,
    }


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
    wall, _, memory = run([korvane, "export", project, f"{OPTION}path={out}", f"{OPTION}db_type=3",
                           f"{OPTION}relation_as_fk=1", f"{OPTION}schema_type=1"])
    # A script is written when its version is done: the distance of two is the time of one version.
    done = sorted(f.stat().st_mtime_ns for f in out.iterdir())
    steps = [(b - a) / 1e9 for a, b in zip(done, done[1:])]
    return {"tags": tags, "wall": wall, "memory": memory, "first": statistics.mean(steps[:10]),
            "last": statistics.mean(steps[-10:])}


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", nargs="?", default="build/release", type=Path)
    parser.add_argument("--runs", type=int, default=7)
    parser.add_argument("--sizes", default="100,1000,10000")
    parser.add_argument("--tags", type=int, default=100, help="0 leaves the evolution out")
    parser.add_argument("--tag-entities", type=int, default=1000)
    arguments = parser.parse_args()
    build = arguments.build.resolve()
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        print("| entities | import s | export s | CPU s | floor s | export / floor | µs an entity | export MB | script bytes |")
        print("| --- | --- | --- | --- | --- | --- | --- | --- | --- |")
        for entities in map(int, arguments.sizes.split(",")):
            r = measure_size(build, folder, entities, arguments.runs)
            print(f"| {entities} | {r['import']:.3f} | {r['export']:.3f} | {r['cpu']:.3f} | {r['floor']:.3f} | "
                  f"{r['export'] / r['floor']:.2f} | {r['export'] / entities * 1e6:.0f} | {r['memory']:.0f} | "
                  f"{r['bytes']} |", flush=True)
        if arguments.tags:
            print("\n| tags | evolution s | s a tag, first ten | s a tag, last ten | last / first | peak MB |")
            print("| --- | --- | --- | --- | --- | --- |")
            for tags in sorted({max(11, arguments.tags // 5), arguments.tags}):
                r = measure_evolution(build, folder, tags, arguments.tag_entities)
                print(f"| {r['tags']} | {r['wall']:.2f} | {r['first']:.4f} | {r['last']:.4f} | "
                      f"{r['last'] / r['first']:.2f} | {r['memory']:.0f} |", flush=True)


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""The checks themselves: each finds what it is for in a small tree, and says nothing about one that is right."""

import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest
import unittest.mock

SCRIPTS = pathlib.Path(__file__).resolve().parent.parent

LAYERS = """
[[room]]
name = "low"
files = ["host/zk/*"]
sees = []

[[room]]
name = "high"
files = ["host/model/*"]
sees = ["low"]

[[room]]
name = "start"
files = ["host/model/main.cpp"]
sees = ["high"]
"""

FUNCTION = """int sumOf(int first, int second)
{
    int total = first + second;
    total += first * 2;
    total -= second * 3;
    total *= first + 4;
    total /= second + 5;
    total += first % 6;
    total ^= second + 7;
    return total + 8;
}
"""

COUNTS = """#!/bin/sh
echo '{"files": [{"filename": "plugin/a.cpp", "branch_covered": 9, "branch_total": 10},
                 {"filename": "plugin/builder/b.cpp", "branch_covered": 1, "branch_total": 2},
                 {"filename": "app/straight.cpp", "branch_covered": 0, "branch_total": 0}]}'
"""

TEMPORARIES = """#include <string>
std::string named(const std::string & name, bool isOld)
{
    return isOld ? name : "a new " + name + ", as " + name + " was";
}
int forgotten(int given)
{
    // never called
    return given > 0 ? 1 : 2;
}
int main()
{
    return named("a", true).size() + named("b", false).size() == 18 ? 0 : 1;
}
"""


class CheckTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.root = pathlib.Path(self.folder.name)
        shutil.copytree(SCRIPTS, self.root / "scripts", ignore=shutil.ignore_patterns("test_checks.py"))
        subprocess.run(["git", "init", "-q"], cwd=self.root, check=True)
        for folder in ("app", "host", "plugin", "view"):
            (self.root / folder).mkdir()

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    def run_check(self, name, *arguments):
        path = f"{self.root}/tools{os.pathsep}{os.environ['PATH']}"
        done = subprocess.run([self.root / "scripts" / name, *arguments], capture_output=True, text=True,
                              env={**os.environ, "PATH": path})
        return done.returncode, done.stderr

    def assert_finds(self, name, expected):
        self.assertEqual(self.run_check(name), (1, expected))

    def assert_silent(self, name):
        self.assertEqual(self.run_check(name), (0, ""))


class Includes(CheckTest):
    def setUp(self):
        super().setUp()
        self.write("scripts/checks/layers.toml", LAYERS)
        self.write("host/zk/low.h", "#pragma once\n#include <QString>\n")
        self.write("host/model/high.h", '#pragma once\n#include "zk/low.h"\n')

    def test_downwards(self):
        self.write("host/model/main.cpp", '#include "model/high.h"\n#include "zk/low.h"\n')
        self.assert_silent("check_includes.py")

    def test_upwards(self):
        self.write("host/zk/low.cpp", '#include "zk/low.h"\n  #  include <model/high.h>\n')
        self.assert_finds("check_includes.py", "host/zk/low.cpp: includes host/model/high.h, but low does not lie above high\n")

    def test_file_with_a_room_of_its_own(self):
        self.write("host/model/main.cpp", "")
        self.write("host/model/other.cpp", '#include "main.cpp"\n')
        self.assert_finds("check_includes.py", "host/model/other.cpp: includes host/model/main.cpp, but high does not lie above start\n")

    def test_no_room(self):
        self.write("host/tools/lost.cpp", "")
        self.assert_finds("check_includes.py", "host/tools/lost.cpp: no room of layers.toml has this file\n")

    def test_tolerated(self):
        self.write("host/zk/low.cpp", '#include "model/high.h"\n')
        self.write("scripts/checks/layers.toml",
                   LAYERS + '\n[[tolerated]]\nfrom = "host/zk/low.cpp"\nto = "host/model/high.h"\n')
        self.assert_silent("check_includes.py")
        self.write("host/zk/low.cpp", "")
        self.assert_finds("check_includes.py",
                          "host/zk/low.cpp: does not include host/model/high.h any more; take it out of layers.toml\n")

    def test_circle_of_rooms(self):
        self.write("scripts/checks/layers.toml", LAYERS.replace("sees = []", 'sees = ["high"]'))
        self.assert_finds("check_includes.py", "layers.toml: the rooms see each other in a circle: low -> high -> low\n")


class Duplicates(CheckTest):
    def setUp(self):
        super().setUp()
        self.allow("nothing")
        self.write("plugin/a.cpp", FUNCTION)

    def allow(self, *files):
        entry = f"[[allowed]]\nfiles = [{', '.join(repr(file) for file in files)}]\nreason = 'a test'\n"
        self.write("scripts/checks/duplicates.toml", "allowed = []\n" if files == ("nothing",) else entry)

    def test_one(self):
        self.assert_silent("check_duplicates.py")

    def test_same_lines(self):
        self.write("tests/b.cpp", "// copied\n" + FUNCTION.replace("int sumOf", "int another"))
        self.assert_finds("check_duplicates.py", "plugin/a.cpp:3 and tests/b.cpp:4 are alike (8 lines)\n")

    def test_seven_lines(self):
        self.write("tests/b.cpp", FUNCTION.replace("int sumOf", "int another").replace("total + 8", "total + 9"))
        self.assert_silent("check_duplicates.py")

    def test_other_names(self):
        longer = FUNCTION + FUNCTION.replace("sumOf", "other").replace("int ", "long ")
        self.write("plugin/a.cpp", longer)
        self.write("host/b.cpp", longer.replace("total", "all").replace("first", "one").replace("second", "two"))
        status, told = self.run_check("check_duplicates.py")
        self.assertEqual(status, 1)
        self.assertRegex(told, r"(host/b|plugin/a)\.cpp:1 and (host/b|plugin/a)\.cpp:1 are alike \(\d{3} tokens\)")

    def test_every_folder(self):
        self.write("check/b.cpp", FUNCTION)
        self.assert_finds("check_duplicates.py", "check/b.cpp:1 and plugin/a.cpp:1 are alike (9 lines)\n")

    def test_allowed(self):
        self.write("tests/b.cpp", FUNCTION)
        self.allow("plugin/a.cpp", "tests/*.cpp")
        self.assert_silent("check_duplicates.py")
        self.write("tests/b.cpp", "")
        self.assert_finds("check_duplicates.py",
                          "duplicates.toml: nothing is alike in plugin/a.cpp and tests/*.cpp any more; take it out\n")


class Unused(CheckTest):
    def setUp(self):
        super().setUp()
        self.write("scripts/checks/unused.toml", "needed = []\n")
        # As every tree has: what a class of Qt calls.
        self.write("app/panel.h", "struct panel : QWidget\n{\n    void paintEvent(QPaintEvent * event) override;\n};\n")
        self.write("app/panel.cpp", '#include "panel.h"\nvoid panel::paintEvent(QPaintEvent * event)\n{\n    use(event);\n}\n')

    def need(self, name):
        self.write("scripts/checks/unused.toml", f"[[needed]]\nreason = 'a test'\nfunctions = ['{name}']\n")

    def test_all_used(self):
        self.assert_silent("check_unused.py")

    def test_unused(self):
        self.write("host/a.cpp", "int forgotten()\n{\n    return 1;\n}\n")
        self.assert_finds("check_unused.py", "host/a.cpp:1: nothing calls forgotten()\n")

    def test_used_by_a_test_only(self):
        self.write("host/a.cpp", "int forgotten()\n{\n    return 1;\n}\n")
        self.write("tests/t.cpp", "int t()\n{\n    return forgotten();\n}\n")
        self.assert_finds("check_unused.py", "host/a.cpp:1: nothing calls forgotten()\n")

    def test_needed(self):
        self.write("host/a.cpp", "int forgotten()\n{\n    return 1;\n}\n")
        self.need("forgotten")
        self.assert_silent("check_unused.py")
        self.write("host/a.cpp", "")
        self.assert_finds("check_unused.py", "unused.toml: forgotten() is called, or is gone; take it out\n")

    def test_own_virtual_function(self):
        self.write("host/b.h", "struct base\n{\n    virtual void paintEvent(QPaintEvent * event) = 0;\n};\n")
        self.assert_finds("check_unused.py", "app/panel.cpp:2: nothing calls paintEvent()\n")


class Coverage(CheckTest):
    def setUp(self):
        super().setUp()
        self.write("tools/gcovr", COUNTS).chmod(0o755)

    def floor(self, **floors):
        lines = [f'"{folder}" = {floor}' for folder, floor in floors.items()]
        return self.write("scripts/checks/coverage.toml", "[branches]\n" + "\n".join(lines) + "\n")

    def test_enough(self):
        self.floor(app=1.0, plugin=83.3)
        self.assert_silent("check_coverage.py")

    def test_too_little(self):
        self.floor(app=1.0, plugin=83.4)
        self.assert_finds("check_coverage.py", "plugin: the tests take 83.3 % of the branches, 83.4 % are wanted\n")

    def test_deepest_folder_counts(self):
        self.floor(**{"app": 1.0, "plugin": 90.0, "plugin/builder": 50.1})
        self.assert_finds("check_coverage.py", "plugin/builder: the tests take 50.0 % of the branches, 50.1 % are wanted\n")

    def test_nothing_counted(self):
        self.floor(app=1.0, plugin=1.0, view=1.0)
        self.assert_finds("check_coverage.py", "view: nothing was counted\n")

    def test_raise(self):
        file = self.floor(**{"app": 1.0, "plugin": 95.0, "plugin/builder": 10.0})
        self.run_check("check_coverage.py", "--raise")
        self.assertEqual(file.read_text(encoding="utf-8"), '[branches]\n"app" = 100.0\n"plugin" = 95.0\n"plugin/builder" = 50.0\n')

    def test_part(self):
        self.floor(app=1.0, plugin=83.3)
        self.write(".gitignore", "build/\ntools/\n")
        self.write("build/coverage/a.gcda", "")
        for tool in ("tools/cmake", "tools/ctest", "scripts/install_dependencies.sh", "scripts/check_format.sh"):
            self.write(tool, "#!/bin/sh\n").chmod(0o755)
        failed = (1, "check.sh: failed: coverage\n")
        self.write("tools/ctest", "#!/bin/sh\nexit 1\n")
        self.assertEqual(self.run_check("check.sh", "coverage"), failed)
        self.assertFalse((self.root / "build/coverage/a.gcda").exists())
        self.write("tools/ctest", "#!/bin/sh\n")
        self.assertEqual(self.run_check("check.sh", "coverage"), (0, ""))
        # All was tested, and is not again before something changes.
        self.write("tools/ctest", "#!/bin/sh\nexit 1\n")
        self.assertEqual(self.run_check("check.sh", "coverage"), (0, ""))
        self.write("host/new.cpp", "")
        self.assertEqual(self.run_check("check.sh", "coverage"), failed)
        self.assertEqual(self.run_check("check.sh", "coverage"), failed)

    def test_file_of_no_folder(self):
        self.floor(plugin=1.0)
        self.assert_finds("check_coverage.py", "app/straight.cpp: no folder of coverage.toml has this file\n")


class Gcov(CheckTest):
    """Counts what the compiler makes of a real source."""

    def branches(self, executable):
        self.write("a.cpp", TEMPORARIES)
        subprocess.run(["g++", "-Og", "--coverage", "-o", "a", "a.cpp"], cwd=self.root, check=True)
        subprocess.run([self.root / "a"], cwd=self.root, check=True)
        note = next(self.root.glob("*a.gcno"))
        subprocess.run([*executable, "--branch-counts", "--branch-probabilities", note], cwd=self.root, check=True,
                       stdout=subprocess.DEVNULL)
        text = (self.root / "a.cpp.gcov").read_text(encoding="utf-8")
        told = re.search(r"^ *\S+: *4:.*\n((?:(?:branch|call) .*\n)*)", text, re.MULTILINE)[1]
        found = [line for line in told.split("\n") if line.startswith("branch") and not line.endswith("(throw)")]
        return {"taken": sum(not line.endswith(("never executed", "taken 0")) for line in found), "all": len(found)}

    def test_what_only_an_exception_reaches(self):
        plain = self.branches(["gcov"])
        without = self.branches([self.root / "scripts/gcov_without_exceptions.py"])
        self.assertGreater(plain["all"], plain["taken"])
        self.assertEqual(without["taken"], plain["taken"])
        self.assertEqual(without["all"], without["taken"])

    def test_what_was_not_run_stays(self):
        without = self.branches([self.root / "scripts/gcov_without_exceptions.py"])
        text = (self.root / "a.cpp.gcov").read_text(encoding="utf-8")
        self.assertRegex(text, r"#####: *9:.*\nbranch  0 never executed\nbranch  1 never executed\n")
        self.assertGreater(without["all"], 0)


class Analysis(CheckTest):
    """Runs clang-tidy on sources that are put together."""

    RIGHT = "namespace {\nint kept(int given)\n{\n    return given + 1;\n}\n} // namespace\nint %s(int given)\n{\n    return kept(given);\n}\n"
    SHARED = "#pragma once\nnamespace shared {\nstruct point\n{\n    int x = 0;\n};\n} // namespace shared\n"
    # What is only looked for in the main file: where the program goes, and which names are for nothing.
    NULL = "int %s(int given)\n{\n    const int * place = nullptr;\n    return given > 3 ? *place : given;\n}\n"
    USING = '#include "shared.h"\nusing shared::point;\nint %s()\n{\n    return 1;\n}\n'

    def setUp(self):
        super().setUp()
        shutil.copy(SCRIPTS.parent / ".clang-tidy", self.root)
        self.write("host/shared.h", self.SHARED)
        environment = unittest.mock.patch.dict(os.environ, XDG_CACHE_HOME=str(self.root / "cache"))
        environment.start()
        self.addCleanup(environment.stop)

    def build(self, **sources):
        commands = []
        for name, text in sources.items():
            file = self.write(f"host/{name}.cpp", text % name)
            command = f"ccache g++ -I{self.root}/host -o {name}.o -c {file}"
            commands.append({"directory": f"{self.root}/build/dev", "command": command, "file": str(file)})
        self.write("build/dev/compile_commands.json", json.dumps(commands))

    def assert_finds_in(self, *names):
        expected = f"clang-tidy found something in: {' '.join(f'host/{name}.cpp' for name in names)}\n" if names else ""
        self.assertEqual(self.run_check("analyse.py", "clang-tidy"), (1 if names else 0, expected))

    def test_same_names(self):
        self.build(first=self.RIGHT, second=self.RIGHT)
        self.assert_finds_in()

    def test_what_does_not_go_together(self):
        static = self.RIGHT.replace("namespace {\n", "").replace("} // namespace\n", "").replace("int kept", "static int kept")
        self.build(first=static, second=static, third=self.RIGHT)
        self.assert_finds_in()

    def test_each_finding(self):
        included = '#include "shared.h"\n' + self.RIGHT.replace("kept", "other")
        self.build(first=self.RIGHT, second=self.NULL, third=included, fourth=self.USING, fifth=self.RIGHT)
        self.assert_finds_in("fourth", "second")

    def test_finding_in_a_header(self):
        self.write("host/shared.h", self.SHARED.replace("int x = 0;", "void reset() { if (x) x = 0; }\n    int x = 0;"))
        user = '#include "shared.h"\nint %s(shared::point given)\n{\n    return given.x;\n}\n'
        self.build(first=user, second=user)
        expected = "clang-tidy found something in: host/shared.h\n"
        self.assertEqual(self.run_check("analyse.py", "clang-tidy"), (1, expected))

    def looked_at(self):
        done = subprocess.run([self.root / "scripts/analyse.py", "clang-tidy"], capture_output=True, text=True)
        return done.stdout.split("\n")[0]

    def test_missing_include(self):
        user = "#include <shared.h>\nint %s(shared::point given)\n{\n    return given.x;\n}\n"
        self.build(first=user, second=user)
        self.assertEqual(self.run_check("analyse.py", "clazy"), (0, ""))
        self.build(first=user, second=user.replace("#include <shared.h>\n", ""))
        self.assertEqual(self.run_check("analyse.py", "clazy"), (1, "clazy found something in: host/second.cpp\n"))

    def test_include_of_nothing(self):
        self.build(first=self.RIGHT, second='#include "gone.h"\n' + self.RIGHT)
        self.assert_finds_in("second")
        self.assertEqual(self.looked_at(), "clang-tidy: 1 of 2 files to look at")
        self.write("host/gone.h", "")
        self.assert_finds_in()

    def test_seen_before(self):
        self.build(first=self.RIGHT, second=self.NULL, third=self.USING)
        self.assertEqual(self.looked_at(), "clang-tidy: 3 of 3 files to look at")
        self.assertEqual(self.looked_at(), "clang-tidy: 2 of 3 files to look at")
        self.write("host/shared.h", self.SHARED.replace("x", "y"))
        self.build(first=self.RIGHT, second=self.RIGHT, third=self.USING)
        self.assertEqual(self.looked_at(), "clang-tidy: 2 of 3 files to look at")
        self.assert_finds_in("third")


class Joined(CheckTest):
    """Says which sources are compiled together."""

    def setUp(self):
        super().setUp()
        self.files = [str(self.write(f"host/{name}.cpp", f"namespace {{\nint {own}()\n{{\n    return 1;\n}}\n}} // namespace\n"))
                      for name, own in (("one", "kept"), ("two", "kept"), ("three", "left"))]

    def groups(self, at_most):
        return subprocess.run([self.root / "scripts/joined_sources.py", at_most, *self.files], check=True, capture_output=True,
                              text=True).stdout

    def test_a_name_in_common(self):
        self.assertEqual(self.groups("8"), "0;1;0\n")

    def test_no_more_than_asked_for(self):
        self.assertEqual(self.groups("1"), "0;1;2\n")

    def test_a_name_that_means_something_else(self):
        self.files.append(str(self.write("host/four.cpp", "// left and kept\nint asked(left given);\n")))
        self.assertEqual(self.groups("8"), "0;1;0;1\n")


class Floors(CheckTest):
    def setUp(self):
        super().setUp()
        self.commit('"plugin" = 80.0\n"view" = 70.0\n')
        self.commit('"plugin" = 85.0\n"view" = 70.0\n')

    def floors(self, lines):
        self.write("scripts/checks/coverage.toml", "[branches]\n" + lines)

    def git(self, *arguments):
        done = subprocess.run(["git", "-c", "user.name=a", "-c", "user.email=a@localhost", *arguments], cwd=self.root, check=True,
                              capture_output=True, text=True)
        return done.stdout.strip()

    def commit(self, lines):
        self.floors(lines)
        self.git("add", "scripts/checks/coverage.toml")
        self.git("commit", "-q", "-m", "a test")

    def test_as_committed(self):
        self.assert_silent("check_floors.py")

    def test_raised(self):
        self.floors('"plugin" = 85.1\n"view" = 70.0\n"app" = 1.0\n')
        self.assert_silent("check_floors.py")

    def test_lowered(self):
        self.floors('"plugin" = 84.9\n"view" = 70.0\n')
        newest = self.git("rev-parse", "--short", "HEAD")
        self.assert_finds("check_floors.py", f"coverage.toml: 84.9 % are asked of plugin, but {newest} asked for 85.0 %\n")

    def test_lowered_commits_ago(self):
        highest = self.git("rev-parse", "--short", "HEAD")
        self.commit('"plugin" = 80.0\n"view" = 70.0\n')
        self.commit('"plugin" = 81.0\n"view" = 70.0\n')
        self.assert_finds("check_floors.py", f"coverage.toml: 81.0 % are asked of plugin, but {highest} asked for 85.0 %\n")

    def test_folder_left_out(self):
        self.floors('"plugin" = 85.0\n')
        newest = self.git("rev-parse", "--short", "HEAD")
        self.assert_finds("check_floors.py", f"coverage.toml: nothing is asked of view, but {newest} asked for 70.0 %\n")
        shutil.rmtree(self.root / "view")
        self.assert_silent("check_floors.py")


if __name__ == "__main__":
    unittest.main()

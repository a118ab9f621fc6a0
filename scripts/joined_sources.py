#!/usr/bin/env python3
"""Sources put together, so that an analyser or a compiler reads the headers that they share once, which is most of its work.

Two sources go together when they are compiled alike and no name that is one file's own is a word of the other, whatever it means there.

usage: joined_sources.py AT_MOST SOURCE…     prints the number of the group of each source, divided by semicolons
"""

import re
import shlex
import sys

COMMENT = re.compile(r"//[^\n]*|/\*.*?\*/", re.DOTALL)
RAW_TEXT = re.compile(r'R"(\w*)\(.*?\)\1"', re.DOTALL)
TEXT = re.compile(r'"(?:\\.|[^"\\\n])*"' r"|'(?:\\.|[^'\\\n])+'")
MACRO = re.compile(r"^\s*#\s*define\s+(\w+)", re.MULTILINE)
USED = re.compile(r"^\s*using\s+(?:namespace\s+)?(?:\w*::)*(\w+)\s*[;=]", re.MULTILINE)
WORD = re.compile(r"[^\W\d]\w*")
UNNAMED_NAMESPACE = re.compile(r"\bnamespace\s*\{")
TYPE = re.compile(r"^\s*(?:template\s*<.*?>\s*)?(?:class|struct|union|enum(?:\s+class)?)\s+(\w+)")
FUNCTION_OR_VALUE = re.compile(r"(\w+)\s*(?:\(|=|\{|\[|$)")


def _inside(text, begin):
    """What stands between the brace that ends at `begin` and its other one, with braces inside left out."""
    depth, kept = 1, []
    for letter in text[begin:]:
        depth += (letter == "{") - (letter == "}")
        if depth == 0:
            break
        if letter == "{" and depth == 2:
            kept.append("{")
        elif letter == "}" and depth == 1:
            kept.append(";")
        elif depth == 1:
            kept.append(letter)
    return "".join(kept)


def _code(text):
    """A source without comments and without what is in its texts."""
    return TEXT.sub('""', COMMENT.sub("", RAW_TEXT.sub('""', text)))


def own_names(code):
    """The names that a source has for itself alone; what it takes from other namespaces by `using` is among them."""
    names = {*MACRO.findall(code), *USED.findall(code)}
    for match in UNNAMED_NAMESPACE.finditer(code):
        for declaration in _inside(code, match.end()).split(";"):
            if declaration.lstrip().startswith("using "):
                continue
            if found := TYPE.match(declaration) or FUNCTION_OR_VALUE.search(declaration.strip()):
                names.add(found[1])
    return names


class Words:
    """A compile command without its compiler and files, definitions apart."""

    def __init__(self, entry):
        words = shlex.split(entry["command"])
        compiler = next(i for i, word in enumerate(words) if re.search(r"(\+\+|g?cc|clang)(-\d+)?$", word))
        rest = iter(words[compiler + 1:])
        self.flags, self.definitions = [], {}
        for word in rest:
            if word == "-o":
                next(rest)
            elif word.startswith("-D"):
                self.definitions[word.split("=")[0]] = word
            elif word != "-c" and word != entry["file"]:
                self.flags.append(word)


class Joined:
    """Sources that are read as one."""

    def __init__(self, directory, flags, definitions):
        self.files, self.names, self.words = [], set(), set()
        self.directory, self.common, self.definitions = directory, flags, dict(definitions)

    @property
    def flags(self):
        return [*self.definitions.values(), *self.common]

    def takes(self, command, names, words):
        same = all(self.definitions.get(name, word) == word for name, word in command.definitions.items())
        return same and self.common == command.flags and not (self.names & words or self.words & names)

    def add(self, file, command, names, words):
        self.files.append(file)
        self.definitions |= command.definitions
        self.names |= names
        self.words |= words

    def halves(self):
        middle = len(self.files) // 2
        for files in (self.files[:middle], self.files[middle:]):
            half = Joined(self.directory, self.common, self.definitions)
            half.files = files
            yield half

    def text(self):
        # Not includes of the files: much is looked for in the main file only. A definition between two, as an include that is there
        # twice is none when a macro was defined since.
        texts = []
        for number, file in enumerate(self.files):
            with open(file, encoding="utf-8") as source:
                texts.append(f"{source.read()}\n#define KORVANE_END_OF_SOURCE_{number}\n")
        return "".join(texts)


class Alike:
    """In the place of compile commands that are the same."""

    flags, definitions = [], {}


def _grouped(sources, at_most):
    """Puts sources together, each a directory, a file and the words of its compile command, `at_most` so many."""
    groups = []
    for directory, file, command in sources:
        with open(file, encoding="utf-8") as source:
            code = _code(source.read())
        names, words = own_names(code), set(WORD.findall(code))
        group = next((group for group in groups if len(group.files) < at_most and group.takes(command, names, words)), None)
        if group is None:
            group = Joined(directory, command.flags, command.definitions)
            groups.append(group)
        group.add(file, command, names, words)
    return groups


def join(entries, at_most):
    """Puts the sources of `entries`, of compile_commands.json, together, `at_most` so many."""
    return _grouped(((entry["directory"], entry["file"], Words(entry)) for entry in entries), at_most)


def group_numbers(files, at_most):
    """The number of the group of each of `files`, which are compiled alike, `at_most` so many in one."""
    groups = _grouped(((".", file, Alike) for file in files), at_most)
    numbers = {file: number for number, group in enumerate(groups) for file in group.files}
    return [numbers[file] for file in files]


if __name__ == "__main__":
    print(";".join(str(number) for number in group_numbers(sys.argv[2:], int(sys.argv[1]))))

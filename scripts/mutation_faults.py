"""Makes small faults from a C++ source: where they are, what they change, and a text that holds all of them.

The text is read as tokens, not parsed: what comes out wrong does not compile and is dropped by the caller.
"""

import bisect
import dataclasses
import re

TOKEN = re.compile(
    r"""(?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:\\\n|[^\n])*)
      |(?P<raw>R"(?P<end>[^(\s]*)\(.*?\)(?P=end)")
      |(?P<string>"(?:\\.|[^"\\])*")
      |(?P<char>'(?:\\.|[^'\\])+')
      |(?P<number>\d[\w.']*)
      |(?P<word>[A-Za-z_]\w*)
      |(?P<sign><<=|>>=|->|::|\+\+|--|&&|\|\||[=!<>+\-*/%&|^]=|<<|>>|.)""",
    re.VERBOSE | re.DOTALL | re.MULTILINE)

# One sign for another. Those of the second list only where blanks around them tell an operator from brackets of a template.
SWAPPED = {"&&": "||", "||": "&&", "==": "!=", "!=": "==", "<=": "<", ">=": ">", "++": "--", "+=": "-="}
SWAPPED_BETWEEN_BLANKS = {"<": "<=", ">": ">=", "+": "-", "-": "+"}
SWAPPED_WORDS = {"true": "false", "false": "true", "continue": "break"}
# What these say changes nothing that can be seen with the model of this repository: it answers the same for each
# argument, as its readers may not rely on that, and room or rows kept in memory cost time only.
UNSEEN = re.compile(r"(getPropertyId|getListOfProperty|isNumber|isString|setForwardOnly|reserve)\([^()]*$")
UNSEEN_STATEMENT = re.compile(r"[\w.>-]*(setForwardOnly|reserve)\(")
NO_STATEMENT = {"return", "const", "auto", "static", "if", "for", "else", "using", "break", "continue", "case", "default",
                "switch", "while", "do", "throw", "constexpr", "delete", "struct", "class", "enum", "try", "catch", "typedef"}


@dataclasses.dataclass
class Token:
    kind: str
    text: str
    begin: int

    @property
    def end(self):
        return self.begin + len(self.text)


@dataclasses.dataclass
class Fault:
    number: int
    file: str
    line: int
    before: str  # the faulty line as it is
    after: str   # and with the fault
    begin: int
    end: int
    replacement: str
    function: int = 0  # number of the first fault of the same function, by which the function is known

    def __str__(self):
        return f"{self.number}\t{self.file}:{self.line}\t{self.before}\t=>\t{self.after}"


class FaultySource:
    """A source whose functions hold their faulty versions, and the place of each in the text."""

    def __init__(self):
        self.text = ""
        self.faults = []
        self._begins = []   # first line of each piece of the text
        self._numbers = []  # the fault that the piece belongs to, 0 for none

    def add(self, text, number=0):
        self._begins.append(self.text.count("\n") + 1)
        self._numbers.append(number)
        self.text += text

    def faults_at(self, line):
        """The fault whose version of a function holds `line`."""
        at = bisect.bisect_right(self._begins, line) - 1
        number = self._numbers[at] if at >= 0 else 0
        return {number} if number else set()


def tokens_of(text):
    tokens = []
    for match in TOKEN.finditer(text):
        if match.lastgroup != "skip" and not match.group("skip"):
            kind = next(k for k in ("raw", "string", "char", "number", "word", "sign") if match.group(k))
            tokens.append(Token(kind, match.group(0), match.start()))
    return tokens


def matching(tokens, at):
    """Index of the bracket that closes the one at `at`."""
    depth = 0
    pairs = {"(": ")", "{": "}", "[": "]"}
    opening, closing = tokens[at].text, pairs[tokens[at].text]
    for i in range(at, len(tokens)):
        if tokens[i].text == opening:
            depth += 1
        elif tokens[i].text == closing:
            depth -= 1
            if depth == 0:
                return i
    return len(tokens) - 1


def function_bodies(tokens):
    """The pairs (index of '{', index of '}') of the functions in namespaces and classes."""
    bodies = []
    head = 0
    i = 0
    while i < len(tokens):
        text = tokens[i].text
        if text in (";", "}") or (text == ":" and tokens[i - 1].text in ("public", "private", "protected")):
            head = i + 1
        elif text == "{":
            words = [t.text for t in tokens[head:i]]
            last = words[-1] if words else ""
            is_class = bool({"class", "struct", "union"} & set(words)) and "enum" not in words and "(" not in words
            if "namespace" in words or ("extern" in words and len(words) == 2) or is_class:
                head = i + 1
            elif ("(" in words and "=" not in words and "constexpr" not in words
                  and (last in (")", "const", "noexcept", "override") or "->" in words)
                  and words[0] != "enum"):
                end = matching(tokens, i)
                bodies.append((i, end))
                i = end
                head = i + 1
            else:
                i = matching(tokens, i)  # the braces of a value
        i += 1
    return bodies


def between_blanks(text, token):
    return text[token.begin - 1] in " \n" and text[token.end] in " \n"


def changed_number(token):
    return str(int(token.text) + 1) if token.text.isdigit() else None


def changed_literal(token):
    if token.kind == "string" and len(token.text) > 2:
        return token.text[:-1] + '~"'
    if token.kind == "char" and token.text != "'~'":
        return "'~'"
    return None


def sign_replacement(text, tokens, i):
    token = tokens[i]
    if token.text in SWAPPED:
        return SWAPPED[token.text]
    if token.text in SWAPPED_BETWEEN_BLANKS and between_blanks(text, token) and i and tokens[i - 1].text != "template":
        return SWAPPED_BETWEEN_BLANKS[token.text]
    if token.text == "!":
        return ""
    return None


def token_replacements(text, tokens, first, last):
    for i in range(first, last):
        token = tokens[i]
        if token.kind == "sign":
            new = sign_replacement(text, tokens, i)
        elif token.kind == "word":
            new = SWAPPED_WORDS.get(token.text)
        elif token.kind == "number":
            new = changed_number(token)
        else:
            new = changed_literal(token)
        if new is not None:
            yield token.begin, token.end, new


def condition_replacements(tokens, first, last):
    """Conditions that never and always hold."""
    for i in range(first, last):
        if tokens[i].text not in ("if", "while") or i + 1 >= last or tokens[i + 1].text != "(":
            continue
        end = matching(tokens, i + 1)
        begin = i + 2
        for j in range(begin, end):
            if tokens[j].text == ";":
                begin = j + 1
        if any(t.text == "=" for t in tokens[begin:end]):
            continue  # it declares what it tests
        yield tokens[begin].begin, tokens[end - 1].end, "false"
        if tokens[i].text == "if":
            yield tokens[begin].begin, tokens[end - 1].end, "true"


def is_declaration(words):
    """Whether `words`, tokens of a statement up to its call or assignment, declare a name."""
    return any(b.kind == "word" and (a.kind == "word" or a.text in (">", "&", "*"))
               for a, b in zip(words, words[1:]))


def statement_removals(tokens, first, last):
    """Statements that call or assign, left out."""
    i = first
    while i < last:
        previous = tokens[i - 1].text
        if previous in ("{", "}", ";", ")", "else") and tokens[i].kind == "word" and tokens[i].text not in NO_STATEMENT:
            end = i
            depth = 0
            while end < last and not (tokens[end].text == ";" and depth == 0):
                depth += {"(": 1, "{": 1, "[": 1, ")": -1, "}": -1, "]": -1}.get(tokens[end].text, 0)
                if depth < 0:
                    break
                end += 1
            if end < last and depth == 0:
                head = i
                while head < end and tokens[head].text not in ("(", "=", "+=", "<<"):
                    head += 1
                if head < end and not is_declaration(tokens[i:head]):
                    yield tokens[i].begin, tokens[end].end, "(void)0;"
        i += 1


def line_around(text, begin, end):
    first = text.rfind("\n", 0, begin) + 1
    last = text.find("\n", end)
    return first, len(text) if last < 0 else last


def one_line(text):
    return " ".join(text.split())


def faults_of_body(text, tokens, body, file, number):
    first, last = body[0] + 1, body[1]
    found = {}
    for begin, end, new in (*token_replacements(text, tokens, first, last), *condition_replacements(tokens, first, last),
                            *statement_removals(tokens, first, last)):
        left = line_around(text, begin, end)[0]
        if (text[begin:end] != new and not UNSEEN.search(text[left:begin])
                and not UNSEEN_STATEMENT.match(text[begin:end])):
            found[(begin, end, new)] = None
    faults = []
    for begin, end, new in sorted(found):
        left, right = line_around(text, begin, end)
        faults.append(Fault(number + len(faults), file, text.count("\n", 0, begin) + 1, one_line(text[left:right]),
                            one_line(text[left:begin] + new + text[end:right]), begin, end, new, number))
    return faults


def faulty_source(path, file, number, dropped=()):
    """The source at `path` with all its faults but those of `dropped`, numbered from `number`."""
    text = path.read_text()
    tokens = tokens_of(text)
    made = FaultySource()
    written = 0
    for body in function_bodies(tokens):
        faults = faults_of_body(text, tokens, body, file, number + len(made.faults))
        made.faults += faults
        kept = [f for f in faults if f.number not in dropped]
        if not kept:
            continue
        begin, end = tokens[body[0]].begin, tokens[body[1]].end
        made.add(text[written:begin])
        made.add(f"{{ switch (korvane_fault({faults[0].number}, {faults[-1].number})) {{\n")
        for f in kept:
            made.add(f"case {f.number}: {text[begin:f.begin]}{f.replacement}{text[f.end:end]} break;\n", f.number)
        made.add("default: ")
        made.add(text[begin:end] + "\n}}\n")
        written = end
    made.add(text[written:])
    return made

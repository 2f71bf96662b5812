"""What can be changed in a source file, one change at a time.

A mutant is one replacement in one line. Comments, preprocessor lines and assertions of the compiler are left alone:
they do nothing at run time. Each change is one that a slip of the hand could make.
"""

import re
from dataclasses import dataclass


@dataclass(frozen=True)
class Mutant:
    file: str
    line: int  # from 1
    kind: str
    before: str  # the whole line, or lines, as they stand
    after: str

    def key(self):
        """What names a mutant as long as its line stays as it is, wherever the line stands."""
        return f"{self.file} | {self.kind} | {self.before.strip()} | {self.after.strip()}"


def masked(text):
    """The text with comments and literals blanked out, position by position."""
    pattern = re.compile(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'', re.S)
    return pattern.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), text)


def closing(text, start):
    """The place of the parenthesis that closes the one at start."""
    depth = 0
    for place in range(start, len(text)):
        depth += {"(": 1, ")": -1}.get(text[place], 0)
        if depth == 0:
            return place
    return None


SWAPS = [
    ("comparison", re.compile(r" (==|!=|<=|>=|<|>) "),
     {"==": "!=", "!=": "==", "<=": "<", ">=": ">", "<": "<=", ">": ">="}),
    ("junction", re.compile(r" (&&|\|\|) "), {"&&": "||", "||": "&&"}),
    ("arithmetic", re.compile(r" (\+|-) "), {"+": "-", "-": "+"}),
    ("bits", re.compile(r" (&|\|) "), {"&": "|", "|": "&"}),
]
WORDS = re.compile(r"\b(true|false)\b")
NUMBERS = re.compile(r"(?<![\w.\"'])(0x[0-9A-Fa-f]+|\d+)([uUlL]*)(?![\w.])")
NEGATION = re.compile(r"(?<=[(\s])!(?=[\w(])")
MESSAGE = re.compile(r'"(?:\\.|[^"\\\n])+"')
CALL = re.compile(r"^\s+(?:[\w:]+(?:\.|->|::))*[A-Za-z_]\w*\(.*\);$")
ASSIGNMENT = re.compile(r"^\s+[\w.\->\[\]\*]+ (?:=|\+=|\|=) .*;$")
DECLARATION = re.compile(
    r"^\s+(?:constexpr|using|static_assert|typedef|return|delete|throw|extern|friend|virtual|explicit)\b")


def lineOf(text, place):
    return text.count("\n", 0, place) + 1


def mutantsOf(name, text):
    """All mutants of one file, in the order of their lines."""
    code = masked(text)
    lines = text.split("\n")
    plain = code.split("\n")
    found = []

    def add(place, end, replacement, kind):
        number = lineOf(text, place)
        last = lineOf(text, end - 1)
        begin = sum(len(l) + 1 for l in lines[: number - 1])
        before = "\n".join(lines[number - 1 : last])
        after = before[: place - begin] + replacement + before[end - begin :]
        found.append(Mutant(name, number, kind, before, after))

    def atRunTime(place):
        line = plain[lineOf(text, place) - 1]
        return not re.match(r"\s*(#|static_assert|template|using|friend)", line) and "operator" not in line

    for match in re.finditer(r"\b(?:if|while) \(", code):
        end = closing(code, match.end() - 1)
        if end is not None and atRunTime(match.start()):
            condition = text[match.end() : end]
            head = condition.rfind("; ") + 2 if "; " in condition else 0
            add(match.end() + head, end, f"!({condition[head:]})", "condition")
    for kind, pattern, swap in SWAPS:
        for match in pattern.finditer(code):
            if atRunTime(match.start()):
                add(match.start(1), match.end(1), swap[match.group(1)], kind)
    for match in WORDS.finditer(code):
        if atRunTime(match.start()):
            add(match.start(), match.end(), "false" if match.group() == "true" else "true", "constant")
    for match in NUMBERS.finditer(code):
        if atRunTime(match.start()):
            add(match.start(1), match.end(1), str(int(match.group(1), 0) + 1), "constant")
    for match in NEGATION.finditer(code):
        if atRunTime(match.start()):
            add(match.start(), match.end(), "", "negation")
    for match in MESSAGE.finditer(text):
        blank = code[match.start() : match.end()].strip() == ""
        before = code[code.rfind("\n", 0, match.start()) + 1 : match.start()]
        inComment = "//" in text[text.rfind("\n", 0, match.start()) + 1 : match.start()]
        if blank and not inComment and not re.match(r"\s*(#|static_assert|extern)", before + " "):
            add(match.end() - 1, match.end(), '~"', "message")

    for number, line in enumerate(plain, 1):
        whole = lines[number - 1]
        opens = line.count("(") == line.count(")")
        if DECLARATION.match(line) or not opens or not line.strip():
            continue
        if CALL.match(line):
            indent = whole[: len(whole) - len(whole.lstrip())]
            found.append(Mutant(name, number, "dropped call", whole, indent + ";"))
            follower = plain[number] if number < len(plain) else ""
            if CALL.match(follower) and follower.count("(") == follower.count(")") and not DECLARATION.match(follower):
                both = lines[number - 1 : number + 1]
                found.append(Mutant(name, number, "order", "\n".join(both), "\n".join(reversed(both))))
        elif ASSIGNMENT.match(line):
            indent = whole[: len(whole) - len(whole.lstrip())]
            found.append(Mutant(name, number, "dropped assignment", whole, indent + ";"))
    found.sort(key=lambda mutant: (mutant.line, mutant.kind))
    return found


def apply(text, mutant):
    """The text with the mutant planted."""
    lines = text.split("\n")
    count = mutant.before.count("\n") + 1
    assert "\n".join(lines[mutant.line - 1 : mutant.line - 1 + count]) == mutant.before
    return "\n".join(lines[: mutant.line - 1] + mutant.after.split("\n") + lines[mutant.line - 1 + count :])

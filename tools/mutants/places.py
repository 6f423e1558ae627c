"""Places of the product where one small change makes a mutant, and where such a place has gone to.

A place is a line of C++ and the text that stands there instead. Comments, strings and preprocessor
lines are left alone. The format of the code is relied on: a comparison has blanks around it, the
bracket of a template has none.
"""

import random
import re
from dataclasses import asdict, dataclass
from pathlib import Path

HOUSES = ("core", "platform", "data", "terrain", "objects", "app", "plugins", "resources", "assets",
          "sample", "tools")

SWAPS = [
    ("comparison", r" (<=|>=|<|>|==|!=) ", {"<": "<=", "<=": "<", ">": ">=", ">=": ">",
                                            "==": "!=", "!=": "=="}),
    ("arithmetic", r" (\+=|-=|\+|-|\*|/|%) ", {"+": "-", "-": "+", "*": "/", "/": "*", "%": "*",
                                               "+=": "-=", "-=": "+="}),
    ("logic", r" (&&|\|\|) ", {"&&": "||", "||": "&&"}),
    ("logic", r"(?<=[( ])(!)(?=[A-Za-z_(])", {"!": ""}),
    ("constant", r"\b(true|false)\b", {"true": "false", "false": "true"}),
]
NUMBER = re.compile(r"(?<![\w.'])(\d+)(?![\w.'x])")
STATEMENT = re.compile(
    r"^\s+(?!return\b|using\b|case\b|break\b|delete\b|static_assert\b|friend\b|explicit\b|virtual\b)"
    r"(?:[\w.:\[\]>*-]+\(.*\)|[\w.:\[\]>*-]+ (?:=|\+=|-=|\|=|&=) .*|(?:\+\+|--)[\w.:\[\]>-]+);$")
# What stands before the bracket of a block of statements, and what does so before another bracket.
BLOCK = re.compile(r"(\)|\bconst|\boverride|\bnoexcept|\bmutable|\belse|\bdo|\btry|[\s(,=]\[[^\[\]]*\]|"
                   r"\) (const )?-> [\w:<>*& ]+)$")
NO_BLOCK = re.compile(r"(case [^:]+: *|default: *|else *)?(switch|struct|class|enum|union|namespace)\b")


@dataclass
class Place:
    file: str
    line: int  # from 1
    kind: str
    old: str  # the line, without its end
    new: str
    before: str  # the nearest lines with text, without their blanks
    after: str


def blank_out(text):
    """The line with its strings, characters and comment made blank, as long as before."""
    text = re.sub(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'', lambda m: "\0" * len(m.group()), text)
    return re.sub(r"//.*", lambda m: "\0" * len(m.group()), text)


def changes(text):
    """(kind, changed line) for every change of one line of code."""
    seen = blank_out(text)
    if seen.lstrip().startswith(("#", "template", "using ", "friend ", "static_assert")):
        return
    for kind, pattern, swap in SWAPS:
        for match in re.finditer(pattern, seen):
            begin, end = match.span(1)
            yield kind, text[:begin] + swap[match.group(1)] + text[end:]
    for match in NUMBER.finditer(seen):
        begin, end = match.span(1)
        yield "constant", text[:begin] + str(int(match.group(1)) + 1) + text[end:]
    if STATEMENT.match(seen) and seen.count("(") == seen.count(")"):
        indent = text[:len(text) - len(text.lstrip())]
        yield "left out", indent + "{}"


def probe_at(lines, place):
    """(index, column) inside the innermost block of statements around the place, where a statement can be
    put that runs before the place does; None for a place outside of functions."""
    old, new = place.old, place.new
    column = next((i for i, (a, b) in enumerate(zip(old, new)) if a != b), min(len(old), len(new)))
    depth = 0
    for index in range(place.line - 1, -1, -1):
        seen = blank_out(lines[index])
        for at in range(min(column, len(seen)) - 1, -1, -1):
            if seen[at] == "}":
                depth += 1
            elif seen[at] == "{":
                depth -= 1
                if depth < 0:
                    depth = 0
                    head = " ".join(blank_out(text) for text in lines[max(0, index - 8):index])
                    head = re.split(r"[;{}]\s", f"{head} {seen[:at]}")[-1].strip()
                    if BLOCK.search(head) and not NO_BLOCK.match(head):
                        return index, at + 1
        column = 1 << 30
    return None


def neighbour(lines, index, step):
    index += step
    while 0 <= index < len(lines) and not lines[index].strip():
        index += step
    return lines[index].strip() if 0 <= index < len(lines) else ""


def places_of(root, file):
    lines = (root / file).read_text().split("\n")
    in_comment = False
    for index, text in enumerate(lines):
        if "/*" in text:
            in_comment = True
        if not in_comment:
            for kind, new in changes(text):
                yield Place(file, index + 1, kind, text, new, neighbour(lines, index, -1),
                            neighbour(lines, index, 1))
        if "*/" in text:
            in_comment = False


def sources(root, house):
    # The monkey is a test, wherever it stands.
    return [path.relative_to(root).as_posix() for path in sorted((root / house).rglob("*"))
            if path.suffix in (".cpp", ".h") and "monkey" not in path.parts]


def draw(root, count, seed):
    """`count` places, over the houses by their lines, no line twice; the same ones for a seed."""
    dice = random.Random(seed)
    files = {house: sources(root, house) for house in HOUSES if (root / house).is_dir()}
    sizes = {house: sum((root / f).read_text().count("\n") for f in names)
             for house, names in files.items()}
    shares = {house: count * size / sum(sizes.values()) for house, size in sizes.items()}
    numbers = {house: int(share) for house, share in shares.items()}
    by_rest = sorted(shares, key=lambda house: numbers[house] - shares[house])
    for house in by_rest[:count - sum(numbers.values())]:
        numbers[house] += 1
    drawn = []
    for house, number in numbers.items():
        by_line = {}
        for file in files[house]:
            for place in places_of(root, file):
                by_line.setdefault((place.file, place.line), []).append(place)
        for key in dice.sample(sorted(by_line), min(number, len(by_line))):
            drawn.append(dice.choice(by_line[key]))
    dice.shuffle(drawn)
    return drawn


def find_again(root, place, everything):
    """The place in a tree that has changed since, or None: the same line, where its neighbours agree
    best; a file of the same name counts as one neighbour. `everything` is all_lines(root)."""
    best, best_score = None, 0
    for file, index in everything.get(place.old.strip(), []):
        lines = (root / file).read_text().split("\n")
        score = 1 + (file == place.file) + (Path(file).name == Path(place.file).name)
        score += neighbour(lines, index, -1) == place.before
        score += neighbour(lines, index, 1) == place.after
        if score > best_score:
            shift = len(lines[index]) - len(lines[index].lstrip())
            best_score = score
            best = Place(**{**asdict(place), "file": file, "line": index + 1, "old": lines[index],
                            "new": " " * shift + place.new.lstrip()})
    return best


def all_lines(root):
    """Where each line of the product stands: its text without blanks -> (file, index) ..."""
    found = {}
    for house in HOUSES:
        if not (root / house).is_dir():
            continue
        for file in sources(root, house):
            for index, text in enumerate((root / file).read_text().split("\n")):
                found.setdefault(text.strip(), []).append((file, index))
    return found

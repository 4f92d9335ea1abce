"""All mutants of the library's sources, each with an identity that outlives unrelated edits."""

import hashlib
from dataclasses import dataclass

import operators
import statements
from lexer import Source


@dataclass(frozen=True)
class Mutant:
    """One change: `start` to `end` of `file` (relative to src/) becomes `new`."""

    id: str
    file: str
    line: int
    code: str  # the line without its indentation
    operation: str
    start: int
    end: int
    old: str
    new: str

    def apply(self, text):
        """The text of the file with the change made."""
        return text[: self.start] + self.new + text[self.end :]

    def change(self):
        """The change for people: what it was and what it becomes, on one line."""
        if self.operation == "order" and self.old.endswith(";"):
            return "exchanged with the next call"
        new = " ".join(self.new.split()) or "nothing"
        return f"{' '.join(self.old.split())} -> {new}"

    def in_words(self):
        """The place and the change."""
        return f"{self.file}:{self.line} {self.operation}: {self.change()}"


def mutants_of(file, text):
    """The mutants of one file in the order of their places, each text made once."""
    source = Source(text)
    changes = [c for make in operators.ALL + statements.ALL for c in make(source)]
    made = set()
    mutants = []
    lines = _Lines(text)
    for operation, start, end, new in sorted(changes, key=lambda c: c[1:3]):
        old = text[start:end]
        outcome = text[:start] + new + text[end:]
        if outcome in made or outcome == text:
            continue
        made.add(outcome)
        number, column = lines.place(start)
        identity = f"{file}:{lines.name(number)}:{column}:{operation}:{_short(old, new)}"
        mutants.append(Mutant(identity, file, number, lines.code(number), operation, start, end, old, new))
    return mutants


def _short(old, new):
    """A few characters that tell changes at one place apart."""
    return hashlib.sha256(f"{old.split()}>{new.split()}".encode()).hexdigest()[:4]


class _Lines:
    """Lines of a text by what they say: the name of a line is a hash of it, and for the second and
    later ones of the same text in the file their count."""

    def __init__(self, text):
        self._starts = [0]
        self._names = []
        self._codes = [line.strip() for line in text.split("\n")]
        seen = {}
        for line, said in zip(text.split("\n"), self._codes):
            self._starts.append(self._starts[-1] + len(line) + 1)
            seen[said] = seen.get(said, 0) + 1
            name = hashlib.sha256(said.encode()).hexdigest()[:8]
            self._names.append(name if seen[said] == 1 else f"{name}.{seen[said]}")
        self._indents = [len(line) - len(line.lstrip()) for line in text.split("\n")]

    def place(self, offset):
        """Line from 1 and column from 0, not counting the indentation."""
        number = 1
        while self._starts[number] <= offset:
            number += 1
        return number, offset - self._starts[number - 1] - self._indents[number - 1]

    def code(self, number):
        """What the line of that number says."""
        return self._codes[number - 1]

    def name(self, number):
        """What identifies the line of that number."""
        return self._names[number - 1]


def all_mutants(root):
    """The mutants of every file below the folder, a pathlib.Path: sources first, because a mutant in
    a header takes longer."""
    found = []
    for suffix in ("cpp", "h"):
        for path in sorted(root.rglob(f"*.{suffix}")):
            found += mutants_of(path.relative_to(root).as_posix(), path.read_text())
    return found

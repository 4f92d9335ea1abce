"""What became of each mutant, kept in a file so that an interrupted run goes on where it was."""

import hashlib
import json

KILLED = "killed"
SURVIVED = "survived"
SAME = "same machine code"
BROKEN = "does not compile"


def digest(paths):
    """A short hash of the contents of files."""
    total = hashlib.sha256()
    for path in sorted(paths):
        total.update(path.read_bytes())
    return total.hexdigest()[:16]


class Results:
    """The outcomes so far. They count as long as the mutated file stays the same, and a survivor
    only as long as the tests do.

    `sources` is the folder of the library's sources, `tests` the digests of the test programs.
    """

    def __init__(self, path, sources, tests):
        self._path = path
        self._digests = {}
        self._sources = sources
        self._tests = tests
        self._known = {}
        if path.exists():
            for line in path.read_text().splitlines():
                entry = json.loads(line)
                self._known[entry["id"]] = entry

    def passed_by(self, mutant):
        """The test programs that the mutant has survived and that are the same today."""
        entry = self._entry(mutant)
        if entry is None or entry["outcome"] != SURVIVED:
            return set()
        return {name for name, digest in entry["tests"].items() if self._tests[name] == digest}

    def outcome(self, mutant):
        """(outcome, detail) of a mutant, or None where it has yet to be tried."""
        entry = self._entry(mutant)
        if entry is None or (entry["outcome"] == SURVIVED and entry["tests"] != self._tests):
            return None
        return entry["outcome"], entry["detail"]

    def keep(self, mutant, outcome, detail):
        """Notes an outcome, in memory and at once in the file."""
        entry = {
            "id": mutant.id,
            "outcome": outcome,
            "detail": detail,
            "source": self._digest(mutant),
            "tests": self._tests,
        }
        self._known[mutant.id] = entry
        self._path.parent.mkdir(parents=True, exist_ok=True)
        with self._path.open("a") as file:
            file.write(json.dumps(entry) + "\n")

    def _entry(self, mutant):
        entry = self._known.get(mutant.id)
        return entry if entry and entry["source"] == self._digest(mutant) else None

    def _digest(self, mutant):
        if mutant.file not in self._digests:
            self._digests[mutant.file] = digest([self._sources / mutant.file])
        return self._digests[mutant.file]

"""The count of outcomes by file."""

import results

COLUMNS = ("made", "not compiling", "same code", "killed", "explained", "unexplained")
_COLUMN = {results.BROKEN: 1, results.SAME: 2, results.KILLED: 3}


class Table:
    """Sums of outcomes per file of src/."""

    def __init__(self):
        self._rows = {}

    def add(self, mutant, outcome, explained):
        """Counts one mutant."""
        row = self._rows.setdefault(mutant.file, [0] * len(COLUMNS))
        row[0] += 1
        row[_COLUMN.get(outcome, 4 if explained else 5)] += 1

    def total(self):
        """The sums over all files."""
        return [sum(column) for column in zip(*self._rows.values())] or [0] * len(COLUMNS)

    def share_killed(self):
        """Killed mutants by those that compile to other machine code, in percent."""
        made, broken, same, killed, _, _ = self.total()
        return 100.0 * killed / max(made - broken - same, 1)

    def as_markdown(self):
        """The table as text that is a Markdown table as well."""
        rows = [["file", *COLUMNS]]
        rows += [[file, *map(str, row)] for file, row in sorted(self._rows.items())]
        rows.append(["all", *map(str, self.total())])
        widths = [max(map(len, column)) for column in zip(*rows)]
        lines = []
        for row in rows:
            first = row[0].ljust(widths[0])
            rest = [cell.rjust(width) for cell, width in zip(row[1:], widths[1:])]
            lines.append("| " + " | ".join([first, *rest]) + " |")
        rule = ["-" * widths[0]] + ["-" * (width - 1) + ":" for width in widths[1:]]
        lines.insert(1, "| " + " | ".join(rule) + " |")
        return "\n".join(lines)

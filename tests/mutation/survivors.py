"""The explained survivors: read from survivors.toml, written to docs/mutation.md."""

import textwrap
import tomllib
from dataclasses import dataclass

BEGIN = "<!-- from tests/mutation/survivors.toml by scripts/mutate --document -->"
END = "<!-- end -->"


@dataclass(frozen=True)
class Reason:
    """Why no test can see certain mutants; or that only the sanitizers see them."""

    title: str
    why: str
    sanitizers: bool
    mutants: tuple


def read_reasons(path):
    """The reasons in the order of the file, a pathlib.Path."""
    entries = tomllib.loads(path.read_text()).get("reason", [])
    return [
        Reason(
            e["title"], " ".join(e["why"].split()), e.get("sanitizers", False), tuple(e["mutants"])
        )
        for e in entries
    ]


class Explanations:
    """The reasons by the mutants that they are about."""

    def __init__(self, reasons):
        self._reasons = {id: reason for reason in reasons for id in reason.mutants}

    def explains(self, mutant):
        """Is the mutant listed as one that no test can see?"""
        reason = self._reasons.get(mutant.id)
        return reason is not None and not reason.sanitizers

    def leaves_to_sanitizers(self, mutant):
        """Is the mutant listed as one that only the sanitizers see?"""
        reason = self._reasons.get(mutant.id)
        return reason is not None and reason.sanitizers

    def without_mutant(self, mutants):
        """What is explained and does not exist (any more)."""
        return sorted(set(self._reasons) - {m.id for m in mutants})


def render(reasons, mutants):
    """The reasons and their mutants as the text of a document. Lines are quoted, not numbered, so
    that the document stays right while other lines come and go."""
    by_id = {m.id: m for m in mutants}
    text = [BEGIN, ""]
    for reason in reasons:
        text += [f"### {reason.title}", "", textwrap.fill(reason.why, 130), ""]
        text += ["| file | line | change |", "|---|---|---|"]
        for id in reason.mutants:
            m = by_id[id]
            text.append(f"| `{m.file}` | {_quoted(m.code)} | {m.operation}: {_quoted(m.change())} |")
        text.append("")
    return "\n".join(text + [END])


def _quoted(code):
    return "`" + code.replace("|", "\\|") + "`"


def replace_section(document, section):
    """The document with the rendered section in place of the one it has."""
    before, _, rest = document.partition(BEGIN)
    _, _, after = rest.partition(END)
    return before + section + after


def section_of(document):
    """The rendered section that a document has."""
    return BEGIN + document.partition(BEGIN)[2].partition(END)[0] + END
